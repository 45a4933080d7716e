#include "ui/stock/offers_sheet.h"
#include "ui/widgets/form_fields.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "common/text.h"
#include "printing/report_printer.h"
#include "sales/messages.h"
#include "sales/offers.h"
#include "sales/sales_desk.h"
#include "ui/printing/reports.h"
#include "ui/sales/sales_window.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

void print_offer(const Context& context, std::int64_t number) {
    guarded(context.services, "PrintOffer", [&] {
        const auto report = sales::quotation(context.connection, context.session, number);
        if (report && context.reports.print(*report)) say_where_kept(context);
    });
}

}  // namespace

void keep_offer(QWidget* host, const Context& context, sales::SalesDesk& desk) {
    const std::int64_t number = desk.offers().SaveOffer();
    if (number == 0) return;
    // The screen behind the question is empty already.
    if (auto* sales = qobject_cast<SalesWindow*>(host)) sales->repaint_all();
    if (context.services.prompts.question(std::string(sales::message::offer_number) + std::to_string(number) +
                                          std::string(sales::message::offer_kept)))
        print_offer(context, number);
}

OffersSheet::OffersSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "عروض الأسعار"), context_(context), desk_(desk) {
    setObjectName("offers_screen");
    set_card_width(760);
    customer_ = text_field("offers_customer");
    number_ = new AmountField("offers_number");
    date_ = moment_field("offers_date");
    set_hint(date_, "مثل 2026/12/31");
    auto* filters = new QHBoxLayout;
    filters->setSpacing(px(10));
    filters->addWidget(captioned("اسم ال&عميل", customer_), 3);
    filters->addWidget(captioned("&رقم العرض", number_), 1);
    filters->addWidget(captioned("ال&تاريخ", date_), 1);
    body()->addLayout(filters);

    table_ = new ListTable("offers", {"رقم العرض", "اسم العميل", "التاريخ"}, 1);
    table_->setMinimumHeight(px(340));
    body()->addWidget(table_, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(10));
    const auto add = [&](const char* name, const QString& caption, std::function<void()> action) {
        return foot_button(buttons, name, caption, 1, std::move(action));
    };
    set_role(add("offer_load", "ت&حميل العرض  Enter", [this] { load(); }), "main");
    add("offer_print", "&طباعة", [this] { print(); });
    add("offers_back", "ر&جوع", [this] { leave(0); });
    body()->addLayout(buttons);

    for (QLineEdit* field : {customer_, number_, date_})
        connect(field, &QLineEdit::textChanged, this, &OffersSheet::search);
    connect(table_, &ListTable::row_taken, this, [this] { load(); });
    connect(table_, &ListTable::left_upwards, customer_, qOverload<>(&QWidget::setFocus));
    search();
}

void OffersSheet::take_focus() {
    customer_->setFocus();
}

// A number or date that is typed only in part filters nothing yet.
void OffersSheet::search() {
    guarded(context_.services, "ListOffers", [&] {
        stock::OfferFilter filter;
        filter.customer = common::trim(utf8(customer_->text()));
        if (const auto number = common::parse_integer(utf8(number_->text()))) filter.number = *number;
        const std::string date = common::western_digits(utf8(date_->text()));
        if (common::length(date) == 10) {
            if (const auto moment = common::parse_moment(date)) filter.date = moment->date;
        }
        rows_ = stock::list_offers(context_.connection, filter);
    });
    std::vector<QStringList> texts;
    for (const stock::OfferRow& row : rows_) {
        texts.push_back({"\u200e" + QString::number(row.number), qt(row.customer),
                         "\u200e" + qt(common::date_text(row.date))});
    }
    const bool filtered =
        !customer_->text().isEmpty() || !number_->text().isEmpty() || !date_->text().isEmpty();
    table_->say_when_empty(filtered ? "لا يوجد عرض سعر بهذه البيانات"
                                    : "لا توجد عروض أسعار · يحفظ البون كعرض سعر بالمفتاحين Ctrl S");
    table_->show_rows(texts);
}

std::int64_t OffersSheet::chosen() const {
    if (Sheet::top_of(window()) != this) return 0;
    const int row = table_->currentRow();
    const bool found = row >= 0 && static_cast<std::size_t>(row) < rows_.size();
    return found ? rows_[static_cast<std::size_t>(row)].number : 0;
}

void OffersSheet::load() {
    // A number that is in no offer is loaded all the same, so that its absence is said.
    std::int64_t number = chosen();
    if (number == 0) number = common::parse_integer(utf8(number_->text())).value_or(0);
    if (number != 0 && desk_.offers().LoadOffer(number)) leave(1);
}

void OffersSheet::print() {
    if (const std::int64_t number = chosen(); number != 0) print_offer(context_, number);
}

void OffersSheet::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            load();
            event->accept();
            return;
        case Qt::Key_Down:
            table_->setFocus();
            event->accept();
            return;
        default:
            Sheet::keyPressEvent(event);
    }
}

}  // namespace ui
