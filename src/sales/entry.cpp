#include "sales/entry.h"

#include <algorithm>
#include <map>

#include "common/numbers.h"
#include "common/text.h"

namespace sales {

namespace {

// The width of the column that holds barcodes.
constexpr std::size_t longest_code = 50;
constexpr std::size_t label_length = 13;

// The Arabic (101) layout: the character that each Latin key types, without and with Shift.
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
        {U'’', 'M'},
    };
    return keys;
}

// Keys that type two characters on that layout.
struct Pair {
    char32_t second;
    char key;
};
constexpr Pair after_lam[] = {{U'ا', 'b'}, {U'إ', 'T'}, {U'أ', 'G'}, {U'آ', 'B'}};

bool is_invisible(char32_t c) {
    return c < 0x20 || c == 0x7F || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

// The text after the first "*", without invisible characters.
std::string name_after_star(std::string_view text) {
    std::u32string name;
    for (const char32_t c : common::code_points(text.substr(text.find('*') + 1)))
        if (!is_invisible(c)) name += c;
    return std::string(common::trim(common::utf8(name)));
}

bool all_digits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string normalize_scan(std::string_view text) {
    const std::u32string typed = common::code_points(common::western_digits(text));
    std::u32string seen;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        const char32_t c = typed[i];
        if (is_invisible(c)) continue;
        if (c == U'ل' && i + 1 < typed.size()) {
            const auto pair = std::find_if(std::begin(after_lam), std::end(after_lam),
                                           [&](const Pair& p) { return p.second == typed[i + 1]; });
            if (pair != std::end(after_lam)) {
                seen += static_cast<char32_t>(pair->key);
                ++i;
                continue;
            }
        }
        const auto key = arabic_keys().find(c);
        seen += key != arabic_keys().end() ? static_cast<char32_t>(key->second) : c;
    }
    return std::string(common::trim(common::utf8(seen)));
}

Entry read_entry(std::string_view text) {
    Entry entry;
    // Refused before any work: a pasted book must not hold up the till.
    if (text.size() > 4 * longest_code + 64) {
        entry.form = EntryForm::unreadable;
        return entry;
    }
    entry.text = normalize_scan(text);
    if (entry.text.empty()) return entry;
    if (entry.text.front() == '*') {
        entry.form = EntryForm::general;
        entry.name = name_after_star(text);
    } else if (common::length(entry.text) > longest_code) {
        entry.form = EntryForm::unreadable;
    } else if (entry.text.size() == label_length && entry.text.starts_with("20") && all_digits(entry.text)) {
        entry.form = EntryForm::scale_label;
        // Characters 3 to 7 are the item, 8 to 12 the weight in grams, 13 the check digit.
        entry.quantity = common::numeric_value(entry.text.substr(7, 5)) / 1000;
        entry.text = std::to_string(common::parse_integer(entry.text.substr(2, 5)).value_or(0));
    } else if (const char first = entry.text.front();
               first == 'W' || first == 'w' || first == 'P' || first == 'p') {
        entry.form = EntryForm::craftsman;
        entry.number = common::parse_integer(std::string_view(entry.text).substr(1)).value_or(0);
    } else {
        entry.form = EntryForm::code;
    }
    return entry;
}

}  // namespace sales
