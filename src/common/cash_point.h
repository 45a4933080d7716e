// The numbers of tills and offices, where both are told apart by one.
#pragma once

#include <cstdint>
#include <string>

namespace common {

// The office takes a number after those of the cash points, so that it can be told from every till. On a
// server the offices of other machines take the next ones.
inline constexpr std::int64_t first_office = 10;
inline constexpr std::int64_t last_office = 19;

// What people call it: the number of a cash point, "المكتب" for the office, "المكتب 2" for the second one.
inline std::string cash_point_name(std::int64_t number) {
    if (number < first_office || number > last_office) return std::to_string(number);
    const std::string office = "المكتب";
    return number == first_office ? office : office + " " + std::to_string(number - first_office + 1);
}

}  // namespace common
