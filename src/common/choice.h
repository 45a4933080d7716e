// An entry of a list to choose from, such as a store, a bank or a customer.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace common {

struct Choice {
    std::int64_t code = 0;
    std::string name;
};

inline bool contains(const std::vector<Choice>& list, std::int64_t code) {
    return std::any_of(list.begin(), list.end(), [&](const Choice& choice) { return choice.code == code; });
}

// The name of a code; "" if it is not in the list.
inline std::string name_of(const std::vector<Choice>& list, std::int64_t code) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const Choice& choice) { return choice.code == code; });
    return found == list.end() ? std::string() : found->name;
}

}  // namespace common
