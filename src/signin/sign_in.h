// Sign-in: who may work at this till, and whether the till has its store and drawer.
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

    // As read when the screen opened.
    const std::vector<User>& users() const { return users_; }

    // Tries to sign in the chosen user. His code, name and permissions stand in the session as soon as he is
    // found, before the password is compared; a later attempt overwrites them.
    SignInOutcome confirm(std::optional<std::int64_t> code, std::string_view password);

  private:
    bool load_workplace();

    database::Connection& connection_;
    Session& session_;
    common::Services services_;
    std::vector<User> users_;
};

}  // namespace signin
