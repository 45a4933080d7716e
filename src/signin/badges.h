// Badges: a number on a card that a supervisor scans in place of his password. The table till_badge holds a
// salted hash of it, so that nobody can read a badge from the table. A shop without the table has no badges.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/clock.h"
#include "database/connection.h"

namespace signin {

inline constexpr std::size_t shortest_badge = 8;
inline constexpr std::size_t longest_badge = 40;

// The digits of a badge that was scanned or typed; nothing if it is none. Letters would depend on the
// keyboard's layout.
std::optional<std::string> read_badge(std::string_view typed);
// A number for a new card that nobody can guess.
std::string new_badge();

// Gives a user a badge in place of the one he had. Returns false if it is somebody else's.
bool give_badge(database::Connection& connection, common::Clock& clock, std::int64_t user,
                std::string_view digits);
// Returns false if the user had none.
bool take_badge(database::Connection& connection, std::int64_t user);
// The user whose badge it is.
std::optional<std::int64_t> badge_owner(database::Connection& connection, std::string_view digits);

}  // namespace signin
