// Names of columns and tables, which compare without regard to the case of their ASCII letters.
#pragma once

#include <string_view>

namespace database {

// What common::equal_ignoring_case says, in place: the search for a column asks it for every one before it.
inline bool is_same_name(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] == b[i]) continue;
        const char letter = static_cast<char>(a[i] | 0x20);
        if (letter != (b[i] | 0x20) || letter < 'a' || letter > 'z') return false;
    }
    return true;
}

}  // namespace database
