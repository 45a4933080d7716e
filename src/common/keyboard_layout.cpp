#include "common/keyboard_layout.h"

#include <algorithm>
#include <map>

#include "common/text.h"

namespace common {

namespace {

// The character that each Latin key types on the Arabic (101) layout, without and with Shift.
const std::map<char32_t, char>& arabic_keys() {
    static const std::map<char32_t, char> keys = {
        {U'ض', 'q'}, {U'ص', 'w'},      {U'ث', 'e'},      {U'ق', 'r'},      {U'ف', 't'},
        {U'غ', 'y'}, {U'ع', 'u'},      {U'ه', 'i'},      {U'خ', 'o'},      {U'ح', 'p'},
        {U'ش', 'a'}, {U'س', 's'},      {U'ي', 'd'},      {U'ب', 'f'},      {U'ل', 'g'},
        {U'ا', 'h'}, {U'ت', 'j'},      {U'ن', 'k'},      {U'م', 'l'},      {U'ئ', 'z'},
        {U'ء', 'x'}, {U'ؤ', 'c'},      {U'ر', 'v'},      {U'ى', 'n'},      {U'ة', 'm'},
        {U'ﻻ', 'b'}, {U'\u064E', 'Q'}, {U'\u064B', 'W'}, {U'\u064F', 'E'}, {U'\u064C', 'R'},
        {U'ﻹ', 'T'}, {U'إ', 'Y'},      {U'‘', 'U'},      {U'÷', 'I'},      {U'×', 'O'},
        {U'؛', 'P'}, {U'\u0650', 'A'}, {U'\u064D', 'S'}, {U'ﻷ', 'G'},      {U'أ', 'H'},
        {U'ـ', 'J'}, {U'،', 'K'},      {U'\u0652', 'X'}, {U'ﻵ', 'B'},      {U'آ', 'N'},
        {U'’', 'M'}, {U'ج', '['},      {U'د', ']'},      {U'ك', ';'},      {U'ط', '\''},
        {U'و', ','}, {U'ز', '.'},      {U'ظ', '/'},      {U'ذ', '`'},
    };
    return keys;
}

// Keys that type two characters on that layout.
struct Pair {
    char32_t second;
    char key;
};
constexpr Pair after_lam[] = {{U'ا', 'b'}, {U'إ', 'T'}, {U'أ', 'G'}, {U'آ', 'B'}};

}  // namespace

std::optional<char> latin_key(char32_t typed) {
    const auto key = arabic_keys().find(typed);
    return key != arabic_keys().end() ? std::optional(key->second) : std::nullopt;
}

std::optional<char32_t> arabic_key(char32_t latin) {
    const auto key = std::find_if(arabic_keys().begin(), arabic_keys().end(), [&](const auto& entry) {
        return static_cast<char32_t>(entry.second) == latin;
    });
    return key != arabic_keys().end() ? std::optional(key->first) : std::nullopt;
}

std::string on_latin_layout(std::string_view text) {
    const std::u32string typed = code_points(text);
    std::u32string seen;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        const char32_t c = typed[i];
        if (c == U'ل' && i + 1 < typed.size()) {
            const auto pair = std::find_if(std::begin(after_lam), std::end(after_lam),
                                           [&](const Pair& p) { return p.second == typed[i + 1]; });
            if (pair != std::end(after_lam)) {
                seen += static_cast<char32_t>(pair->key);
                ++i;
                continue;
            }
        }
        const auto key = latin_key(c);
        seen += key ? static_cast<char32_t>(*key) : c;
    }
    return utf8(seen);
}

}  // namespace common
