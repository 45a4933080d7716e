#include "ui/sales/change_card.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/pad.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double figure_size = 56;  // as in the style sheet

}  // namespace

Outcome outcome_of(const sales::LastReceipt& receipt) {
    const sales::Invoice& invoice = receipt.invoice;
    if (!sales::moves_cash(invoice.payment))
        return {qt(sales::payment_caption(invoice.payment)), invoice.net()};
    if (invoice.is_return()) return {"يرد للعميل", receipt.payment.paid};
    return {"الباقي", receipt.payment.change};
}

ChangeCard::ChangeCard(QWidget* parent) : QFrame(parent) {
    setObjectName("change_card");
    set_role(this, "change");
    setProperty(read_property, true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(px(18), px(8), px(18), px(8));
    row->setSpacing(px(18));
    caption_ = label({}, "title", "change_caption");
    row->addWidget(caption_);
    figure_ = new Figure("change_figure", "changefigure");
    figure_->setFixedHeight(px(66));
    row->addWidget(figure_, 1);
    auto* beside = new QVBoxLayout;
    beside->setSpacing(px(2));
    receipt_ = label({}, "side", "change_receipt");
    net_ = label({}, "side", "change_net");
    paid_ = label({}, "side", "change_paid");
    for (QLabel* line : {receipt_, net_, paid_})
        beside->addWidget(line);
    row->addLayout(beside);
    hide();
}

void ChangeCard::show_state(const sales::SalesDesk& desk) {
    const auto& last = desk.last_receipt();
    const bool shown = last && !last->is_over && last->shift == desk.shift_number() &&
                       desk.invoice().lines.empty() && sales::moves_cash(last->invoice.payment);
    if (shown) {
        const auto [caption, amount] = outcome_of(*last);
        caption_->setText(caption);
        receipt_->setText("بون رقم " + QString::number(last->invoice.number));
        net_->setText("الصافي " + figure(last->invoice.net().text()));
        paid_->setText("المدفوع " + figure(last->payment.paid.text()));
        set_state(this, "short", amount < common::Amount());
        show_fitted(figure_, qt(amount.text()), figure_size);
    }
    setVisible(shown);
}

}  // namespace ui
