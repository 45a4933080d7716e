// tallvex-admin users: the users of the shop, their passwords and permissions.
#include "shop/users.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "signin/badges.h"
#include "signin/permissions.h"

namespace admin {

using shop::User, shop::find_user, shop::allowed_actions, shop::permission_places, shop::permission_string;

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
    return ask_secret(tool, "password of " + std::string(whose), "give --no-password if that is meant");
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
    } catch (const shop::UnknownAction& error) {
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

void add_permission_options(CLI::App& command, Options& options, const Tool& tool) {
    command.add_option(
        "--set", options.set,
        tool.help(
            "Allow exactly these actions, commas between; \"all\", \"named\", \"none\"",
            "يسمح بهذه الأعمال وحدها وبينها فاصلة (,)، أو all للكل، أو named لما له اسم، أو none بلا شيء"));
    command.add_option("--allow", options.allow,
                       tool.help("Allow these actions too", "يسمح بهذه الأعمال أيضا"));
    command.add_option("--deny", options.deny, tool.help("Forbid these actions", "يمنع هذه الأعمال"));
}

void add_password_option(CLI::App& command, Options& options, const Tool& tool) {
    command.add_flag(
        "--no-password", options.no_password,
        tool.help(
            "Let the user sign in without one; otherwise it is asked for, or read from the standard input",
            "يدخل المستخدم بلا كلمة سر، وبدونه تطلب منك، أو تقرأ من الدخل القياسي"));
}

void run_add(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const std::string permissions = wanted_permissions(options, std::string(permission_places, '0'));
    const std::int64_t code =
        shop::add_user(*connection, options.who, password_of(options, options.who, tool), permissions);
    tool.out << "user " << code << " (" << options.who << ") may: " << joined(allowed_actions(permissions))
             << '\n';
}

void run_password(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const User user = find_user(*connection, options.who);
    shop::set_password(*connection, user.code, password_of(options, user.name, tool));
    tool.out << "user " << user.code << " (" << user.name << ") has "
             << (options.no_password ? "no password any more\n" : "a new password\n");
}

void run_permissions(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const User user = find_user(*connection, options.who);
    const std::string permissions = wanted_permissions(options, user.permissions);
    if (permissions != user.permissions) shop::set_permissions(*connection, user.code, permissions);
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
    if (!options.draw) typed = ask_secret(tool, "badge of " + user.name, "scan it, or give --new or --take");
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
        program.add_subcommand("users", tool.help("Lists users, adds them, sets passwords and permissions",
                                                  "يعرض المستخدمين، ويضيفهم، ويغير كلمات السر والصلاحيات"));
    users->require_subcommand(1);

    users
        ->add_subcommand(
            "list", tool.help("Lists the users and what each may do", "يعرض المستخدمين وما يسمح به لكل منهم"))
        ->callback([&tool] { list(tool); });
    users
        ->add_subcommand("actions",
                         tool.help("Lists the guarded actions: name, place in the permission string, meaning",
                                   "يعرض الأعمال التي تحتاج صلاحية: الاسم والرقم والمعنى"))
        ->callback([&tool] { list_actions(tool); });

    const auto options = std::make_shared<Options>();
    CLI::App* add = users->add_subcommand("add", tool.help("Adds a user", "يضيف مستخدما"));
    add->add_option("name", options->who, tool.help("The name on the sign-in list", "الاسم في قائمة الدخول"))
        ->required();
    add_password_option(*add, *options, tool);
    add_permission_options(*add, *options, tool);
    add->callback([options, &tool] { run_add(*options, tool); });

    CLI::App* password =
        users->add_subcommand("password", tool.help("Sets a user's password", "يغير كلمة سر مستخدم"));
    password->add_option("user", options->who, tool.help("Code or name", "الكود أو الاسم"))->required();
    add_password_option(*password, *options, tool);
    password->callback([options, &tool] { run_password(*options, tool); });

    CLI::App* permissions = users->add_subcommand(
        "permissions", tool.help("Shows or changes what a user may do", "يعرض صلاحيات مستخدم أو يغيرها"));
    permissions->add_option("user", options->who, tool.help("Code or name", "الكود أو الاسم"))->required();
    add_permission_options(*permissions, *options, tool);
    permissions->callback([options, &tool] { run_permissions(*options, tool); });

    CLI::App* badge =
        users->add_subcommand("badge", tool.help("Gives a user a badge to approve with, or takes it away",
                                                 "يعطي المستخدم بطاقة يوافق بها، أو يسحبها"));
    badge->add_option("user", options->who, tool.help("Code or name", "الكود أو الاسم"))->required();
    CLI::Option* draw =
        badge->add_flag("--new", options->draw,
                        tool.help("Draw a number and write it out, to be printed on a card as a barcode",
                                  "يختار رقما ويكتبه، ليطبع باركودا على بطاقة"));
    badge->add_flag("--take", options->take, tool.help("Take the badge away", "يسحب البطاقة"))
        ->excludes(draw);
    badge->callback([options, &tool] { run_badge(*options, tool); });
}

}  // namespace admin
