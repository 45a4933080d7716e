#include "signin/change_password.h"

#include <string>

#include "database/sql.h"
#include "signin/messages.h"
#include "signin/passwords.h"

namespace signin {

namespace {

using common::Icon;
using database::quoted;
using database::Sql;

constexpr std::string_view log_code = "63";

bool refuse(common::Services& services, const std::string& cause, std::string_view told) {
    services.log.log_event("password not changed: " + cause, log_code);
    services.prompts.message(told, Icon::critical);
    return false;
}

std::string stored_password(database::Connection& connection, std::int64_t user) {
    return database::text_of(connection.scalar(Sql("select pass from [users] where code = ") + user));
}

}  // namespace

bool change_password(database::Connection& connection, const Session& session, common::Services services,
                     std::string_view old_password, std::string_view new_password) {
    const auto found = connection.query(Sql("select * from [users] where code = ") + session.user_code);
    if (found.empty()) {
        services.prompts.message(message::no_such_user, Icon::exclamation);
        return false;
    }
    if (!same_password(old_password, found.front().text("pass"))) {
        services.prompts.message(message::wrong_old_password, Icon::exclamation);
        return false;
    }
    // Shops made by other means may have no [user] beside [users], where the statement fails, or one that is
    // a table of its own, where it changes nothing that sign-in reads: so it is read again.
    try {
        connection.execute(Sql("update [user] set pass = ") + quoted(new_password) +
                           " where code = " + session.user_code);
        connection.make_durable();
    } catch (const database::Error& error) {
        return refuse(services, error.what(), message::password_not_changed);
    }
    const std::string stored = stored_password(connection, session.user_code);
    if (!same_password(stored, new_password)) {
        const bool is_unchanged = same_password(stored, old_password);
        return refuse(services, "[users] holds another one than was written",
                      is_unchanged ? message::password_not_changed : message::password_garbled);
    }
    services.log.log_event("user " + std::to_string(session.user_code) + " changed his password", log_code);
    services.prompts.message(message::password_changed, Icon::information);
    return true;
}

}  // namespace signin
