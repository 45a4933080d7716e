#include "support/tds_request.h"

#include <array>

#include "common/text.h"

namespace test::tds {

using database::Value;

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
    return {text(36), text(40), narrow(unmasked(std::string(login_text(body, 44)))), text(48), text(68)};
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
