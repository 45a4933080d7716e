#include "printing/code_128.h"

#include <algorithm>
#include <array>

namespace printing {

namespace {

constexpr int start_b = 104;
constexpr int start_c = 105;
constexpr int switch_to_c = 99;
constexpr int stop = 106;
constexpr std::size_t shortest_tail = 4;  // of digits that set C is worth

// The widths of a symbol's bars and spaces in turn, by its value.
constexpr std::array<std::string_view, 107> symbols = {
    "212222", "222122", "222221", "121223", "121322", "131222", "122213", "122312", "132212", "221213",
    "221312", "231212", "112232", "122132", "122231", "113222", "123122", "123221", "223211", "221132",
    "221231", "213212", "223112", "312131", "311222", "321122", "321221", "312212", "322112", "322211",
    "212123", "212321", "232121", "111323", "131123", "131321", "112313", "132113", "132311", "211313",
    "231113", "231311", "112133", "112331", "132131", "113123", "113321", "133121", "313121", "211331",
    "231131", "213113", "213311", "213131", "311123", "311321", "331121", "312113", "312311", "332111",
    "314111", "221411", "431111", "111224", "111422", "121124", "121421", "141122", "141221", "112214",
    "112412", "122114", "122411", "142112", "142211", "241211", "221114", "413111", "241112", "134111",
    "111242", "121142", "121241", "114212", "124112", "124211", "411212", "421112", "421211", "212141",
    "214121", "412121", "111143", "111341", "131141", "114113", "114311", "411113", "411311", "113141",
    "114131", "311141", "411131", "211412", "211214", "211232", "2331112"};

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

struct Parts {
    std::string_view in_b;
    std::string_view in_c;  // an even number of digits
};

Parts parts_of(std::string_view text) {
    const auto digits = std::find_if_not(text.rbegin(), text.rend(), is_digit) - text.rbegin();
    const auto tail = static_cast<std::size_t>(digits) / 2 * 2;
    const std::size_t begin = tail < shortest_tail ? text.size() : text.size() - tail;
    return {text.substr(0, begin), text.substr(begin)};
}

int pair_at(std::string_view digits, std::size_t at) {
    return (digits[at] - '0') * 10 + digits[at + 1] - '0';
}

bool is_encodable(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::vector<bool> code_128(std::string_view text) {
    if (!is_encodable(text)) return {};
    const Parts parts = parts_of(text);
    std::vector<int> values = {parts.in_b.empty() ? start_c : start_b};
    for (const char c : parts.in_b)
        values.push_back(c - ' ');
    if (!parts.in_b.empty() && !parts.in_c.empty()) values.push_back(switch_to_c);
    for (std::size_t at = 0; at < parts.in_c.size(); at += 2)
        values.push_back(pair_at(parts.in_c, at));
    int sum = values.front();
    for (std::size_t place = 1; place < values.size(); ++place)
        sum += static_cast<int>(place) * values[place];
    values.insert(values.end(), {sum % 103, stop});

    std::vector<bool> modules;
    for (const int value : values) {
        bool is_dark = true;
        for (const char width : symbols[static_cast<std::size_t>(value)]) {
            modules.insert(modules.end(), static_cast<std::size_t>(width - '0'), is_dark);
            is_dark = !is_dark;
        }
    }
    return modules;
}

std::string barcode_command(std::string_view text) {
    if (!is_encodable(text)) return {};
    const Parts parts = parts_of(text);
    std::string data;
    if (!parts.in_b.empty()) data += "{B" + std::string(parts.in_b);
    if (!parts.in_c.empty()) data += "{C";
    for (std::size_t at = 0; at < parts.in_c.size(); at += 2)
        data += static_cast<char>(pair_at(parts.in_c, at));
    // In the middle; 80 dots high, modules of 2 dots, the text below; Code 128; to the left again.
    return "\x1B"
           "a\x01\x1Dh\x50\x1Dw\x02\x1DH\x02\x1Dk\x49" +
           std::string(1, static_cast<char>(data.size())) + data +
           "\x1B"
           "a" +
           std::string(1, '\0');
}

}  // namespace printing
