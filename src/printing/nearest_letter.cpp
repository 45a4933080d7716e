#include "printing/nearest_letter.h"

#include <algorithm>
#include <array>

namespace printing {

namespace {

struct Nearest {
    char32_t character;
    std::u32string_view letters;
};

// In the order of the characters' codes.
constexpr std::array letters_shown = {
    Nearest{U'À', U"A"},       Nearest{U'Â', U"A"},       Nearest{U'Ä', U"A"},
    Nearest{U'Ç', U"C"},       Nearest{U'È', U"E"},       Nearest{U'É', U"E"},
    Nearest{U'Ê', U"E"},       Nearest{U'Ë', U"E"},       Nearest{U'Î', U"I"},
    Nearest{U'Ï', U"I"},       Nearest{U'Ô', U"O"},       Nearest{U'Ö', U"O"},
    Nearest{U'Ù', U"U"},       Nearest{U'Û', U"U"},       Nearest{U'Ü', U"U"},
    Nearest{U'à', U"a"},       Nearest{U'â', U"a"},       Nearest{U'ä', U"a"},
    Nearest{U'ç', U"c"},       Nearest{U'è', U"e"},       Nearest{U'é', U"e"},
    Nearest{U'ê', U"e"},       Nearest{U'ë', U"e"},       Nearest{U'î', U"i"},
    Nearest{U'ï', U"i"},       Nearest{U'ñ', U"n"},       Nearest{U'ô', U"o"},
    Nearest{U'ö', U"o"},       Nearest{U'ù', U"u"},       Nearest{U'û', U"u"},
    Nearest{U'ü', U"u"},       Nearest{U'Œ', U"OE"},      Nearest{U'œ', U"oe"},
    Nearest{U'\u066A', U"%"},  Nearest{U'\u066B', U"."},  Nearest{U'\u066C', U","},
    Nearest{U'\u066D', U"*"},  Nearest{U'\u0671', U"ا"},  Nearest{U'\u0679', U"ت"},
    Nearest{U'\u067E', U"ب"},  Nearest{U'\u0686', U"ج"},  Nearest{U'\u0688', U"د"},
    Nearest{U'\u0691', U"ر"},  Nearest{U'\u0698', U"ز"},  Nearest{U'\u06A4', U"ف"},
    Nearest{U'\u06A9', U"ك"},  Nearest{U'\u06AF', U"ك"},  Nearest{U'\u06BA', U"ن"},
    Nearest{U'\u06BE', U"ه"},  Nearest{U'\u06C1', U"ه"},  Nearest{U'\u06CC', U"ي"},
    Nearest{U'\u06D2', U"ي"},  Nearest{U'\u2013', U"-"},  Nearest{U'\u2014', U"-"},
    Nearest{U'\u2018', U"'"},  Nearest{U'\u2019', U"'"},  Nearest{U'\u201C', U"\""},
    Nearest{U'\u201D', U"\""}, Nearest{U'\uFEF5', U"لآ"}, Nearest{U'\uFEF6', U"لآ"},
    Nearest{U'\uFEF7', U"لأ"}, Nearest{U'\uFEF8', U"لأ"}, Nearest{U'\uFEF9', U"لإ"},
    Nearest{U'\uFEFA', U"لإ"}, Nearest{U'\uFEFB', U"لا"}, Nearest{U'\uFEFC', U"لا"},
};
static_assert(std::is_sorted(letters_shown.begin(), letters_shown.end(),
                             [](const Nearest& a, const Nearest& b) { return a.character < b.character; }));

}  // namespace

std::u32string_view nearest_letters(char32_t character) {
    const auto found =
        std::lower_bound(letters_shown.begin(), letters_shown.end(), character,
                         [](const Nearest& entry, char32_t wanted) { return entry.character < wanted; });
    return found != letters_shown.end() && found->character == character ? found->letters
                                                                         : std::u32string_view();
}

}  // namespace printing
