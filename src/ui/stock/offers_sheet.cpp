#include "ui/stock/offers_sheet.h"
#include "ui/widgets/fields.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/messages.h"
#include "common/search.h"
#include "common/text.h"
#include "common/typed.h"
#include "printing/report_printer.h"
#include "sales/messages.h"
#include "sales/offers.h"
#include "sales/sales_desk.h"
#include "ui/printing/reports.h"
#include "ui/sales/sales_window.h"
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
    // The invoice behind the question is already empty: show that.
    if (auto* sales = qobject_cast<SalesWindow*>(host)) sales->repaint_all();
    if (context.services.prompts.question(std::string(sales::message::offer_number) + std::to_string(number) +
                                          std::string(sales::message::offer_kept)))
        print_offer(context, number);
}

OffersSheet::OffersSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "عروض الأسعار"), context_(context), desk_(desk), pause_([this] { narrow(); }) {
    setObjectName("offers_screen");
    set_card_width(760);
    customer_ = text_field("offers_customer");
    number_ = new AmountField("offers_number");
    date_ = moment_field("offers_date");
    set_hint(date_, "مثل 2026/12/31");
    QHBoxLayout* filters = add_row();
    filters->addWidget(captioned("اسم ال&عميل", customer_), 3);
    filters->addWidget(captioned("&رقم العرض", number_), 1);
    filters->addWidget(captioned("ال&تاريخ", date_), 1);

    table_ = new ListTable("offers", {"رقم العرض", "اسم العميل", "التاريخ"}, 1);
    table_->setMinimumHeight(px(340));
    body()->addWidget(table_, 1);

    QHBoxLayout* buttons = add_row();
    set_role(foot_button(buttons, "offer_load", "ت&حميل العرض  Enter", 1, [this] { enter(); }), "main");
    foot_button(buttons, "offer_print", "&طباعة", 1, [this] { print(); });
    foot_button(buttons, "offers_back", "ر&جوع", 1, [this] { leave(0); });

    for (QLineEdit* field : {customer_, number_, date_})
        connect(field, &QLineEdit::textChanged, this, [this] { pause_.begin(); });
    connect(table_, &ListTable::row_taken, this, [this] { enter(); });
    connect(table_, &ListTable::left_upwards, customer_, qOverload<>(&QWidget::setFocus));
    read();
}

void OffersSheet::take_focus() {
    customer_->setFocus();
}

void OffersSheet::read() {
    guarded(context_.services, "ListOffers", [&] { offers_ = stock::list_offers(context_.connection); });
    std::vector<QStringList> rows;
    for (const stock::OfferRow& offer : offers_)
        rows.push_back({figure(offer.number), qt(offer.customer), figure(common::date_text(offer.date))});
    table_->say_when_empty(offers_.empty() ? "لا توجد عروض أسعار · يحفظ البون كعرض سعر بالمفتاحين Ctrl S"
                                           : "لا يوجد عرض سعر بهذه البيانات");
    table_->show_rows(std::move(rows));
}

// A partly typed number or date does not filter yet.
void OffersSheet::narrow() {
    const stock::OfferFilter filter{common::read_code(utf8(number_->text())),
                                    common::search_words(utf8(customer_->text())),
                                    common::read_date(utf8(date_->text()))};
    table_->narrow([&](int row) { return stock::matches(offers_[static_cast<std::size_t>(row)], filter); });
}

std::int64_t OffersSheet::chosen() const {
    if (Sheet::top_of(window()) != this) return 0;
    const int row = table_->current_row();
    return row >= 0 ? offers_[static_cast<std::size_t>(row)].number : 0;
}

// An invalid filter has filtered nothing, so the chosen row is not the one that was meant.
bool OffersSheet::filters_are_good() {
    pause_.end();
    if (!date_->text().trimmed().isEmpty() && !date_in(date_, context_.services.prompts)) return false;
    if (number_->text().trimmed().isEmpty() || common::read_code(utf8(number_->text()))) return true;
    context_.services.prompts.message(common::message::wrong_code, common::Icon::critical);
    number_->setFocus();
    return false;
}

void OffersSheet::enter() {
    if (!filters_are_good()) return;
    // A typed number that is not in the list is tried too, so that the logic says that there is no such
    // offer.
    std::int64_t number = chosen();
    if (number == 0) number = common::read_code(utf8(number_->text())).value_or(0);
    if (number != 0 && desk_.offers().LoadOffer(number)) leave(1);
}

void OffersSheet::print() {
    if (!filters_are_good()) return;
    if (const std::int64_t number = chosen(); number != 0) print_offer(context_, number);
}

void OffersSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        pause_.end();
        table_->setFocus();
        event->accept();
    } else {
        Sheet::keyPressEvent(event);
    }
}

}  // namespace ui
