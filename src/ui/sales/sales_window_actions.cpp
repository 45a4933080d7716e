// The sales window: what its keys and buttons do.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

#include "sales/messages.h"
#include "ui/cash/shift_screens.h"
#include "ui/printing/printing_line.h"
#include "ui/printing/reports.h"
#include "ui/sales/entry_bar.h"
#include "ui/sales/held_sheet.h"
#include "ui/sales/kind_bar.h"
#include "ui/sales/line_view.h"
#include "ui/sales/matches.h"
#include "ui/sales/party_bar.h"
#include "ui/sales/quick_cash.h"
#include "ui/sales/sales_window.h"
#include "ui/sales/search_panel.h"
#include "ui/sales/sheets.h"
#include "ui/sales/tiles_panel.h"
#include "ui/sales/totals_panel.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/sounds.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "The program could not be started again."
constexpr std::string_view no_restart = "تعذرت إعادة تشغيل البرنامج";

}  // namespace

void SalesWindow::act(std::string_view name, const std::function<void()>& action) {
    // A press while an action still runs is ignored (a double click, a mnemonic under a box), and so is a
    // mnemonic that reaches a button below an open sheet.
    if (acting_ || Sheet::top_of(this) != nullptr) return;
    acting_ = true;
    guarded(context_.services, name, action);
    guarded(context_.services, "PrintShiftReport", [this] { print_shift_reports(); });
    acting_ = false;
    printing_->say(kept_text(context_));
    repaint_all();
}

// Prints the reports of shift changes that an earlier run of the till left unfinished.
void SalesWindow::print_shift_reports() {
    for (const cash::ShiftReport& report : desk_.checkout().take_shift_reports())
        print_shift_report(report, context_);
}

void SalesWindow::act_and_return(std::string_view name, const std::function<void()>& action) {
    act(name, action);
    focus_entry();
}

bool SalesWindow::enter(const sales::Entry& entry) {
    bool entered = false;
    bool words = false;
    // The code is still to come, typed or scanned after it.
    if (entry.form == sales::EntryForm::quantity) return false;
    if (entry.form == sales::EntryForm::receipt) {
        act("Recall", [&] {
            desk_.receipts().recall(entry.text);
            entry_bar_->clear();
        });
        focus_entry();
        return false;  // a key that saves was meant for the former invoice
    }
    act("EnterItem", [&] {
        words = desk_.lines().is_search(entry);
        if (words) return;
        entered = desk_.lines().EnterItem(entry);
        entry_bar_->clear();
    });
    if (entered) context_.sounds.play(Sound::taken);
    focus_entry();
    if (words) return enter_words(entry_bar_->field());
    // A general item has no quantity yet: the cashier goes on in its cells.
    if (entered && entry.form == sales::EntryForm::general && desk_.sale().current_row)
        lines_->open_cell(static_cast<int>(*desk_.sale().current_row), sales::column::quantity, "1");
    return entered;
}

bool SalesWindow::enter_for_recalled(const sales::Entry& entry) {
    bool entered = false;
    bool words = false;
    act("EnterItemForRecalled", [&] {
        words = desk_.lines().is_search(entry);
        if (words) return;
        entered = desk_.lines().EnterItemForRecalled(entry);
        entry_bar_->clear();
    });
    return words ? enter_words(entry_bar_->recalled_field()) : entered;
}

bool SalesWindow::enter_words(QLineEdit* field) {
    std::optional<sales::Entry> first;
    act("Match", [&] { first = matches_->first_for(field); });
    return first && enter_found(field, *first);
}

bool SalesWindow::enter_found(const QLineEdit* field, const sales::Entry& entry) {
    return field == entry_bar_->field() ? enter(entry) : enter_for_recalled(entry);
}

// For words only the matches are shown: the key was not meant to enter the first of them.
bool SalesWindow::finish_entry() {
    for (QLineEdit* field : {entry_bar_->field(), entry_bar_->recalled_field()}) {
        bool words = false;
        act("Match", [&] { words = desk_.lines().is_search(sales::read_entry(utf8(field->text()))); });
        if (!words) continue;
        matches_->show_for(field);
        return false;
    }
    const QString typed = entry_bar_->field()->text().trimmed();
    const QString typed_for_recalled = entry_bar_->recalled_field()->text().trimmed();
    if (!typed.isEmpty() && (!enter(sales::read_entry(utf8(typed))) || lines_->is_editing())) return false;
    return typed_for_recalled.isEmpty() || enter_for_recalled(sales::read_entry(utf8(typed_for_recalled)));
}

