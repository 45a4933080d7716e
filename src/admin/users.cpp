#include "admin/users.h"

#include "admin/tool.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

constexpr std::size_t longest_name = 100;      // users.name
constexpr std::size_t longest_password = 100;  // users.pass

std::string checked_password(std::string_view password) {
    const std::string_view kept = common::trim(password);
    if (common::column_width(kept) > longest_password) {
        throw Refused("a password has at most " + std::to_string(longest_password) + " characters");
    }
    return std::string(kept);
}

}  // namespace

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

std::int64_t add_user(Connection& connection, std::string_view name, std::string_view password,
                      std::string_view permissions) {
    const std::string_view kept = common::trim(name);
    if (kept.empty()) throw Refused("a user needs a name");
    if (common::column_width(kept) > longest_name) {
        throw Refused("a name has at most " + std::to_string(longest_name) + " characters");
    }
    if (common::parse_integer(kept)) throw Refused("a name that is a number would be taken for a code");
    if (!connection.query(Sql("select code from users where [name] = ") + quoted(kept)).empty()) {
        throw Refused("there is a user \"" + std::string(kept) + "\" already");
    }
    const std::string pass = checked_password(password);
    const std::int64_t code = database::integer_of(connection.scalar("select max(code) from users")) + 1;
    Recordset users(connection, "select * from users");
    users.add();
    users.set("code", code);
    users.set("name", kept);
    users.set("pass", pass);
    users.set("perm", permissions);
    users.update();
    connection.make_durable();
    return code;
}

void set_password(Connection& connection, std::int64_t code, std::string_view password) {
    const std::string pass = checked_password(password);
    connection.execute("update users set pass = ? where code = ?",
                       {database::Value(pass), database::Value(code)});
    connection.make_durable();
}

void set_permissions(Connection& connection, std::int64_t code, std::string_view permissions) {
    connection.execute(Sql("update users set perm = ") + quoted(permissions) + " where code = " + code);
    connection.make_durable();
}

}  // namespace admin
