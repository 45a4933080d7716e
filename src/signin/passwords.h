// How passwords compare, at sign-in and on the password screen.
#pragma once

#include <string_view>

namespace signin {

// Equal but for leading and trailing blanks; the case of letters counts.
inline bool same_password(std::string_view a, std::string_view b) {
    const auto trimmed = [](std::string_view text) {
        const auto first = text.find_first_not_of(' ');
        if (first == std::string_view::npos) return std::string_view();
        return text.substr(first, text.find_last_not_of(' ') - first + 1);
    };
    return trimmed(a) == trimmed(b);
}

}  // namespace signin
