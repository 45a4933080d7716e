// tallvex-admin users: the users of the shop, their passwords and permissions.
#include "admin/users.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "signin/badges.h"
#include "signin/permissions.h"

namespace admin {

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

std::vector<std::string_view> allowed_actions(std::string_view permissions) {
    std::vector<std::string_view> names;
    for (const signin::Permission& action : signin::guarded_actions())
        if (signin::has_permission(permissions, action.position)) names.push_back(action.name);
    return names;
}

namespace {

std::string checked_password(Connection& connection, std::string_view password) {
    const std::string_view kept = common::trim(password);
    if (!database::TextLimits(connection, "users").fits("pass", kept))
        throw Refused("the password is too long");
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
    require_plain_name(kept);
    if (!database::TextLimits(connection, "users").fits("name", kept)) throw Refused("the name is too long");
    if (common::parse_integer(kept)) throw Refused("a name that is a number would be taken for a code");
    if (!connection.query(Sql("select code from users where [name] = ") + quoted(kept)).empty()) {
        throw Refused("there is a user \"" + std::string(kept) + "\" already");
    }
    const std::string pass = checked_password(connection, password);
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
    const std::string pass = checked_password(connection, password);
    connection.execute("update users set pass = ? where code = ?",
                       {database::Value(pass), database::Value(code)});
    connection.make_durable();
}

void set_permissions(Connection& connection, std::int64_t code, std::string_view permissions) {
    connection.execute(Sql("update users set perm = ") + quoted(permissions) + " where code = " + code);
    connection.make_durable();
}

namespace {

struct Options {
    std::string who;
    bool no_password = false;
    std::string set;
    std::string allow;
    std::string deny;
    bool draw = false;
    bool take = false;
};

std::string password_of(const Options& options, std::string_view whose, Tool& tool) {
    if (options.no_password) return {};
    return ask_password(tool, whose, "give --no-password if that is meant");
}

// An option's "a,b" as a list for permission_string, with the mark before each name.
std::string marked(const std::string& names, char mark) {
    std::string list;
    for (const char c : names)
        list += c == ',' ? mark : c;
    return names.empty() ? list : mark + list;
}

std::string wanted_permissions(const Options& options, std::string_view before) {
    try {
        std::string permissions(before);
        if (!options.set.empty()) permissions = permission_string(marked(options.set, '+').substr(1));
        if (!options.allow.empty()) permissions = permission_string(marked(options.allow, '+'), permissions);
        if (!options.deny.empty()) permissions = permission_string(marked(options.deny, '-'), permissions);
        return permissions;
    } catch (const UnknownAction& error) {
        throw Refused(std::string(error.what()) + "; see: tallvex-admin users actions");
    }
}

std::string joined(const std::vector<std::string_view>& names) {
    std::string text;
    for (const std::string_view name : names)
        text += (text.empty() ? "" : ", ") + std::string(name);
    return text.empty() ? "nothing" : text;
}

void list(Tool& tool) {
    const auto connection = open_shop(tool);
    for (const auto& row : connection->query("select * from users order by code")) {
        const auto allowed = allowed_actions(row.text("perm"));
        tool.out << row.text("code") << "  " << row.text("name") << "\n    may: "
                 << (allowed.size() == signin::guarded_actions().size() ? "everything" : joined(allowed))
                 << '\n';
    }
}

void list_actions(Tool& tool) {
    for (const signin::Permission& action : signin::guarded_actions()) {
        tool.out << action.name << std::string(26 - std::min<std::size_t>(action.name.size(), 24), ' ')
                 << action.position << "  " << action.meaning << '\n';
    }
}

void add_permission_options(CLI::App& command, Options& options) {
    command.add_option("--set", options.set,
                       "Allow exactly these actions, commas between; \"all\", \"named\", \"none\"");
    command.add_option("--allow", options.allow, "Allow these actions too");
    command.add_option("--deny", options.deny, "Forbid these actions");
}

void add_password_option(CLI::App& command, Options& options) {
    command.add_flag(
        "--no-password", options.no_password,
        "Let the user sign in without one; otherwise it is asked for, or read from the standard input");
}

void run_add(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const std::string permissions = wanted_permissions(options, std::string(permission_places, '0'));
    const std::int64_t code =
        add_user(*connection, options.who, password_of(options, options.who, tool), permissions);
    tool.out << "user " << code << " (" << options.who << ") may: " << joined(allowed_actions(permissions))
             << '\n';
}

void run_password(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const User user = find_user(*connection, options.who);
    set_password(*connection, user.code, password_of(options, user.name, tool));
    tool.out << "user " << user.code << " (" << user.name << ") has "
             << (options.no_password ? "no password any more\n" : "a new password\n");
}

void run_permissions(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const User user = find_user(*connection, options.who);
    const std::string permissions = wanted_permissions(options, user.permissions);
    if (permissions != user.permissions) set_permissions(*connection, user.code, permissions);
    tool.out << "user " << user.code << " (" << user.name << ") may: " << joined(allowed_actions(permissions))
             << '\n';
}

// The number of a card, or a new one that the shop keeper prints on a card as a barcode.
void run_badge(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const User user = find_user(*connection, options.who);
    const std::string whose = "user " + std::to_string(user.code) + " (" + user.name + ")";
    if (options.take) {
        const bool had = signin::take_badge(*connection, user.code);
        tool.out << whose << (had ? " has no badge any more\n" : " had no badge\n");
        return;
    }
    std::string typed;
    if (!options.draw)
        typed = ask_password(tool, "the badge of " + user.name, "scan the badge, or give --new or --take");
    const auto digits = options.draw ? std::optional(signin::new_badge()) : signin::read_badge(typed);
    if (!digits)
        throw Refused("a badge has " + std::to_string(signin::shortest_badge) + " to " +
                      std::to_string(signin::longest_badge) + " digits and nothing else");
    if (!signin::give_badge(*connection, tool.clock, user.code, *digits))
        throw Refused("this badge is somebody else's");
    if (options.draw) tool.out << *digits << '\n';
    tool.out << whose << " approves with this badge\n";
}

}  // namespace

void add_users(CLI::App& program, Tool& tool) {
    CLI::App* users =
        program.add_subcommand("users", "Lists users, adds them, sets passwords and permissions");
    users->require_subcommand(1);

    users->add_subcommand("list", "Lists the users and what each may do")->callback([&tool] { list(tool); });
    users
        ->add_subcommand("actions",
                         "Lists the guarded actions: name, place in the permission string, meaning")
        ->callback([&tool] { list_actions(tool); });

    const auto options = std::make_shared<Options>();
    CLI::App* add = users->add_subcommand("add", "Adds a user");
    add->add_option("name", options->who, "The name on the sign-in list")->required();
    add_password_option(*add, *options);
    add_permission_options(*add, *options);
    add->callback([options, &tool] { run_add(*options, tool); });

    CLI::App* password = users->add_subcommand("password", "Sets a user's password");
    password->add_option("user", options->who, "Code or name")->required();
    add_password_option(*password, *options);
    password->callback([options, &tool] { run_password(*options, tool); });

    CLI::App* permissions = users->add_subcommand("permissions", "Shows or changes what a user may do");
    permissions->add_option("user", options->who, "Code or name")->required();
    add_permission_options(*permissions, *options);
    permissions->callback([options, &tool] { run_permissions(*options, tool); });

    CLI::App* badge =
        users->add_subcommand("badge", "Gives a user a badge to approve with, or takes it away");
    badge->add_option("user", options->who, "Code or name")->required();
    CLI::Option* draw = badge->add_flag(
        "--new", options->draw, "Draw a number and write it out, to be printed on a card as a barcode");
    badge->add_flag("--take", options->take, "Take the badge away")->excludes(draw);
    badge->callback([options, &tool] { run_badge(*options, tool); });
}

}  // namespace admin
