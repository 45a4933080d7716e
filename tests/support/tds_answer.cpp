#include "support/tds_answer.h"

namespace test::tds {

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

std::string done(std::uint64_t rows, bool counted) {
    return ending(done_token, counted ? has_count : 0, rows);
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

}  // namespace test::tds
