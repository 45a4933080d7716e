#include "ui/screens.h"

#include <type_traits>

#include "sales/messages.h"
#include "ui/accounts/account_statement_screen.h"
#include "ui/accounts/direct_receipt_sheet.h"
#include "ui/accounts/people_list.h"
#include "ui/accounts/voucher_sheet.h"
#include "ui/accounts/walk_in_sheet.h"
#include "ui/cash/cash_panel.h"
#include "ui/cash/daily_statement_screen.h"
#include "ui/cash/expense_screen.h"
#include "ui/cash/shift_screens.h"
#include "ui/journal/journal_screen.h"
#include "ui/printing/printer_sheet.h"
#include "ui/sales/sales_window.h"
#include "ui/sales/screen_sheet.h"
#include "ui/sales/sheets.h"
#include "ui/signin/sign_in_window.h"
#include "ui/stock/line_source_dialog.h"
#include "ui/stock/offers_sheet.h"

namespace ui {

namespace {

// Opens a screen that is built over the window, and shows it until it is left.
template <typename Screen>
void run_screen(SalesWindow& window) {
    Screen(&window, window.context()).run();
}

// The same for a screen that works on the invoice on the window.
template <typename Screen>
void run_on_invoice(SalesWindow& window) {
    Screen(&window, window.context(), window.desk()).run();
}

// The same for a screen that loads what it shows first, and is not shown if that fails.
template <typename Screen>
void run_opened(SalesWindow& window) {
    Screen screen(&window, window.context());
    if constexpr (std::is_void_v<decltype(screen.open())>) {
        screen.open();
    } else if (!screen.open()) {
        return;
    }
    screen.run();
}

void run_walk_in_customer(SalesWindow& window) {
    WalkInSheet screen(&window, window.context(), window.desk());
    if (screen.open()) screen.run();
}

template <accounts::VoucherKind kind>
void run_new_voucher(SalesWindow& window) {
    VoucherSheet screen(&window, window.context(), kind);
    screen.open_new();
    screen.run();
}

void run_shifts(SalesWindow& window) {
    ShiftScreen screen(&window, window.context());
    if (!screen.open()) return;
    screen.run();
    if (!screen.closing().isEmpty()) window.notice(screen.closing());
}

void run_invoice_data(SalesWindow& window) {
    if (const auto& partly = window.desk().sale().partly_saved) {
        window.context().services.prompts.message(sales::why_frozen(*partly), common::Icon::critical);
        return;
    }
    run_on_invoice<InvoiceDataSheet>(window);
}

}  // namespace

const std::vector<Command>& screen_commands() {
    using enum Command::Place;
    using enum Command::Typing;
    static const std::vector<Command> table = {
        {"f8", "ال&ورديات", Qt::Key_F8, strip, run_shifts},
        {"f9", "ك&شف الخزينة", Qt::Key_F9, strip, run_opened<DailyStatementScreen>},
        {"shift_f9", "ال&مصروفات", Qt::SHIFT | Qt::Key_F9, strip, run_opened<ExpenseScreen>},
        {"f10", "عميل &نقدي", key::walk_in_customer, strip, run_walk_in_customer},
        {"shift_f11", "مقبو&ضات", Qt::SHIFT | Qt::Key_F11, strip,
         run_new_voucher<accounts::VoucherKind::receipt>},
        {"shift_f12", "مد&فوعات", Qt::SHIFT | Qt::Key_F12, strip,
         run_new_voucher<accounts::VoucherKind::payment>},
        {"direct_receipt", "&قبض مباشر من عميل", Qt::Key_unknown, menu, run_on_invoice<DirectReceiptSheet>},
        {"customers", "عم&لاء الآجل", Qt::Key_unknown, menu, run_screen<AccountCustomersList>},
        {"account_statement", "كشف حساب عم&يل", Qt::Key_unknown, menu, run_opened<AccountStatementScreen>},
        {"tips_receivers", "عملاء الإك&راميات", Qt::Key_unknown, menu, run_screen<TipsReceiversList>},
        {"cash_count", "&جرد الخزينة", Qt::Key_unknown, menu, run_opened<CashCountSheet>},
        {"receipts", "بونات &اليوم", Qt::CTRL | Qt::Key_B, menu,
         [](SalesWindow& window) { ReceiptsSheet(&window, window.desk(), window.context()).run(); }, commit,
         "البونات"},
        {"offers", "&عروض الأسعار", Qt::CTRL | Qt::Key_O, menu, run_on_invoice<OffersSheet>, commit,
         "العروض"},
        {"keep_offer", "حف&ظ كعرض سعر", Qt::CTRL | Qt::Key_S, menu,
         [](SalesWindow& window) { keep_offer(&window, window.context(), window.desk()); }, finish},
        {"line_source", "مص&در الصنف", Qt::CTRL | Qt::Key_T, menu,
         [](SalesWindow& window) { choose_line_source(&window, window.context(), window.desk()); }, commit,
         "المصدر"},
        {"invoice_data", "&بيانات البون", key::invoice_data, menu, run_invoice_data},
        {"printer", "&طابعة البون", Qt::Key_unknown, menu, run_on_invoice<PrinterSheet>},
        {"screen", "&شاشة هذا الجهاز", Qt::Key_unknown, menu,
         [](SalesWindow& window) {
             ScreenSheet(&window, window.context()).run();
             window.repaint_all();
         }},
        {"journal", "سجل الأحدا&ث", Qt::CTRL | Qt::Key_J, menu, run_opened<JournalScreen>},
        {"password", "تغيير كلمة ال&سر", Qt::Key_unknown, menu, run_screen<PasswordSheet>},
    };
    return table;
}

}  // namespace ui
