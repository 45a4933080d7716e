#include "signin/supervisors.h"

#include "common/text.h"
#include "database/reads.h"
#include "database/sql.h"
#include "signin/badges.h"
#include "signin/blocked.h"
#include "signin/messages.h"
#include "signin/passwords.h"

namespace signin {

using common::Icon;
using database::Sql;

Supervisors::Supervisors(database::Connection& connection, Session& session, common::Services services,
                         Action action)
    : connection_(connection), session_(session), services_(services) {
    BlockedUsers blocked;
    database::Reads reads;
    ask_blocked(reads, blocked);
    reads.add("select * from [users] order by code", [&](const database::Result& rows) {
        for (const auto& user : rows)
            if (!blocked.contains(user.integer("code")) && allows(permissions_of(user), action))
                users_.push_back({user.integer("code"), common::printable(user.text("name"))});
    });
    reads.run(connection_);
}

std::string Supervisors::pause_text(std::optional<std::int64_t> chosen) const {
    return signin::pause_text(session_, services_.clock, chosen.value_or(0));
}

std::optional<audit::Person> Supervisors::person(std::int64_t code) const {
    if (!contains(users_, code)) return std::nullopt;
    return audit::Person{code, name_of(users_, code)};
}

std::optional<audit::Person> Supervisors::confirm(std::optional<std::int64_t> chosen,
                                                  std::string_view typed) {
    const std::int64_t user = chosen.value_or(0);
    // Checked before a badge is looked up, or badges could be tried during the pause.
    if (pause_text(chosen).empty()) {
        if (const auto badge = read_badge(typed))
            if (const auto owner = badge_owner(connection_, *badge)) {
                const auto found = person(*owner);
                if (!found) services_.prompts.message(message::badge_without_right, Icon::exclamation);
                return found;
            }
    }
    std::optional<std::string> stored;
    if (person(user)) {
        const auto rows = connection_.query(Sql("select pass from [users] where code = ") + user);
        if (!rows.empty()) stored = rows.front().text("pass");
    }
    const std::string noted = std::string(message::wrong_approval) + name_of(users_, user);
    if (!is_password(
            session_, services_,
            {user, typed, stored, chosen ? message::wrong_password : message::no_such_badge, "64", noted}))
        return std::nullopt;
    return person(user);
}

}  // namespace signin