void SalesWindow::edit_cell(int row, int column, const QString& first) {
    bool opened = false;
    act("EditCell", [&] { opened = desk_.lines().begin_edit(static_cast<std::size_t>(row), column); });
    if (!opened) {
        if (!lines_->hasFocus()) focus_entry();
        return;
    }
    lines_->open_cell(row, column, first);
    // The digit that opened the cell is the first one of the value.
    if (auto* field = lines_->findChild<QLineEdit*>("cell_edit"); field != nullptr && !first.isEmpty()) {
        field->deselect();
        field->end(false);
    }
}

void SalesWindow::commit_cell(int row, int column, const QString& text, bool by_enter) {
    bool taken = false;
    act("EditCell",
        [&] { taken = desk_.lines().commit_edit(static_cast<std::size_t>(row), column, utf8(text)); });
    refused_ = !taken;
    if (!by_enter) return;
    const auto& lines = desk_.invoice().lines;
    if (static_cast<std::size_t>(row) >= lines.size()) {
        focus_entry();
        return;
    }
    const sales::Line& line = lines[static_cast<std::size_t>(row)];
    if (!taken) {
        edit_cell(row, column, {});
    } else if (line.is_general() && column == sales::column::quantity && line.price == 0) {
        edit_cell(row, sales::column::price, {});
    } else {
        focus_entry();
    }
}

bool SalesWindow::finish_editing() {
    refused_ = false;
    lines_->finish_editing();
    totals_->finish_editing();
    if (refused_) return false;
    auto* party = qobject_cast<QComboBox*>(party_bar_->first_field(desk_.invoice().payment));
    return party == nullptr || all_known({party}, context_.services.prompts);
}

void SalesWindow::save(const std::function<bool(sales::Payment&)>& pay) {
    act("SaveInvoice", [&] {
        const sales::BeginSave begun = desk_.checkout().begin_save();
        repaint_all();
        if (begun == sales::BeginSave::refused) return;
        if (begun == sales::BeginSave::ask_payment && !pay(*desk_.checkout().payment())) {
            desk_.checkout().cancel_payment();
            return;
        }
        desk_.checkout().SaveInvoice();
    });
    if (!party_bar_->focus_field(desk_.checkout().refused_field())) focus_entry();
}

void SalesWindow::save_with_dialog() {
    save([this](sales::Payment& payment) {
        PaymentDialog dialog(this, context_, payment, desk_.invoice(), desk_.denominations());
        connect(&dialog, &PaymentDialog::changed, this, &SalesWindow::shown);
        emit shown();
        return dialog.run() == 1;
    });
}

void SalesWindow::take_cash(int button) {
    if (Sheet::top_of(this) != nullptr) return;
    // The amount as the cashier sees it, before text that is not entered yet changes the net.
    const auto seen = totals_->cash_amount(button);
    if (!finish_editing() || !finish_entry()) return;
    const bool pays_out = button == QuickCash::exact && desk_.pays_cash_out();
    if (!desk_.takes_cash() && !pays_out) {
        context_.services.prompts.message(sales::message::cash_sales_only, common::Icon::exclamation);
        focus_entry();
        return;
    }
    if (button != QuickCash::exact && !seen) return focus_entry();
    save([&](sales::Payment& payment) {
        if (button != QuickCash::exact) payment.pay(*seen);
        return payment.agreed(context_.services.prompts);
    });
}

void SalesWindow::settle_unfinished() {
    act_and_return("SettleUnfinished", [&] { desk_.checkout().settle_unfinished(); });
    act_and_return("OfferDraft", [&] { desk_.held().offer_draft(); });
}

void SalesWindow::cancel(std::string_view name, bool (sales::Checkout::*action)()) {
    act_and_return(name, [&] {
        if ((desk_.checkout().*action)()) entry_bar_->clear();
    });
}

void SalesWindow::hold() {
    const QString what = qt(sales::summary_of(desk_.invoice()));
    bool is_held = false;
    act("Hold", [&] {
        is_held = desk_.held().hold();
        if (is_held) entry_bar_->clear();
    });
    if (is_held) notice("تم تعليق البون · " + what + " · لاسترجاعه Shift F3");
    focus_entry();
}

void SalesWindow::show_held() {
    act_and_return("Held", [&] {
        if (HeldSheet(this, desk_, context_).run() == 1) entry_bar_->clear();
    });
}

void SalesWindow::recall(const QString& number) {
    bool found = false;
    act("Recall", [&] { found = desk_.receipts().recall(utf8(number)); });
    if (found) {
        focus_entry();
    } else {
        kind_bar_->focus_number();
    }
}

void SalesWindow::reprint() {
    act_and_return("Reprint", [&] { desk_.receipts().reprint(); });
}

void SalesWindow::start_return() {
    act_and_return("StartReturn", [&] { desk_.receipts().start_return(); });
}

void SalesWindow::switch_kind(int kind) {
    act_and_return("SwitchKind", [&] { desk_.header().SwitchKind(static_cast<sales::KindOption>(kind)); });
}

