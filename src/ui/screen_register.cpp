#include "ui/screen_register.h"

#include "sales/saving_messages.h"
#include "ui/accounts/account_customers_list.h"
#include "ui/accounts/account_statement_screen.h"
#include "ui/accounts/direct_receipt_sheet.h"
#include "ui/accounts/tips_receiver_screen.h"
#include "ui/accounts/voucher_screen.h"
#include "ui/accounts/walk_in_customer_screen.h"
#include "ui/cash/cash_panel.h"
#include "ui/cash/daily_statement_screen.h"
#include "ui/cash/expense_screen.h"
#include "ui/cash/shift_screen.h"
#include "ui/printing/printer_sheet.h"
#include "ui/sales/invoice_data_sheet.h"
#include "ui/sales/receipts_sheet.h"
#include "ui/sales/sales_window.h"
#include "ui/signin/password_sheet.h"
#include "ui/stock/line_source_dialog.h"
#include "ui/stock/offers_sheet.h"

namespace ui {

namespace {

// Opens a screen that works on what the sales screen holds.
template <typename Open>
std::function<void(QWidget*)> on_sales(Open open) {
    return [open](QWidget* host) {
        if (auto* sales = qobject_cast<SalesWindow*>(host)) open(host, sales->logic());
    };
}

}  // namespace

Screens neighbours(const Context& context) {
    Screens screens;
    screens.add({"f8", "ال&ورديات", Qt::Key_F8, false, "F8", [context](QWidget* host) {
                     shift2s screen(host, context);
                     if (!screen.open()) return;
                     screen.run();
                     auto* sales = qobject_cast<SalesWindow*>(host);
                     if (sales != nullptr && !screen.closing().isEmpty()) sales->notice(screen.closing());
                 }});
    screens.add({"f9", "ك&شف الخزينة", Qt::Key_F9, false, "F9", [context](QWidget* host) {
                     DailyStatementScreen screen(host, context);
                     if (screen.open()) screen.run();
                 }});
    screens.add({"shift_f9", "ال&مصروفات", Qt::Key_F9, true, "⇧F9", [context](QWidget* host) {
                     Form41ca screen(host, context);
                     screen.open();
                     screen.run();
                 }});
    screens.add(
        {"f10", "عميل &نقدي", Qt::Key_F10, false, "F10", on_sales([context](QWidget* host, auto& sales) {
             Cust_cash screen(host, context, sales);
             if (screen.open()) screen.run();
         })});
    screens.add({"shift_f11", "مقبو&ضات", Qt::Key_F11, true, "⇧F11", [context](QWidget* host) {
                     Form38 screen(host, context);
                     screen.open_new();
                     screen.run();
                 }});
    screens.add({"shift_f12", "مد&فوعات", Qt::Key_F12, true, "⇧F12", [context](QWidget* host) {
                     Form23 screen(host, context);
                     screen.open_new();
                     screen.run();
                 }});
    screens.add(
        {"direct_receipt",
         "&قبض مباشر من عميل",
         0,
         false,
         {},
         on_sales([context](QWidget* host, auto& sales) { DirectReceipt(host, context, sales).run(); })});
    screens.add({"customers", "عم&لاء الآجل", 0, false, {}, [context](QWidget* host) {
                     AccountCustomers(host, context).run();
                 }});
    screens.add({"account_statement", "كشف حساب عم&يل", 0, false, {}, [context](QWidget* host) {
                     Form39 screen(host, context);
                     screen.open();
                     screen.run();
                 }});
    screens.add({"tips_receivers", "عملاء الأك&راميات", 0, false, {}, [context](QWidget* host) {
                     TipsReceivers(host, context).run();
                 }});
    screens.add({"cash_count", "&جرد الخزينة", 0, false, {}, [context](QWidget* host) {
                     CashCountSheet screen(host, context);
                     screen.open();
                     screen.run();
                 }});
    screens.add({"receipts", "بونات &اليوم", Qt::Key_B, false, "Ctrl B",
                 on_sales([](QWidget* host, auto& sales) { ReceiptsSheet(host, sales).run(); }), true,
                 "البونات"});
    screens.add({"offers", "&عروض الأسعار", Qt::Key_O, false, "Ctrl O",
                 on_sales([context](QWidget* host, auto& sales) { OffersSheet(host, context, sales).run(); }),
                 true, "العروض"});
    screens.add({"keep_offer", "حف&ظ كعرض سعر", Qt::Key_S, false, "Ctrl S",
                 on_sales([context](QWidget* host, auto& sales) { keep_offer(host, context, sales); }),
                 true});
    screens.add(
        {"line_source", "مص&در الصنف", Qt::Key_T, false, "Ctrl T",
         on_sales([context](QWidget* host, auto& sales) { choose_line_source(host, context, sales); }), true,
         "المصدر"});
    screens.add({"invoice_data", "&بيانات البون", Qt::Key_D, false, "Ctrl D",
                 on_sales([context](QWidget* host, auto& sales) {
                     if (sales.partly_saved()) {
                         context.services.prompts.message(sales::saving_message::partly_stays,
                                                          common::Icon::critical);
                     } else {
                         InvoiceDataSheet(host, context, sales).run();
                     }
                 }),
                 true});
    screens.add({"printer", "&طابعة البون", 0, false, {}, on_sales([context](QWidget* host, auto& sales) {
                     PrinterSheet(host, context, sales).run();
                 })});
    screens.add({"password", "تغيير كلمة ال&سر", 0, false, {}, [context](QWidget* host) {
                     PasswordSheet(host, context).run();
                 }});
    return screens;
}

}  // namespace ui
