#include "ui/printing/printer_screen.h"
#include "ui/widgets/form_fields.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/pages/paper_picture.h"
#include "printing/report_printer.h"
#include "printing/text_receipt.h"
#include "sales/receipt_of.h"
#include "sales/sales_screen.h"
#include "ui/printing/paper_sheet.h"
#include "ui/printing/printed.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QString port_name(const std::string& port) {
    return port.empty() || port == "win" ? QString("طابعة النظام") : "\u200e" + qt(port);
}

}  // namespace

PrinterScreen::PrinterScreen(QWidget* host, const Context& context, const sales::SalesScreen& screen)
    : Sheet(host, "طابعة البون"), context_(context), screen_(screen) {
    setObjectName("printer_screen");
    set_card_width(900);
    current_ = label({}, "side");
    current_->setObjectName("printer_current");
    body()->addWidget(current_);
    auto* lists = new QHBoxLayout;
    lists->setSpacing(px(16));
    wide_ = add_list("ports_48");
    narrow_ = add_list("ports_40");
    used_ = wide_;
    lists->addWidget(captioned("48 &حرفا في السطر · ورق 80 مم", wide_), 1);
    lists->addWidget(captioned("40 ح&رفا في السطر · ورق 58 مم", narrow_), 1);
    body()->addLayout(lists, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(10));
    const auto add = [&](const char* name, const QString& caption, std::function<void()> action) {
        return foot_button(buttons, name, caption, 1, std::move(action));
    };
    set_role(add("printer_choose", "ا&ختيار  Enter", [this] { choose(); }), "main");
    add("printer_test", "ت&جربة طباعة", [this] { test(); });
    add("printer_paper", "ال&بون على الشاشة", [this] { show_paper(); });
    add("printer_back", "رجو&ع", [this] { leave(0); });
    body()->addLayout(buttons);

    for (ListTable* table : {wide_, narrow_})
        connect(table, &ListTable::row_taken, this, [this] { choose(); });
    show_ports();
}

ListTable* PrinterScreen::add_list(const char* name) {
    auto* table = new ListTable(name, {"المنفذ", "الجهاز", "الحالة"}, 1);
    table->setMinimumHeight(px(360));
    table->installEventFilter(this);
    return table;
}

void PrinterScreen::take_focus() {
    used_->setFocus();
}

bool PrinterScreen::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && (watched == wide_ || watched == narrow_))
        use(static_cast<ListTable*>(watched));
    return Sheet::eventFilter(watched, event);
}

// One cursor for both lists: the other one shows none.
void PrinterScreen::use(ListTable* table) {
    used_ = table;
    (table == wide_ ? narrow_ : wide_)->setCurrentCell(-1, -1);
    if (table->currentRow() < 0) table->setCurrentCell(0, 0);
}

void PrinterScreen::show_ports() {
    const printing::PrinterChoice& choice = context_.printer_choice;
    offers_ = printing::ports_offered(choice);
    const std::string port = choice.is_text_port() ? choice.receipt_port : "win";
    std::vector<QStringList> rows;
    int in_use = 0;
    for (const printing::PortOffer& offer : offers_) {
        if (offer.port == port) in_use = static_cast<int>(rows.size());
        const QString device = offer.device == offer.port ? QString() : "\u200e" + qt(offer.device);
        rows.push_back({port_name(offer.port), device, offer.reachable ? "متاح" : "غير متاح"});
    }
    for (ListTable* table : {wide_, narrow_}) {
        table->show_rows(rows);
        for (int row = 0; row < table->rowCount(); ++row) {
            if (offers_[static_cast<std::size_t>(row)].reachable) continue;
            for (int column = 0; column < table->columnCount(); ++column)
                table->item(row, column)->setForeground(QColor(colour::off));
        }
    }
    use(choice.line_width == printing::narrow_columns ? narrow_ : wide_);
    used_->setCurrentCell(in_use, 0);
    current_->setText(QString("البون يطبع الآن على: %1\u200f · %2 حرفا في السطر")
                          .arg(port_name(port))
                          .arg(choice.line_width));
}

printing::PrinterChoice PrinterScreen::marked() const {
    const int row = used_->currentRow();
    if (row < 0 || static_cast<std::size_t>(row) >= offers_.size()) return context_.printer_choice;
    return printing::choose(offers_[static_cast<std::size_t>(row)],
                            used_ == wide_ ? printing::wide_columns : printing::narrow_columns);
}

void PrinterScreen::choose() {
    if (Sheet::top_of(window()) != this) return;
    context_.printer_choice = marked();
    show_ports();
    used_->setFocus();
}

void PrinterScreen::test() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "TestPrint", [&] {
        const printing::PrinterChoice choice = marked();
        if (!choice.is_text_port()) {
            if (context_.reports.print(printing::test_report(context_.session.settings.aname)))
                say_where_kept(context_);
            return;
        }
        const bool printed = printing::print_test(context_.services.devices, choice,
                                                  printing::PrinterCodes::load(context_.connection));
        context_.services.prompts.message(
            std::string(printed ? message::test_sent : message::test_failed) + choice.receipt_port,
            printed ? common::Icon::none : common::Icon::exclamation);
    });
    used_->setFocus();
}

void PrinterScreen::show_paper() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "ShowPaper", [&] {
        const int width = marked().line_width;
        const auto codes = printing::PrinterCodes::load(context_.connection);
        const auto& last = screen_.last_receipt();
        // Before the first sale of the day there is only the test page to look at.
        const std::string bytes =
            last ? printing::text_receipt(sales::receipt_of(last->invoice, last->payment, context_.session,
                                                            last->shift, last->time),
                                          printing::Form::full, width, codes)
                 : printing::test_print(width, codes);
        PaperSheet(this, last ? "آخر بون" : "صفحة التجربة", printing::pages::paper_picture(bytes, width))
            .run();
    });
    used_->setFocus();
}

}  // namespace ui