void SalesWindow::choose_price_level(int level) {
    act_and_return("ChoosePriceLevel", [&] { desk_.header().choose_price_level(level); });
    tiles_->refresh();
}

void SalesWindow::switch_payment(int payment) {
    act("SwitchPayment", [&] { desk_.header().SwitchPayment(static_cast<sales::PaymentOption>(payment)); });
    focus_payment_fields();
}

void SalesWindow::toggle_payment() {
    act("SwitchPayment", [&] { desk_.header().toggle_payment(); });
    focus_payment_fields();
}

void SalesWindow::focus_payment_fields() {
    QWidget* first = party_bar_->first_field(desk_.invoice().payment);
    if (first != nullptr && first->isVisible()) {
        first->setFocus(Qt::OtherFocusReason);
    } else {
        focus_entry();
    }
}

void SalesWindow::search() {
    if (Sheet::top_of(this) != nullptr) return;
    QLineEdit* field =
        entry_bar_->recalled_field()->hasFocus() ? entry_bar_->recalled_field() : entry_bar_->field();
    const sales::Entry typed = sales::read_entry(utf8(field->text()));
    SearchPanel panel(this, desk_, qt(typed.name));
    const bool taken = panel.run() == 1;
    field->setFocus();
    if (!taken) return;
    sales::Entry found = panel.entry();
    if (typed.quantity_typed) found.quantity *= typed.quantity;
    enter_found(field, found);
}

void SalesWindow::item_info() {
    act("ItemInfo", [&] {
        const auto row = desk_.sale().current_row;
        const auto code = row ? desk_.invoice().lines[*row].item_code : std::nullopt;
        if (!code) return context_.services.prompts.message(sales::message::no_item_line);
        const auto info = desk_.lines().item_info(*code);
        if (info) ItemInfoSheet(this, *info, &desk_.sale().stock).run();
    });
}

void SalesWindow::quick_quantity() {
    const auto& lines = desk_.invoice().lines;
    if (lines.empty() || Sheet::top_of(this) != nullptr) return;
    const std::size_t last = *desk_.lines().last_line();
    QuickQuantitySheet sheet(this, qt(lines[last].name),
                             qt(desk_.invoice().cells(last)[sales::column::quantity]));
    if (sheet.run() == 1) act("QuickQuantity", [&] { desk_.lines().quick_quantity(utf8(sheet.text())); });
    focus_entry();
}

void SalesWindow::next_unit() {
    act("NextUnit", [&] { desk_.lines().next_unit(); });
}

void SalesWindow::delete_current_line() {
    const auto row = desk_.sale().current_row;
    if (!row) return;
    act("DeleteLine", [&] { desk_.lines().delete_line(*row); });
    if (desk_.invoice().lines.empty()) focus_entry();
}

void SalesWindow::show_shifts() {
    act_and_return("Shifts", [&] { run_screen([&] { ShiftSide(this, desk_, context_).run(); }); });
}

void SalesWindow::go_to_grid() {
    if (desk_.invoice().lines.empty()) return;
    if (!desk_.sale().current_row) desk_.lines().select_row(desk_.invoice().lines.size() - 1);
    lines_->setFocus();
    repaint_all();
}

void SalesWindow::focus_entry_for_scan() {
    // An open sheet must be finished first; the scan is entered when it is gone.
    if (Sheet::top_of(this) != nullptr) return;
    lines_->close_cell();
    focus_entry();
}

void SalesWindow::open_screen(const Command& screen) {
    act_and_return(utf8(screen.name), [&] {
        run_screen([&] { screen.run(*this); });
        party_bar_->fill(desk_);
    });
}

void SalesWindow::run_screen(const std::function<void()>& screen) {
    // Interrupted saves belong to the shift that a screen may close and to the figures that it may show.
    desk_.checkout().settle_unfinished();
    const std::int64_t shift = desk_.shift_number();
    screen();
    desk_.reload();
    if (desk_.shift_number() != shift) entry_bar_->clear();
}

void SalesWindow::escape() {
    if (const auto row = desk_.lines().escape_to_quantity()) {
        lines_->open_cell(static_cast<int>(*row), sales::column::quantity, "1");
    } else {
        entry_bar_->field()->clear();
        focus_entry();
    }
}

void SalesWindow::restart() {
    // One key alone must not end the work on an invoice.
    if (!desk_.held().may_leave(true)) return focus_entry();
    if (!printing_->finish()) return focus_entry();
    desk_.held().leave(true);
    if (!context_.restart || !context_.restart()) {
        context_.services.prompts.message(no_restart, common::Icon::critical);
        return;
    }
    leaving_ = true;
    emit finished(true);
}

void SalesWindow::leave() {
    if (!desk_.held().may_leave(false)) return focus_entry();
    if (!printing_->finish()) return focus_entry();
    desk_.held().leave(false);
    leaving_ = true;
    emit finished(false);
}

}  // namespace ui
