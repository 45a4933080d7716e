#include "shop/users.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"
#include "database/choices.h"
#include "database/next_number.h"
#include "database/recordset.h"
#include "database/transaction.h"
#include "shop/messages.h"
#include "shop/refused.h"
#include "signin/permissions.h"

namespace shop {

using database::Connection;
using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

void put(std::string& permissions, int position, char mark) {
    permissions.at(static_cast<std::size_t>(position) - 1) = mark;
}

void apply(std::string& permissions, std::string_view word, char mark) {
    if (word == "all") {
        permissions.assign(permission_places, mark);
        return;
    }
    if (word == "none") {
        permissions.assign(permission_places, '0');
        return;
    }
    bool found = false;
    for (const signin::Permission& action : signin::guarded_actions()) {
        if (word != "named" && word != action.name) continue;
        put(permissions, action.position, mark);
        found = true;
    }
    if (found) return;
    const auto place = common::parse_integer(word);
    if (!place || *place < 1 || *place > static_cast<long long>(permission_places)) {
        throw UnknownAction("\"" + std::string(word) +
                            "\" is neither a guarded action nor a place from 1 to " +
                            std::to_string(permission_places));
    }
    put(permissions, static_cast<int>(*place), mark);
}

}  // namespace

std::string permission_string(std::string_view list, std::string_view before) {
    list = common::trim(list);
    std::string permissions(permission_places, '0');
    if (list.starts_with('+') || list.starts_with('-')) {
        permissions.replace(0, std::min(before.size(), permission_places),
                            before.substr(0, permission_places));
    }
    char mark = '1';
    while (!list.empty()) {
        if (list.front() == '+' || list.front() == '-') {
            mark = list.front() == '+' ? '1' : '0';
            list.remove_prefix(1);
        }
        const std::size_t end = std::min(list.find_first_of("+-"), list.size());
        apply(permissions, common::trim(list.substr(0, end)), mark);
        list.remove_prefix(end);
    }
    return permissions;
}

std::string with_right(std::string_view permissions, signin::Action right, bool allowed) {
    std::string changed(permissions.substr(0, permission_places));
    changed.resize(permission_places, '0');
    for (const signin::Permission& action : signin::guarded_actions())
        if (action.action == right) put(changed, action.position, allowed ? '1' : '0');
    return changed;
}

std::vector<std::string_view> allowed_actions(std::string_view permissions) {
    std::vector<std::string_view> names;
    for (const signin::Permission& action : signin::guarded_actions())
        if (signin::has_permission(permissions, action.position)) names.push_back(action.name);
    return names;
}

void require_plain_name(std::string_view name) {
    if (common::printable(name) != name)
        throw Refused(
            "a name must not have control characters or marks of direction: " + common::printable(name),
            std::string(message::name_not_plain));
}

void require_user_name(std::string_view name) {
    if (common::trim(name).empty()) throw Refused("a user needs a name", std::string(message::no_name));
    require_plain_name(name);
    if (common::parse_integer(common::trim(name)))
        throw Refused("a name that is a number would be taken for a code",
                      std::string(message::name_is_number));
}

void require_free_name(Connection& connection, std::string_view name, std::int64_t own) {
    require_user_name(name);
    if (!database::TextLimits(connection, "users").fits("name", name))
        throw Refused("the name is too long", std::string(message::name_too_long));
    if (!connection
             .query(Sql("select code from users where [name] = ") + quoted(name) + " and code <> " + own)
             .empty())
        throw Refused("there is a user \"" + std::string(name) + "\" already",
                      std::string(message::name_taken) + std::string(name));
}

std::string checked_password(Connection& connection, std::string_view password) {
    const std::string_view kept = common::trim(password);
    if (!database::TextLimits(connection, "users").fits("pass", kept))
        throw Refused("the password is too long", std::string(message::password_too_long));
    return std::string(kept);
}

User find_user(Connection& connection, std::string_view who) {
    const auto code = common::parse_integer(who);
    const auto rows =
        code ? connection.query(Sql("select * from users where code = ") + *code)
             : connection.query(Sql("select * from users where [name] = ") + quoted(common::trim(who)));
    if (rows.empty())
        throw Refused("there is no user \"" + std::string(who) + "\"; see: tallvex-admin users list");
    if (rows.size() > 1) {
        throw Refused("several users are called \"" + std::string(who) + "\"; give the code instead");
    }
    return {rows.front().integer("code"), rows.front().text("name"), rows.front().text("perm")};
}

std::int64_t insert_user(Connection& connection, std::string_view name, std::string_view password,
                         std::string_view permissions) {
    const std::string_view kept = common::trim(name);
    require_free_name(connection, kept);
    const std::string pass = checked_password(connection, password);
    const std::int64_t code = database::next_number(connection, "select max(code) from users");
    Recordset users(connection, "select * from users");
    users.add();
    users.set("code", code);
    users.set("name", kept);
    users.set("pass", pass);
    users.set("perm", permissions);
    users.update();
    return code;
}

std::int64_t add_user(Connection& connection, std::string_view name, std::string_view password,
                      std::string_view permissions) {
    std::int64_t code = 0;
    database::in_transaction(connection,
                             [&] { code = insert_user(connection, name, password, permissions); });
    connection.make_durable();
    return code;
}

void set_password(Connection& connection, std::int64_t code, std::string_view password) {
    const std::string pass = checked_password(connection, password);
    connection.execute("update users set pass = ? where code = ?",
                       {database::Value(pass), database::Value(code)});
    connection.make_durable();
}

void set_permissions(Connection& connection, std::int64_t code, std::string_view permissions) {
    connection.execute(Sql("update users set perm = ") + quoted(permissions) + " where code = " + code);
    connection.make_durable();
}

}  // namespace shop
