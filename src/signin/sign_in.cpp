#include "signin/sign_in.h"

#include <string>

#include "common/text.h"
#include "database/choices.h"
#include "database/error.h"
#include "database/reads.h"
#include "database/sql.h"
#include "database/till_settings.h"
#include "signin/blocked.h"
#include "signin/messages.h"
#include "signin/passwords.h"
#include "signin/permissions.h"

namespace signin {

namespace {

using common::Icon;
using database::quoted;
using database::Sql;

constexpr std::string_view sign_in_code = "62";  // in the log
constexpr std::string_view password_code = "63";

bool refuse_change(common::Services& services, const std::string& cause, std::string_view told) {
    services.log.log_event("password not changed: " + cause, password_code);
    services.prompts.message(told, Icon::critical);
    return false;
}

std::string stored_password(database::Connection& connection, std::int64_t user) {
    return database::text_of(connection.scalar(Sql("select pass from [users] where code = ") + user));
}

}  // namespace

SignIn::SignIn(database::Connection& connection, Session& session, common::Services services)
    : connection_(connection), session_(session), services_(services) {
    BlockedUsers blocked;
    database::Reads reads;
    ask_blocked(reads, blocked);
    reads.add("select * from [users]", [&](const database::Result& rows) {
        for (const auto& row : rows)
            if (!blocked.contains(row.integer("code")))
                users_.push_back({row.integer("code"), common::printable(row.text("name"))});
    });
    reads.run(connection_);
}

std::string SignIn::pause_text(std::optional<std::int64_t> code) const {
    return code ? signin::pause_text(session_, services_.clock, *code) : std::string();
}

SignInOutcome SignIn::confirm(std::optional<std::int64_t> code, std::string_view password) {
    if (!code) {
        services_.prompts.message(message::enter_user, Icon::exclamation);
        return SignInOutcome::stay_on_list;
    }
    std::optional<database::Row> found;
    BlockedUsers blocked;
    database::Reads reads;
    reads.add(Sql("select * from [users] where code = ") + *code, [&found](const database::Result& rows) {
        if (!rows.empty()) found = rows.front();
    });
    ask_blocked(reads, blocked);
    reads.run(connection_);
    if (!found) {
        services_.prompts.message(message::no_such_user, Icon::exclamation);
        return SignInOutcome::stay_on_list;
    }
    const database::Row& user = *found;
    session_.permissions = permissions_of(user);
    session_.user_code = user.integer("code");
    session_.user_name = common::printable(user.text("Name"));
    if (!is_password(session_, services_,
                     {*code, password, user.text("pass"), message::wrong_password, sign_in_code,
                      message::wrong_password}))
        return SignInOutcome::stay_on_password;
    if (blocked.contains(*code)) {
        services_.prompts.message(message::blocked, Icon::critical);
        return SignInOutcome::stay_on_list;
    }
    if (session_.is_office && !allows_office(session_.permissions)) {
        services_.prompts.message(message::no_office_right, Icon::critical);
        return SignInOutcome::stay_on_list;
    }
    session_.settings = read_settings(connection_);
    if (!load_workplace()) {
        services_.prompts.message(message::wrong_data, Icon::critical);
        return SignInOutcome::end_program;
    }
    services_.log.log_event("user " + std::to_string(*code) + " signed in", sign_in_code);
    session_.note({.kind = audit::Kind::sign_in});
    return SignInOutcome::signed_in;
}

// The store that the settings name, and at a till the drawer that the command line names.
bool SignIn::load_workplace() {
    const std::int64_t store = session_.settings.st_d;
    std::optional<std::string> store_name, drawer_name;
    const auto into = [](std::optional<std::string>& name, const char* column) {
        return [&name, column](const database::Result& rows) {
            if (!rows.empty()) name = rows.front().text(column);
        };
    };
    database::Reads reads;
    reads.add(Sql("select * from stocks where code = ") + store, into(store_name, "name"));
    if (session_.is_office)
        database::ask_yes_or_no(reads, {{database::setting::office_read_only, &session_.is_read_only}});
    else
        reads.add(Sql("select * from cash where stcode = ") + store + " and code = " + session_.cash_point,
                  into(drawer_name, "Name"));
    reads.run(connection_);
    if (!store_name) {
        services_.log.log_event("no store " + std::to_string(store) + " in stocks", sign_in_code);
        return false;
    }
    session_.store_code = store;
    session_.store_name = *store_name;
    if (session_.is_office) return true;
    if (!drawer_name) {
        services_.log.log_event("no drawer " + std::to_string(session_.cash_point) + " of store " +
                                    std::to_string(store) + " in cash",
                                sign_in_code);
        return false;
    }
    session_.drawer_name = *drawer_name;
    return true;
}

bool change_password(database::Connection& connection, Session& session, common::Services services,
                     std::string_view old_password, std::string_view new_password) {
    const auto found = connection.query(Sql("select * from [users] where code = ") + session.user_code);
    if (found.empty()) {
        services.prompts.message(message::no_such_user, Icon::exclamation);
        return false;
    }
    if (!is_password(session, services,
                     {session.user_code, old_password, found.front().text("pass"),
                      message::wrong_old_password, password_code, message::wrong_old_password}))
        return false;
    if (!database::TextLimits(connection, "users").fits("pass", new_password)) {
        services.prompts.message(message::password_too_long, Icon::exclamation);
        return false;
    }
    // A shop may have no [user] beside [users], so that the statement fails, or a [user] that is a table of
    // its own, so that the statement changes nothing that sign-in reads. Reading the password again shows
    // which.
    try {
        connection.execute(Sql("update [user] set pass = ") + quoted(new_password) +
                           " where code = " + session.user_code);
        connection.make_durable();
    } catch (const database::Error& error) {
        return refuse_change(services, error.what(),
                             database::with_reason(message::password_not_changed, error));
    }
    const std::string stored = stored_password(connection, session.user_code);
    if (!same_password(stored, new_password)) {
        const bool is_unchanged = same_password(stored, old_password);
        return refuse_change(services, "[users] does not have the password that was written",
                             is_unchanged ? message::password_not_changed : message::password_garbled);
    }
    services.log.log_event("user " + std::to_string(session.user_code) + " changed his password",
                           password_code);
    services.prompts.message(message::password_changed, Icon::information);
    return true;
}

}  // namespace signin
