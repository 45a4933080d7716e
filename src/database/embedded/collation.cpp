#include "database/embedded/collation.h"

#include <algorithm>

#include "common/search.h"

namespace database::embedded {

namespace {

// Reads one character; a malformed byte stands for itself, above all real characters, so that the order is
// total.
char32_t next_character(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at++);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 && first < 0xF8   ? 3
                     : first >= 0xE0 && first < 0xF0 ? 2
                     : first >= 0xC2 && first < 0xE0 ? 1
                                                     : 0;
    if (more == 0 || at + static_cast<std::size_t>(more) > text.size()) return 0x110000U + first;
    char32_t character = first & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        const unsigned char c = byte(at + static_cast<std::size_t>(i));
        if ((c & 0xC0U) != 0x80) return 0x110000U + first;
        character = (character << 6U) | (c & 0x3FU);
    }
    at += static_cast<std::size_t>(more);
    return character;
}

// Letters that sort together.
char32_t order_of(char32_t c) {
    switch (c) {
        case U'آ':
        case U'أ':
        case U'إ':
        case U'ٱ':
            return U'ا';
        default:
            return c;
    }
}

std::string_view without_trailing_blanks(std::string_view text) {
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

}  // namespace

std::u32string lower_text(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        result += common::lower_case(next_character(text, at));
    return result;
}

int compare_texts(std::string_view a, std::string_view b) {
    a = without_trailing_blanks(a);
    b = without_trailing_blanks(b);
    if (a == b) return 0;
    int close = 0;  // the first difference between letters that sort together
    std::size_t i = 0, j = 0;
    while (i < a.size() || j < b.size()) {
        // The shorter text is compared as if it were padded with blanks.
        const char32_t x = i < a.size() ? common::lower_case(next_character(a, i)) : U' ';
        const char32_t y = j < b.size() ? common::lower_case(next_character(b, j)) : U' ';
        if (x == y) continue;
        const char32_t first = order_of(x), second = order_of(y);
        if (first != second) return first < second ? -1 : 1;
        if (close == 0) close = x < y ? -1 : 1;
    }
    return close;
}

namespace {

// Returns true if `c` is in the set that begins after "["; `at` moves behind the "]". An unclosed set matches
// nothing.
bool is_in_set(char32_t c, std::u32string_view pattern, std::size_t& at) {
    const auto end = pattern.find(U']', at);
    if (end == pattern.npos) {
        at = pattern.size();
        return false;
    }
    const bool negated = pattern[at] == U'^';
    if (negated) ++at;
    bool found = false;
    for (; at < end; ++at) {
        if (at + 2 < end && pattern[at + 1] == U'-') {
            found = found || (c >= pattern[at] && c <= pattern[at + 2]);
            at += 2;
        } else {
            found = found || c == pattern[at];
        }
    }
    at = end + 1;
    return found != negated;
}

}  // namespace

bool is_like(std::u32string_view text, std::u32string_view pattern) {
    std::size_t t = 0, p = 0;
    // Where to retry if what follows the last "%" does not match: with one more character taken by it.
    std::size_t retry_text = 0, retry_pattern = std::u32string_view::npos;
    while (true) {
        if (p < pattern.size() && pattern[p] == U'%') {
            retry_pattern = ++p;
            if (p == pattern.size()) return true;
            retry_text = t;
            continue;
        }
        if (t == text.size() && p == pattern.size()) return true;
        bool matches = false;
        std::size_t next = p;
        if (t < text.size() && p < pattern.size()) {
            if (pattern[p] == U'_') {
                matches = true;
                next = p + 1;
            } else if (pattern[p] == U'[') {
                next = p + 1;
                matches = is_in_set(text[t], pattern, next);
            } else {
                matches = text[t] == pattern[p];
                next = p + 1;
            }
        }
        if (matches) {
            ++t;
            p = next;
        } else if (retry_pattern != std::u32string_view::npos && retry_text < text.size()) {
            t = ++retry_text;
            p = retry_pattern;
        } else {
            return false;
        }
    }
}

}  // namespace database::embedded
