#include "common/search.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"

namespace common {

namespace {

std::string arabic_digits(std::string_view western) {
    std::string out;
    for (const char letter : western) {
        if (letter < '0' || letter > '9') {
            out += letter;
        } else {  // U+0660 to U+0669
            out += '\xD9';
            out += static_cast<char>(0xA0 + (letter - '0'));
        }
    }
    return out;
}

}  // namespace

bool contains_typed(std::string_view text, std::string_view typed) {
    return lower_ascii(western_digits(text)).find(lower_ascii(western_digits(typed))) != std::string::npos;
}

std::vector<std::string> digit_spellings(std::string_view typed) {
    std::vector<std::string> spellings{std::string(typed)};
    const std::string western = western_digits(typed);
    for (const std::string& other : {western, arabic_digits(western)}) {
        if (std::find(spellings.begin(), spellings.end(), other) == spellings.end())
            spellings.push_back(other);
    }
    return spellings;
}

}  // namespace common
