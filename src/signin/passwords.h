// Passwords and badges compared with what is stored, with the pause after wrong ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/services.h"
#include "signin/session.h"

namespace signin {

inline constexpr int longest_password = 100;  // that its column holds

// Returns true if the passwords are equal except for blanks at both ends and for the script of their digits,
// which depends on the keyboard. The case of letters counts.
bool same_password(std::string_view a, std::string_view b);

// The text shown while a user must wait before his next password; empty if he need not.
std::string pause_text(const Session& session, common::Clock& clock, std::int64_t user);

// A password that somebody typed for a user.
struct TypedPassword {
    std::int64_t user = 0;
    std::string_view typed;
    std::optional<std::string> stored;  // nothing if no password is right
    std::string_view refusal;           // said of a wrong one
    std::string_view screen;            // in the log
    std::string_view noted;             // in the till's journal
};
// Returns false after showing why, also while the user must wait.
bool is_password(Session& session, common::Services& services, const TypedPassword& password);

}  // namespace signin
