// The users who may allow what the signed-in user may not do. They identify themselves with a password or a
// badge.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/permissions.h"
#include "signin/session.h"

namespace signin {

class Supervisors {
  public:
    // Reads the users who have the right themselves.
    Supervisors(database::Connection& connection, Session& session, common::Services services, Action action);

    const std::vector<common::Choice>& users() const { return users_; }
    // The text shown while the chosen user must wait before his next password; empty if he need not.
    std::string pause_text(std::optional<std::int64_t> chosen) const;
    // `typed` is the password of the chosen user, or a badge, whoever is chosen. Returns who allows the
    // action, or nothing after showing why not. After wrong attempts a user must wait as at sign-in.
    std::optional<audit::Person> confirm(std::optional<std::int64_t> chosen, std::string_view typed);

  private:
    std::optional<audit::Person> person(std::int64_t code) const;

    database::Connection& connection_;
    Session& session_;
    common::Services services_;
    std::vector<common::Choice> users_;
};

}  // namespace signin
