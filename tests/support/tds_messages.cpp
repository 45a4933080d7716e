#include "support/tds_messages.h"

#include <array>

#include "common/text.h"

namespace test::tds {

using database::Value;

namespace {

enum Token : std::uint8_t {
    return_status = 0x79,
    columns_token = 0x81,
    error_token = 0xAA,
    notice_token = 0xAB,
    return_value = 0xAC,
    login_token = 0xAD,
    row_token = 0xD1,
    row_with_nulls = 0xD2,
    change_token = 0xE3,
    done_token = 0xFD,
    done_procedure = 0xFE,
    done_in_procedure = 0xFF,
};

// Flags of the end of a statement.
constexpr std::uint16_t more_follows = 0x01;
constexpr std::uint16_t with_error = 0x02;
constexpr std::uint16_t has_count = 0x10;
constexpr std::uint16_t cancelled = 0x20;

std::string ending(Token token, std::uint16_t flags, std::uint64_t rows) {
    return byte(token) + little(flags) + little(std::uint16_t{0xC1}) + little(rows);
}

std::string with_length(Token token, const std::string& content) {
    return byte(token) + little(static_cast<std::uint16_t>(content.size())) + content;
}

std::string message(Token token, int number, int severity, std::string_view text) {
    return with_length(token, little(number) + byte(1) + byte(severity) + long_text(text) +
                                  short_text("SHOP") + byte(0) + little(1));
}

std::string change(int kind, std::string_view now, std::string_view before) {
    return with_length(change_token, byte(kind) + short_text(now) + short_text(before));
}

}  // namespace

const std::string prelogin_answer = std::string("\x00\x00\x0b\x00\x06\x01\x00\x11\x00\x01\xff", 11) +
                                    std::string("\x0b\x00\x0f\xa0\x00\x00", 6) + "\x02";

std::string login_answer(std::string_view database) {
    constexpr int database_change = 1, language_change = 2, packet_change = 4, collation_change = 7;
    const std::string collation("\x05\x01\x04\xd0\x00\x00\x00", 7);  // the new one; there was none before
    std::string answer;
    if (!database.empty()) {
        answer += change(database_change, database, "master") +
                  notice(5701, "Changed database context to '" + std::string(database) + "'.");
    }
    answer += with_length(change_token, byte(collation_change) + collation);
    answer += change(language_change, "us_english", "") + notice(5703, "Changed language setting.");
    answer +=
        with_length(login_token, byte(1) + std::string("\x74\x00\x00\x04", 4) +
                                     short_text("Microsoft SQL Server") + std::string("\x0f\x00\x07\xd0", 4));
    return answer + change(packet_change, "4096", "4096") + done(0, false);
}

std::string done(std::uint64_t rows, bool counted, bool more) {
    return ending(done_token,
                  static_cast<std::uint16_t>((counted ? has_count : 0) | (more ? more_follows : 0)), rows);
}

std::string done_in_call(std::uint64_t rows, bool counted) {
    return ending(done_in_procedure, static_cast<std::uint16_t>(more_follows | (counted ? has_count : 0)),
                  rows);
}

std::string call_status() {
    return byte(return_status) + little(std::int32_t{0});
}

std::string done_call() {
    return ending(done_procedure, 0, 0);
}

std::string done_cancelled() {
    return ending(done_token, cancelled, 0);
}

std::string error(int number, int severity, std::string_view text) {
    return message(error_token, number, severity, text) + ending(done_token, with_error, 0);
}

std::string error_in_call(int number, int severity, std::string_view text) {
    return message(error_token, number, severity, text) + ending(done_procedure, with_error, 0);
}

std::string notice(int number, std::string_view text) {
    return message(notice_token, number, 0, text);
}

std::string result(const database::Result& result, const std::vector<Type>& types) {
    std::string bytes = byte(columns_token) + little(static_cast<std::uint16_t>(types.size()));
    for (std::size_t i = 0; i < types.size(); ++i) {
        constexpr std::uint16_t nullable = 1;
        bytes += little(std::uint32_t{0}) + little(nullable) + type_info(types[i]) +
                 short_text(result.columns()[i]);
    }
    for (const auto& row : result) {
        std::string nulls((types.size() + 7) / 8, '\0');
        std::size_t empty = 0;
        for (std::size_t i = 0; i < types.size(); ++i) {
            if (!database::is_null(row.cells()[i])) continue;
            nulls[i / 8] = static_cast<char>(nulls[i / 8] | 1 << i % 8);
            ++empty;
        }
        const bool compact = empty > nulls.size();  // as a server does: where it is shorter
        bytes += compact ? byte(row_with_nulls) + nulls : byte(row_token);
        for (std::size_t i = 0; i < types.size(); ++i) {
            if (compact && database::is_null(row.cells()[i])) continue;
            bytes += cell(types[i], row.cells()[i]);
        }
    }
    return bytes;
}

std::string row(const std::vector<std::pair<std::string, database::Value>>& cells) {
    std::vector<std::string> names;
    std::vector<database::Value> values;
    std::vector<Type> types;
    for (const auto& [name, value] : cells) {
        names.push_back(name);
        values.push_back(value);
        Type type = database::is_null(value) ? Type{Type::text, 4000} : type_of({&value});
        if (type.kind == Type::whole) type.size = 8;
        types.push_back(type);
    }
    auto columns = std::make_shared<const database::Columns>(std::move(names));
    const database::Result whole(columns, {database::Row(columns, std::move(values))});
    return result(whole, types) + done(1);
}

namespace {

// A text of the log-in message: its offset and its length in characters stand at `place`.
std::string_view login_text(std::string_view body, std::size_t place) {
    if (body.size() < place + 4) throw Malformed();
    Reader reader(body.substr(place));
    const auto at = reader.number<std::uint16_t>();
    const auto characters = reader.number<std::uint16_t>();
    if (at + characters * std::size_t{2} > body.size()) throw Malformed();
    return body.substr(at, characters * std::size_t{2});
}

// Passwords go over the wire with the halves of every byte swapped and a mask on them.
std::string unmasked(std::string bytes) {
    for (char& c : bytes) {
        const int plain = static_cast<unsigned char>(c) ^ 0xA5;
        c = static_cast<char>((plain << 4 | plain >> 4) & 0xFF);
    }
    return bytes;
}

std::string_view without_headers(std::string_view body) {
    const auto headers = Reader(body).number<std::uint32_t>();
    if (headers > body.size()) throw Malformed();
    return body.substr(headers);
}

// The name of a procedure that is called by number.
std::string well_known(std::uint16_t number) {
    constexpr std::uint16_t executesql = 10;
    return number == executesql ? "sp_executesql" : "procedure " + std::to_string(number);
}

}  // namespace

Login read_login(std::string_view body) {
    const auto text = [&](std::size_t place) { return narrow(login_text(body, place)); };
    return {text(40), narrow(unmasked(std::string(login_text(body, 44)))), text(68)};
}

std::string read_batch(std::string_view body) {
    return narrow(without_headers(body));
}

const Value& Call::at(std::size_t position) const {
    if (position >= arguments.size()) throw Malformed();
    return arguments[position].second;
}

std::string Call::text(std::string_view name, std::size_t position) const {
    bool named = false;
    for (const auto& [own, value] : arguments) {
        if (common::equal_ignoring_case(own, name)) return database::text_of(value);
        named |= !own.empty();
    }
    if (named || position >= arguments.size()) return {};
    return database::text_of(arguments[position].second);
}

Call read_call(std::string_view body) {
    constexpr std::uint16_t by_number = 0xFFFF;
    Reader reader(without_headers(body));
    Call call;
    const auto length = reader.number<std::uint16_t>();
    call.procedure = length == by_number ? well_known(reader.number<std::uint16_t>())
                                         : narrow(reader.take(length * std::size_t{2}));
    if (const auto dot = call.procedure.rfind('.'); dot != std::string::npos)
        call.procedure.erase(0, dot + 1);
    reader.number<std::uint16_t>();  // options
    while (!reader.at_end()) {
        const auto characters = reader.number<std::uint8_t>();
        std::string name = narrow(reader.take(characters * std::size_t{2}));
        reader.number<std::uint8_t>();  // handed back or not
        call.arguments.emplace_back(std::move(name), parameter(reader));
    }
    return call;
}

Statement with_values(std::string_view text, const Call& call, std::size_t first) {
    Statement statement;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        std::size_t end = at + 1;
        if (c == '\'' || c == '[' || c == '"') {
            const char close = c == '[' ? ']' : c;
            end = std::min(text.find(close, at + 1), text.size() - 1) + 1;
        } else if (text.substr(at, 2) == "@P") {
            end = at + 2;
            std::size_t number = 0;
            while (end < text.size() && text[end] >= '0' && text[end] <= '9')
                number = number * 10 + static_cast<std::size_t>(text[end++] - '0');
            statement.text += '?';
            statement.values.push_back(call.at(first + number - 1));
            at = end;
            continue;
        }
        statement.text += text.substr(at, end - at);
        at = end;
    }
    return statement;
}

}  // namespace test::tds
