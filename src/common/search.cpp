#include "common/search.h"

#include <algorithm>
#include <array>

#include "common/text.h"

namespace common {

namespace {

// Letters that are alike. The first stands for all in a folded text.
constexpr std::u32string_view groups[] = {U"اأإآٱ", U"هة",  U"يىی", U"كک",  U"0٠۰", U"1١۱", U"2٢۲",
                                          U"3٣۳",   U"4٤۴", U"5٥۵", U"6٦۶", U"7٧۷", U"8٨۸", U"9٩۹"};

constexpr char32_t first_arabic = 0x600;

// What each character of the Arabic block is folded to; 0 for a mark.
constexpr auto arabic = [] {
    std::array<char32_t, 256> table{};
    for (char32_t i = 0; i < table.size(); ++i)
        table[i] = first_arabic + i;
    for (const std::u32string_view group : groups)
        for (const char32_t c : group)
            if (c >= first_arabic) table[c - first_arabic] = group.front();
    for (char32_t mark = 0x64B; mark <= 0x655; ++mark)
        table[mark - first_arabic] = 0;
    table[U'ـ' - first_arabic] = 0;
    table[0x670 - first_arabic] = 0;
    return table;
}();

// 0 for a mark.
char32_t folded(char32_t c) {
    return c >= first_arabic && c < first_arabic + arabic.size() ? arabic[c - first_arabic] : lower_case(c);
}

}  // namespace

char32_t lower_case_beyond_ascii(char32_t c) {
    if (c >= 0xC0 && c <= 0xDE) return c == 0xD7 ? c : c + 0x20;
    if (c >= 0x100 && c <= 0x17F) {
        if (c == 0x130 || c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
        if (c == 0x178) return 0xFF;
        const bool upper_is_odd = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        return ((c & 1U) != 0) == upper_is_odd ? c + 1 : c;
    }
    if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 0x20;
    if (c >= 0x410 && c <= 0x42F) return c + 0x20;
    if (c >= 0x400 && c <= 0x40F) return c + 0x50;
    return c;
}

std::string folded(std::string_view text) {
    std::u32string characters = code_points(text);
    std::transform(characters.begin(), characters.end(), characters.begin(),
                   [](char32_t c) { return folded(c); });
    std::erase(characters, U'\0');
    return utf8(characters);
}

std::u32string_view alike(char32_t character) {
    const char32_t first = folded(character);
    const auto* const found = std::find_if(std::begin(groups), std::end(groups),
                                           [&](std::u32string_view group) { return group.front() == first; });
    return found == std::end(groups) ? std::u32string_view() : *found;
}

bool is_mark(char32_t character) {
    return character != 0 && folded(character) == 0;
}

std::vector<std::string> search_words(std::string_view typed) {
    constexpr const char* blanks = " \t\r\n";
    const std::string text = folded(typed);
    std::vector<std::string> words;
    for (std::size_t at = text.find_first_not_of(blanks); at != std::string::npos;) {
        const std::size_t end = text.find_first_of(blanks, at);
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(blanks, end);
    }
    return words;
}

bool contains_words(std::string_view folded_text, const std::vector<std::string>& words) {
    return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
        return folded_text.find(word) != std::string_view::npos;
    });
}

bool begins_words(std::string_view folded_text, const std::vector<std::string>& words) {
    constexpr std::string_view article = "ال";
    const auto begins_one = [&](const std::string& word) {
        for (std::size_t at = folded_text.find(word); at != folded_text.npos;
             at = folded_text.find(word, at + 1)) {
            const std::string_view before = folded_text.substr(0, at);
            if (before.empty() || before.ends_with(' ') || before == article ||
                (before.ends_with(article) && before[before.size() - article.size() - 1] == ' '))
                return true;
        }
        return false;
    };
    return std::all_of(words.begin(), words.end(), begins_one);
}

}  // namespace common
