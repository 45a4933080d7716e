// The guard that every action of a screen runs in: an error becomes an Arabic message and a log line, and the
// screen stays usable.
#pragma once

#include <exception>
#include <string_view>
#include <utility>

#include "common/services.h"

namespace ui {

// The code of the guard's lines in the activity log.
inline constexpr std::string_view guard_code = "911";

// Shows and logs an error that ended the named action.
void report(const common::Services& services, std::string_view action, const std::exception& error);

// Runs an action. Returns true if it ended without an error.
template <typename Action>
bool guarded(const common::Services& services, std::string_view name, Action&& action) {
    try {
        std::forward<Action>(action)();
        return true;
    } catch (const std::exception& error) {
        report(services, name, error);
    }
    return false;
}

}  // namespace ui
