#include "shop/user_editor.h"

#include <algorithm>

#include "common/text.h"
#include "database/reads.h"
#include "database/transaction.h"
#include "shop/messages.h"
#include "shop/refused.h"
#include "shop/users.h"
#include "signin/badges.h"
#include "signin/blocked.h"

namespace shop {

using common::Refusal;
using database::quoted;
using database::Sql;
using signin::Action;

namespace {

// Ends a transaction without writing.
struct Given {
    Refusal refusal;
};

}  // namespace

const std::vector<RightGroup>& right_groups() {
    static const std::vector<RightGroup> groups = {
        // selling, cash and receipts, the office
        {"البيع",
         {Action::return_kind, Action::edit_price, Action::edit_discount, Action::discount_above_ceiling,
          Action::sell_below_stock, Action::sell_reserved, Action::item_info}},
        {"النقدية والإيصالات",
         {Action::open_drawer, Action::daily_statement, Action::reprint, Action::choose_port}},
        {"المكتب",
         {Action::edit_goods, Action::receive_goods, Action::count_stock, Action::edit_lists,
          Action::edit_users, Action::see_reports, Action::see_cost}},
    };
    return groups;
}

void UserEditor::open() {
    rows_.clear();
    signin::BlockedUsers blocked;
    std::set<std::int64_t> badges;
    database::Reads reads;
    reads.add("select * from users order by code", [this](const database::Result& rows) {
        for (const auto& row : rows)
            rows_.push_back({row.integer("code"), common::printable(row.text("name")),
                             signin::permissions_of(row), false, false, std::nullopt});
    });
    signin::ask_blocked(reads, blocked);
    reads.add_optional("select user_code from till_badge", [&](const database::Result& rows) {
        for (const auto& row : rows)
            badges.insert(row.integer("user_code"));
    });
    reads.add_optional(
        "select user_code, max(moment) as last_moment from till_journal where kind = 'sign_in' group by "
        "user_code",
        [this](const database::Result& rows) {
            for (const auto& row : rows)
                for (UserRow& user : rows_)
                    if (user.code == row.integer("user_code")) user.last_sign_in = row.moment("last_moment");
        });
    reads.run(connection_);
    for (UserRow& user : rows_) {
        user.blocked = blocked.contains(user.code);
        user.has_badge = badges.contains(user.code);
    }
}

std::optional<Refusal> UserEditor::changed_since(const UserRow& read) {
    const auto found = connection_.query(Sql("select * from users where code = ") + read.code);
    if (found.empty()) return Refusal({}, message::row_is_gone);
    const std::string name = common::printable(found.front().text("name"));
    const std::string permissions = signin::permissions_of(found.front());
    std::string text;
    if (name != read.name) text += "\nالاسم: " + name;
    for (const RightGroup& group : right_groups())
        for (const Action action : group.actions)
            if (const bool now = signin::allows(permissions, action);
                now != signin::allows(read.permissions, action))
                text += "\n" + std::string(signin::caption_of(action)) + ": " + (now ? "مسموح" : "غير مسموح");
    if (text.empty()) return std::nullopt;
    return Refusal({}, std::string(message::row_was_changed) + text);
}

bool UserEditor::has_keeper() {
    const auto blocked = signin::blocked_users(connection_);
    const auto users = connection_.query("select * from users");
    return std::ranges::any_of(users, [&](const database::Row& user) {
        return !blocked.contains(user.integer("code")) &&
               signin::allows(signin::permissions_of(user), Action::edit_users);
    });
}

template <typename Write>
std::optional<Refusal> UserEditor::change(const UserRow& row, const Write& write, const std::string& what) {
    if (!signin::authorise_change(session_, services_.prompts, Action::edit_users)) return Refusal({}, {});
    std::optional<Refusal> refusal;
    try {
        database::in_transaction(connection_, [&] {
            if (row.code != 0)
                if (auto changed = changed_since(row)) throw Given{*changed};
            write();
            if (!has_keeper()) throw Given{{"", message::last_of_users}};
        });
        connection_.make_durable();
        session_.note({.kind = audit::Kind::user_changed, .what = what});
    } catch (const Given& given) {
        refusal = given.refusal;
    } catch (const Refused& refused) {
        refusal.emplace("user_name", refused.told());
    }
    open();
    return refusal;
}

std::optional<Refusal> UserEditor::save(UserRow& row, const UserRow& read, std::string_view password) {
    row.name = std::string(common::trim(row.name));
    const bool is_own = row.code != 0 && row.code == session_.user_code;
    if (is_own && !signin::allows(row.permissions, Action::edit_users))
        return Refusal({}, message::own_right);
    if (read.code == 0 && common::trim(password).empty())
        return Refusal("user_password", message::no_password);
    const auto write = [&] {
        if (read.code == 0) {
            row.code = insert_user(connection_, row.name, password, row.permissions);
            return;
        }
        require_free_name(connection_, row.name, row.code);
        connection_.execute(Sql("update users set [name] = ") + quoted(row.name) +
                            ", perm = " + quoted(row.permissions) + " where code = " + row.code);
    };
    std::string what = (read.code == 0 ? "إضافة " : "تعديل ") + row.name;
    if (read.code != 0 && read.name != row.name) what += " (كان " + read.name + ")";
    for (const RightGroup& group : right_groups())
        for (const Action action : group.actions)
            if (const bool now = signin::allows(row.permissions, action);
                now != signin::allows(read.permissions, action))
                what += std::string("، ") + (now ? "+" : "-") + std::string(signin::caption_of(action));
    return change(read, write, what);
}

std::optional<Refusal> UserEditor::set_password(const UserRow& row, std::string_view password) {
    if (common::trim(password).empty()) return Refusal("user_password", message::no_password);
    return change(
        row,
        [&] {
            connection_.execute(
                "update users set pass = ? where code = ?",
                {database::Value(checked_password(connection_, password)), database::Value(row.code)});
        },
        "كلمة سر جديدة: " + row.name);
}

std::optional<Refusal> UserEditor::set_blocked(const UserRow& row, bool blocked) {
    if (row.code == session_.user_code) return Refusal({}, message::own_right);
    return change(
        row, [&] { signin::set_blocked(connection_, row.code, blocked, services_.clock.now()); },
        (blocked ? "إيقاف " : "إعادة تفعيل ") + row.name);
}

std::optional<Refusal> UserEditor::set_badge(const UserRow& row, std::string_view scanned) {
    const auto digits = signin::read_badge(scanned);
    if (!scanned.empty() && !digits) return Refusal("user_badge", message::no_badge);
    if (!signin::authorise_change(session_, services_.prompts, Action::edit_users)) return Refusal({}, {});
    if (digits) {
        if (!signin::give_badge(connection_, services_.clock, row.code, *digits))
            return Refusal("user_badge", message::badge_taken);
    } else {
        signin::take_badge(connection_, row.code);
    }
    session_.note(
        {.kind = audit::Kind::user_changed, .what = (digits ? "بطاقة جديدة: " : "سحب بطاقة: ") + row.name});
    open();
    return std::nullopt;
}

}  // namespace shop
