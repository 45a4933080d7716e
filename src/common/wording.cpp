#include "common/wording.h"

#include "common/text.h"

namespace common {

namespace {

constexpr char32_t left_to_right_mark = U'\u200E';
constexpr std::string_view feminine_ending = "ة";

bool is_digit(char32_t character) {
    return character >= U'0' && character <= U'9';
}

// The characters that may directly precede a number, apart from direction marks.
bool may_precede_number(char32_t character) {
    return character <= U' ' || std::u32string_view(U"([{:=،\u200F\u202A\u202B\u00A0").find(character) !=
                                    std::u32string_view::npos;
}

}  // namespace

std::string_view form_after(long long count, const Noun& noun) {
    const auto rest = count % 100;
    return rest >= 11 ? noun.many : rest >= 3 ? noun.few : noun.one;
}

std::string counted(long long count, const Noun& noun) {
    if (count == 1) return std::string(noun.one) + (noun.one.ends_with(feminine_ending) ? " واحدة" : " واحد");
    if (count == 2) return std::string(noun.two);
    return std::to_string(count) + ' ' + std::string(form_after(count, noun));
}

std::string with_minus_at_left(std::string_view sentence) {
    if (sentence.find('-') == std::string_view::npos) return std::string(sentence);
    const std::u32string read = code_points(sentence);
    std::u32string written;
    for (std::size_t i = 0; i < read.size(); ++i) {
        if (read[i] == U'-' && i + 1 < read.size() && is_digit(read[i + 1]) &&
            (i == 0 || may_precede_number(read[i - 1])))
            written += left_to_right_mark;
        written += read[i];
    }
    return utf8(written);
}

}  // namespace common
