#include "ui/neighbours.h"

#include "ui/cash_panel.h"
#include "ui/daily_statement_screen.h"
#include "ui/expense_screen.h"
#include "ui/line_source_dialog.h"
#include "ui/offers_screen.h"
#include "ui/password_screen.h"
#include "ui/printer_screen.h"
#include "ui/receipts_screen.h"
#include "ui/sales_screen.h"
#include "ui/shift_screen.h"

namespace ui {

namespace {

// Opens a screen that works on what the sales screen holds.
template <typename Open>
std::function<void(QWidget*)> on_sales(Open open) {
    return [open](QWidget* host) {
        if (auto* sales = qobject_cast<Form31*>(host)) open(host, sales->logic());
    };
}

}  // namespace

Screens neighbours(const Context& context) {
    Screens screens;
    screens.add({"f8", "ال&ورديات", Qt::Key_F8, false, "F8", [context](QWidget* host) {
                     shift2s screen(host, context);
                     if (screen.open()) screen.run();
                 }});
    screens.add({"receipts", "بونات &اليوم", Qt::Key_B, false, "Ctrl B",
                 on_sales([](QWidget* host, auto& sales) { ReceiptsScreen(host, sales).run(); }), true,
                 "البونات"});
    screens.add(
        {"offers", "&عروض الأسعار", Qt::Key_O, false, "Ctrl O",
         on_sales([context](QWidget* host, auto& sales) { OffersScreen(host, context, sales).run(); }), true,
         "العروض"});
    screens.add({"keep_offer", "حف&ظ كعرض سعر", Qt::Key_S, false, "Ctrl S",
                 on_sales([context](QWidget* host, auto& sales) { keep_offer(host, context, sales); }),
                 true});
    screens.add(
        {"line_source", "مص&در الصنف", Qt::Key_T, false, "Ctrl T",
         on_sales([context](QWidget* host, auto& sales) { choose_line_source(host, context, sales); }), true,
         "المصدر"});
    screens.add({"printer", "&طابعة البون", 0, false, {}, on_sales([context](QWidget* host, auto& sales) {
                     PrinterScreen(host, context, sales).run();
                 })});
    screens.add({"f9", "ك&شف الخزينة", Qt::Key_F9, false, "F9", [context](QWidget* host) {
                     DailyStatementScreen screen(host, context);
                     if (screen.open()) screen.run();
                 }});
    screens.add({"shift_f9", "ال&مصروفات", Qt::Key_F9, true, "⇧F9", [context](QWidget* host) {
                     Form41ca screen(host, context);
                     screen.open();
                     screen.run();
                 }});
    screens.add({"cash_count", "&جرد الخزينة", 0, false, {}, [context](QWidget* host) {
                     CashCountSheet screen(host, context);
                     screen.open();
                     screen.run();
                 }});
    screens.add({"password", "تغيير كلمة ال&سر", 0, false, {}, [context](QWidget* host) {
                     Form63(host, context).run();
                 }});
    return screens;
}

}  // namespace ui
