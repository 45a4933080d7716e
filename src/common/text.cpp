#include "common/text.h"

namespace common {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool is_continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

void append(std::string& out, char32_t c) {
    const auto byte = [&out](char32_t value) { out += static_cast<char>(static_cast<unsigned char>(value)); };
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = replacement;
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6U));
        byte(0x80 | (c & 0x3FU));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12U));
        byte(0x80 | ((c >> 6U) & 0x3FU));
        byte(0x80 | (c & 0x3FU));
    } else {
        byte(0xF0 | (c >> 18U));
        byte(0x80 | ((c >> 12U) & 0x3FU));
        byte(0x80 | ((c >> 6U) & 0x3FU));
        byte(0x80 | (c & 0x3FU));
    }
}

// Drops the given characters at both ends.
std::string_view trim_of(std::string_view text, const char* dropped) {
    const auto first = text.find_first_not_of(dropped);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(dropped) - first + 1);
}

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view trim(std::string_view text) {
    return trim_of(text, " \t\r\n");
}

std::string_view trim_blanks(std::string_view text) {
    return trim_of(text, " ");
}

std::string_view trim_right(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::size_t length(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        next_character(text, at);
    return count;
}

std::string left(std::string_view text, std::size_t characters) {
    std::size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters)
        next_character(text, at);
    return std::string(text.substr(0, at));
}

std::string right(std::string_view text, std::size_t characters) {
    const std::size_t total = length(text);
    std::size_t at = 0;
    for (std::size_t drop = total > characters ? total - characters : 0; drop > 0; --drop) {
        next_character(text, at);
    }
    return std::string(text.substr(at));
}

std::size_t column_width(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += next_character(text, at) > 0xFFFF ? 2 : 1;
    return width;
}

std::string cut_to_column(std::string_view text, std::size_t width) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); end = at) {
        const std::size_t taken = next_character(text, at) > 0xFFFF ? 2 : 1;
        if (taken > width) break;
        width -= taken;
    }
    return std::string(text.substr(0, end));
}

std::string printable(std::string_view text) {
    const auto is_hidden = [](char32_t c) {
        return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
               (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    };
    std::u32string kept = code_points(text);
    std::erase_if(kept, is_hidden);
    return utf8(kept);
}

char32_t next_character(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 && lead <= 0xF4   ? 3
                     : lead >= 0xE0 && lead <= 0xEF ? 2
                     : lead >= 0xC2 && lead <= 0xDF ? 1
                                                    : 0;
    if (more == 0) return replacement;
    char32_t character = lead & (0x3FU >> more);
    std::size_t end = at;
    for (int i = 0; i < more; ++i, ++end) {
        if (end >= text.size() || !is_continuation(text[end])) return replacement;
        character = (character << 6U) | (static_cast<unsigned char>(text[end]) & 0x3FU);
    }
    const char32_t least = more == 3 ? 0x10000 : more == 2 ? 0x800 : 0x80;
    if (character < least || character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) {
        return replacement;
    }
    at = end;
    return character;
}

std::u32string code_points(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        out += next_character(text, at);
    return out;
}

std::string utf8(std::u32string_view text) {
    std::string out;
    out.reserve(text.size() * 2);
    for (const char32_t c : text)
        append(out, c);
    return out;
}

std::string utf8(char32_t character) {
    std::string out;
    append(out, character);
    return out;
}

std::string lower_ascii(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = lower(c);
    return out;
}

}  // namespace common
