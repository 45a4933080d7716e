#include "signin/sign_in.h"

#include "common/text.h"
#include "database/sql.h"
#include "signin/messages.h"
#include "signin/passwords.h"
#include "signin/settings.h"

namespace signin {

namespace {

using common::Icon;
using database::Sql;

constexpr std::string_view log_code = "62";

// One byte for each character, so that positions count characters whatever stands between the digits.
std::string byte_per_character(std::string_view permissions) {
    std::string bytes;
    for (const char32_t character : common::code_points(permissions))
        bytes += character < 0x80 ? static_cast<char>(character) : '?';
    return bytes;
}

}  // namespace

SignIn::SignIn(database::Connection& connection, Session& session, common::Services services)
    : connection_(connection), session_(session), services_(services) {
    for (const auto& row : connection_.query("select * from [users]")) {
        users_.push_back({row.integer("code"), row.text("name")});
    }
}

SignInOutcome SignIn::confirm(std::optional<std::int64_t> code, std::string_view password) {
    if (!code) {
        services_.prompts.message(message::enter_user, Icon::exclamation);
        return SignInOutcome::stay_on_list;
    }
    const auto found = connection_.query(Sql("select * from [users] where code = ") + *code);
    if (found.empty()) {
        services_.prompts.message(message::no_such_user, Icon::exclamation);
        return SignInOutcome::stay_on_list;
    }
    const database::Row& user = found.front();
    session_.permissions = byte_per_character(user.text("perm"));
    session_.user_code = user.integer("code");
    session_.user_name = user.text("Name");
    if (!same_password(password, user.text("pass"))) {
        services_.log.log_event("wrong password for user " + std::to_string(*code), log_code);
        services_.prompts.message(message::wrong_password, Icon::exclamation);
        return SignInOutcome::stay_on_password;
    }
    session_.settings = read_settings(connection_);
    if (!load_workplace()) {
        services_.prompts.message(message::wrong_data, Icon::critical);
        return SignInOutcome::end_program;
    }
    services_.log.log_event("user " + std::to_string(*code) + " signed in", log_code);
    return SignInOutcome::signed_in;
}

// The store that the settings name and the drawer that the command line names.
bool SignIn::load_workplace() {
    const std::int64_t store = session_.settings.st_d;
    const auto stores = connection_.query(Sql("select * from stocks where code = ") + store);
    if (stores.empty()) {
        services_.log.log_event("no store " + std::to_string(store) + " in stocks", log_code);
        return false;
    }
    session_.store_code = store;
    session_.store_name = stores.front().text("name");
    const auto drawers = connection_.query(Sql("select * from cash where stcode = ") + store +
                                           " and code = " + session_.cash_point);
    if (drawers.empty()) {
        services_.log.log_event("no drawer " + std::to_string(session_.cash_point) + " of store " +
                                    std::to_string(store) + " in cash",
                                log_code);
        return false;
    }
    session_.drawer_name = drawers.front().text("Name");
    return true;
}

}  // namespace signin
