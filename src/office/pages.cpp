#include "office/pages.h"

#include "ui/counting/counting_page.h"
#include "ui/counting/needs_page.h"
#include "ui/goods/goods_page.h"
#include "ui/journal/journal_screen.h"
#include "ui/purchases/receipts_page.h"
#include "ui/purchases/suppliers_page.h"
#include "ui/reports/report_page.h"
#include "ui/reports/today_page.h"
#include "ui/shop/lists_page.h"
#include "ui/shop/settings_page.h"
#include "ui/shop/users_page.h"

namespace office {

namespace {

void run_journal(QWidget* window, const ui::Context& context) {
    ui::JournalScreen screen(window, context);
    if (screen.open()) screen.run();
}

template <typename Made>
ui::Page* make_page(const ui::Context& context) {
    return new Made(context);
}

}  // namespace

const std::vector<Entry>& entries() {
    using signin::Action;
    static const std::vector<Entry> table = {
        {"today", "ال&يوم", {Action::see_reports}, make_page<ui::TodayPage>},
        {"goods", "الأ&صناف", {Action::edit_goods}, make_page<ui::GoodsPage>},
        {"intake", "بضاعة &واردة", {Action::receive_goods}, make_page<ui::ReceiptsPage>},
        {"suppliers", "المو&ردون", {Action::receive_goods}, make_page<ui::SuppliersPage>},
        {"counting", "ال&جرد", {Action::count_stock}, make_page<ui::CountingPage>},
        {"needs",
         "النواقص والصلاحي&ة",
         {Action::count_stock, Action::receive_goods},
         make_page<ui::NeedsPage>,
         nullptr,
         {ui::PageList::low_stock, ui::PageList::expiring_goods}},
        {"reports", "ا&لتقارير", {Action::see_reports}, make_page<ui::ReportPage>},
        {"lists", "القوا&ئم", {Action::edit_lists}, make_page<ui::ListsPage>},
        {"users", "ال&مستخدمون", {Action::edit_users}, make_page<ui::UsersPage>},
        {"settings", "الإ&عدادات", {Action::edit_lists}, make_page<ui::SettingsPage>},
        {"journal", "سجل الأحدا&ث", {Action::daily_statement}, nullptr, run_journal},
    };
    return table;
}

}  // namespace office
