// The users of the shop as the office shows and changes them.
#pragma once

#include <array>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/permissions.h"
#include "signin/session.h"

namespace shop {

// Rights that belong together, and what the group is called.
struct RightGroup {
    std::string_view caption;
    std::vector<signin::Action> actions;
};
const std::vector<RightGroup>& right_groups();

struct UserRow {
    std::int64_t code = 0;  // 0 for one who is not saved yet
    std::string name;
    std::string permissions;
    bool blocked = false;
    bool has_badge = false;
    std::optional<common::Moment> last_sign_in;
};

class UserEditor {
  public:
    UserEditor(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    void open();
    const std::vector<UserRow>& rows() const { return rows_; }

    // All of these are refused without the right (that refusal has no text, because it has been shown), if
    // another office changed the user since he was read, and if nobody could change users any more.
    //
    // Saves name and rights, and a new user's password. `row` gets the code of a new user.
    std::optional<common::Refusal> save(UserRow& row, const UserRow& read, std::string_view password);
    std::optional<common::Refusal> set_password(const UserRow& row, std::string_view password);
    std::optional<common::Refusal> set_blocked(const UserRow& row, bool blocked);
    // Gives the user the badge that was scanned, or takes his away if there is no text.
    std::optional<common::Refusal> set_badge(const UserRow& row, std::string_view scanned);

  private:
    std::optional<common::Refusal> changed_since(const UserRow& read);
    // Whether somebody who is not blocked may still change users.
    bool has_keeper();
    template <typename Write>
    std::optional<common::Refusal> change(const UserRow& row, const Write& write, const std::string& what);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::vector<UserRow> rows_;
};

}  // namespace shop
