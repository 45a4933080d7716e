#include "ui/sales/totals_panel.h"

#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "sales/sales_desk.h"
#include "ui/sales/change_card.h"
#include "ui/sales/commands.h"
#include "ui/sales/quick_cash.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/pad.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double net_size = 56;  // as in the style sheet

}  // namespace

TotalsPanel::TotalsPanel(QWidget* parent) : QWidget(parent) {
    set_role(this, "aside");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(px(18), px(14), px(18), px(4));
    column->setSpacing(px(8));

    auto* top = new QHBoxLayout;
    top->addWidget(label("الاجمالي", "plain"));
    top->addStretch(1);
    total_ = new Figure("total", "total");
    top->addWidget(total_);
    column->addLayout(top);

    discount_value_ = new AmountField("discount_value");
    discount_percent_ = new AmountField("discount_percent");
    auto* discounts = new QHBoxLayout;
    discounts->setSpacing(px(10));
    discounts->addWidget(discount_box("خصم قيمة", discount_value_));
    discounts->addWidget(discount_box("خصم %  " + key_cap(key::discount), discount_percent_));
    column->addLayout(discounts);

    column->addWidget(build_net());
    quick_cash_ = new QuickCash("cash");
    // Keeps its room while hidden, so that nothing below it jumps.
    QSizePolicy policy = quick_cash_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    quick_cash_->setSizePolicy(policy);
    connect(quick_cash_, &QuickCash::taken, this, &TotalsPanel::cash_taken);
    column->addWidget(quick_cash_);
    column->addLayout(build_payments());
    auto* last = new QHBoxLayout;
    last_number_ = label({}, "side", "last_receipt");
    last_change_ = label({}, "side", "last_change");
    last->addWidget(last_number_);
    last->addStretch(1);
    last->addWidget(last_change_);
    column->addLayout(last);
    column->addStretch(1);

    save_ = new KeyButton("save", key_cap(key::save), "حفظ البون", KeyButton::Look::save);
    save_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    save_->setMinimumHeight(px(56));
    connect(save_, &QPushButton::clicked, this, &TotalsPanel::save_clicked);
    column->addWidget(save_);
}

QWidget* TotalsPanel::build_net() {
    auto* net = new QFrame;
    set_role(net, "net");
    net->setProperty(read_property, true);
    auto* stack = new QVBoxLayout(net);
    stack->setContentsMargins(px(18), px(8), px(18), px(4));
    stack->setSpacing(0);
    stack->addWidget(label("الصافي", "caption"));
    net_ = new Figure("net", "netfigure");
    net_->setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
    net_->setFixedHeight(px(62));
    stack->addWidget(net_);
    return net;
}

QLayout* TotalsPanel::build_payments() {
    auto* options = new QGridLayout;
    options->setSpacing(px(8));
    auto* group = new QButtonGroup(this);
    constexpr std::array<QKeyCombination, 4> keys = {key::payment, key::payment, key::card, key::tips};
    for (int at = 0; at < 4; ++at) {
        const auto payment = static_cast<sales::PaymentOption>(at);
        auto* button =
            new KeyButton("payment_" + QString::number(at), key_cap(keys[static_cast<std::size_t>(at)]),
                          qt(sales::payment_caption(payment)), KeyButton::Look::pay);
        button->setCheckable(true);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setMinimumHeight(px(44));
        group->addButton(button);
        options->addWidget(button, at / 2, at % 2);
        connect(button, &QPushButton::clicked, this, [this, at] { emit payment_chosen(at); });
        payments_[static_cast<std::size_t>(at)] = button;
    }
    return options;
}

void TotalsPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // On the smallest screens, the frame of a training takes some of the room.
    layout()->setSpacing(height() < px(500) ? px(3) : px(8));
    layout()->activate();
    show_fitted(net_, net_text_, net_size);
}

QWidget* TotalsPanel::discount_box(const QString& caption, AmountField* field) {
    auto* box = new QWidget;
    set_role(box, "discbox");
    auto* stack = new QVBoxLayout(box);
    stack->setContentsMargins(px(12), px(8), px(12), px(8));
    stack->setSpacing(px(2));
    stack->addWidget(label(caption, "caption"));
    set_role(field, "disc");
    field->installEventFilter(this);
    stack->addWidget(field);
    // The caption looks like part of the field, so a click on it leads into the field.
    box->setFocusPolicy(Qt::ClickFocus);
    box->setFocusProxy(field);
    box->setMinimumHeight(px(64));
    box->setMaximumHeight(px(85));
    connect(field, &QLineEdit::returnPressed, this, [this, field] { commit(field); });
    connect(field, &AmountField::escaped, this, [this, field] {
        field->setModified(false);
        emit left();
    });
    return box;
}

void TotalsPanel::commit(AmountField* field) {
    field->setModified(false);
    const QString text = field->text();
    if (field == discount_value_) {
        emit discount_value_typed(text);
    } else {
        emit discount_percent_typed(text);
    }
}

void TotalsPanel::focus_discount() {
    discount_percent_->setFocus(Qt::ShortcutFocusReason);
}

std::optional<common::Amount> TotalsPanel::cash_amount(int button) const {
    return quick_cash_->amount(button);
}

void TotalsPanel::finish_editing() {
    for (AmountField* field : {discount_value_, discount_percent_}) {
        if (field->isModified()) commit(field);
    }
}

bool TotalsPanel::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<AmountField*>(watched);
    if (field != nullptr && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        // The field has no border of its own: the box around it shows the focus.
        set_state(field->parentWidget(), "lit", event->type() == QEvent::FocusIn);
        if (event->type() == QEvent::FocusOut && field->isModified()) {
            QMetaObject::invokeMethod(
                this,
                [this, field] {
                    // Under a sheet the value only waits, because the focus comes back to the field.
                    if (field->isModified() && Sheet::top_of(window()) == nullptr) commit(field);
                },
                Qt::QueuedConnection);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TotalsPanel::show_state(const sales::SalesDesk& desk) {
    const sales::Figures& figures = desk.sale().figures;
    total_->setText(qt(figures.total));
    // Keep what is typed but not entered yet.
    if (!discount_value_->isModified()) discount_value_->setText(qt(figures.discount_value));
    if (!discount_percent_->isModified()) discount_percent_->setText(qt(figures.discount_percent));
    net_text_ = qt(figures.net);
    show_fitted(net_, net_text_, net_size);
    const auto& partly = desk.sale().partly_saved;
    quick_cash_->offer(desk.invoice().net(), desk.denominations());
    quick_cash_->setVisible(desk.takes_cash() && !desk.invoice().lines.empty() && !partly);
    save_->setEnabled(!partly || partly->journal_id != 0);
    for (int at = 0; at < 4; ++at) {
        const auto payment = static_cast<sales::PaymentOption>(at);
        KeyButton* button = payments_[static_cast<std::size_t>(at)];
        button->setEnabled(sales::payment_enabled(payment, desk.invoice().kind));
        button->setChecked(desk.invoice().payment == payment);
    }
    if (const auto& last = desk.last_receipt()) {
        last_number_->setText("آخر بون " + QString::number(last->invoice.number));
        const auto [caption, amount] = outcome_of(*last);
        last_change_->setText(caption + " " + figure(amount.text()));
    }
}

}  // namespace ui
