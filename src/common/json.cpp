#include "common/json.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "common/text.h"

namespace common {

void JsonWriter::value(std::string_view text) {
    text_ += '"';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t from = at;
        const char32_t character = next_character(text, at);
        if (character == U'"' || character == U'\\')
            (text_ += '\\') += static_cast<char>(character);
        else if (character < U' ')
            text_ += fmt::format("\\u{:04x}", static_cast<unsigned>(character));
        else if (character == U'\uFFFD')
            text_ += utf8(character);
        else
            text_.append(text, from, at - from);
    }
    text_ += '"';
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) return value(std::nullopt);
    char digits[32];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

bool JsonWriter::is_left_out(std::string_view name) const {
    return std::find(left_out_.begin(), left_out_.end(), name) != left_out_.end();
}

void JsonWriter::begin(char bracket) {
    text_ += bracket;
    is_first_ = true;
}

void JsonWriter::end(char bracket) {
    text_ += bracket;
    is_first_ = false;
}

void JsonWriter::separate() {
    if (!is_first_) text_ += ',';
    is_first_ = false;
}

void JsonWriter::name_field(std::string_view name) {
    separate();
    text_.append(1, '"').append(name).append("\":");
}

}  // namespace common
