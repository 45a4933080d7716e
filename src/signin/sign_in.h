// The sign-in screen and the password screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace signin {

// A line of the user list.
struct User {
    std::int64_t code = 0;
    std::string name;
};

enum class SignInOutcome {
    stay_on_list,      // a message was shown, the focus goes back to the list
    stay_on_password,  // a message was shown, the focus goes back to the password
    end_program,       // a message was shown, the program ends
    signed_in,         // the session is complete, the sales screen opens
};

class SignIn {
  public:
    SignIn(database::Connection& connection, Session& session, common::Services services);

    const std::vector<User>& users() const { return users_; }

    // The text for the chosen user while he must wait before his next password; empty if he need not.
    std::string pause_text(std::optional<std::int64_t> code) const;
    // Tries to sign in the chosen user, reads the settings and finds the till's store and drawer. The session
    // gets the user's code, name and permissions before the password is compared; the next attempt
    // overwrites them.
    SignInOutcome confirm(std::optional<std::int64_t> code, std::string_view password);

  private:
    bool load_workplace();

    database::Connection& connection_;
    Session& session_;
    common::Services services_;
    std::vector<User> users_;
};

// Changes the signed-in user's password. Returns true if it was changed; otherwise nothing has changed. Shows
// a message in either case.
bool change_password(database::Connection& connection, Session& session, common::Services services,
                     std::string_view old_password, std::string_view new_password);

}  // namespace signin
