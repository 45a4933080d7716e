#include "signin/permissions.h"

#include <algorithm>

#include "common/text.h"
#include "signin/messages.h"

namespace signin {

namespace {

constexpr Permission permissions[] = {
    {Action::return_kind, 161, "return_kind", "ring up returns and the third kind"},
    {Action::sell_below_stock, 216, "sell_below_stock_a", "sell more than the stock (any one of three)"},
    {Action::sell_below_stock, 286, "sell_below_stock_b", "sell more than the stock (any one of three)"},
    {Action::sell_below_stock, 281, "sell_below_stock_c", "sell more than the stock (any one of three)"},
    {Action::reprint, 221, "reprint", "print a receipt again"},
    {Action::open_drawer, 231, "open_drawer", "open the drawer without a sale"},
    {Action::item_info, 246, "item_info", "see an item's prices and profit"},
    {Action::edit_price, 251, "edit_price", "change the price of a line"},
    {Action::daily_statement, 256, "daily_statement", "see the day's cash statement"},
    {Action::edit_discount, 271, "edit_discount", "give a discount on a line"},
    {Action::sell_reserved, 291, "sell_reserved", "sell goods that are reserved"},
    {Action::discount_above_ceiling, 301, "discount_above_ceiling",
     "give an invoice discount above the ceiling"},
    {Action::choose_port, 341, "choose_port", "choose and test the receipt printer, design the receipt"},
    {Action::edit_goods, 351, "edit_goods", "office: change items, prices and barcodes"},
    {Action::receive_goods, 356, "receive_goods", "office: take in goods and return them to suppliers"},
    {Action::count_stock, 361, "count_stock", "office: take stock, write off goods"},
    {Action::edit_lists, 366, "edit_lists", "office: change the shop's lists and settings"},
    {Action::edit_users, 371, "edit_users", "office: change users and their rights"},
    {Action::see_reports, 376, "see_reports", "office: see the reports"},
    {Action::see_cost, 381, "see_cost", "office: see cost and profit"},
};

constexpr struct {
    Action action;
    std::string_view caption;
} captions[] = {
    {Action::return_kind, "عمل مرتجع"},                       // a return
    {Action::sell_below_stock, "بيع أكثر من الرصيد"},         // a sale below stock
    {Action::reprint, "إعادة طباعة بون"},                     // a reprint
    {Action::open_drawer, "فتح الدرج بدون بيع"},              // opening the drawer without a sale
    {Action::item_info, "أسعار الصنف وربحه"},                 // an item's prices and profit
    {Action::edit_price, "تعديل سعر"},                        // changing a price
    {Action::edit_tiles, "تعديل الأصناف السريعة"},            // changing the pages of tiles
    {Action::daily_statement, "كشف الخزينة وسجل الأحداث"},    // the cash statement and the journal
    {Action::edit_discount, "خصم على صنف"},                   // a discount on an item
    {Action::sell_reserved, "بيع كمية محجوزة"},               // selling reserved goods
    {Action::discount_above_ceiling, "خصم أعلى من المسموح"},  // a discount above the ceiling
    {Action::choose_port, "اختيار طابعة البون"},              // choosing the receipt printer
    {Action::edit_goods, "تعديل الأصناف والأسعار"},           // changing items and prices
    {Action::receive_goods, "استلام بضاعة"},                  // goods in
    {Action::count_stock, "جرد البضاعة"},                     // stock-taking
    {Action::edit_lists, "قوائم المحل وإعداداته"},            // the shop's lists and settings
    {Action::edit_users, "المستخدمون وصلاحياتهم"},            // users and their rights
    {Action::see_reports, "التقارير"},                        // the reports
    {Action::see_cost, "التكلفة والربح"},                     // cost and profit
};

}  // namespace

std::string_view caption_of(Action action) {
    return std::ranges::find_if(captions, [&](const auto& entry) { return entry.action == action; })->caption;
}

std::span<const Permission> guarded_actions() {
    return permissions;
}

std::string permissions_of(const database::Row& user) {
    std::string bytes;
    for (const char32_t character : common::code_points(user.text("perm")))
        bytes += character < 0x80 ? static_cast<char>(character) : '?';
    return bytes;
}

bool allows(std::string_view held, Action action) {
    if (action == Action::edit_tiles) action = Action::edit_price;
    return std::ranges::any_of(permissions, [&](const Permission& permission) {
        return permission.action == action && has_permission(held, permission.position);
    });
}

bool allows(const Session& session, Action action) {
    return allows(session.permissions, action);
}

bool allows_office(std::string_view held) {
    return std::ranges::any_of(permissions, [&](const Permission& permission) {
        return permission.action >= Action::edit_goods && has_permission(held, permission.position);
    });
}

Permit authorise(const Session& session, common::Prompts& prompts, Action action, std::string_view refusal,
                 common::Icon icon, audit::Event about) {
    if (allows(session, action)) return {true};
    about.what = std::string(caption_of(action)) + (about.what.empty() ? "" : ": ") + about.what;
    if (session.ask_supervisor)
        about.approver = session.ask_supervisor({action, refusal, icon, about.what});
    else
        prompts.message(refusal, icon);
    about.kind = about.approver ? audit::Kind::approval : audit::Kind::refusal;
    session.note(about);
    return {about.approver.has_value(), about.approver};
}

Permit authorise_change(const Session& session, common::Prompts& prompts, Action action) {
    if (session.is_read_only) {
        prompts.message(message::read_only, common::Icon::information);
        return {};
    }
    return authorise(session, prompts, action);
}

}  // namespace signin
