#include "ui/sales/payment_dialog.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/payment.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QFrame* figure_box(const char* role, const QString& caption, QLabel* figure) {
    auto* box = new QFrame;
    set_role(box, role);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(px(18), px(8), px(18), px(6));
    column->setSpacing(0);
    column->addWidget(label(caption, "plain"));
    figure->setFixedHeight(px(66));
    column->addWidget(figure);
    return box;
}

}  // namespace

PaymentDialog::PaymentDialog(QWidget* host, sales::Payment& payment) : Sheet(host), payment_(payment) {
    setObjectName("Form34");
    set_card_width(520);
    auto* net = new Figure("payment_net", "netfigure");
    net->setText(qt(payment.net_text()));
    body()->addWidget(figure_box("net", "الصافي", net));

    paid_ = new AmountField("paid");
    set_role(paid_, "large");
    paid_->setText(qt(payment.paid_text()));
    body()->addWidget(captioned("المدفوع", paid_));

    change_ = new Figure("change", "changefigure");
    change_box_ = figure_box("change", "المردود", change_);
    body()->addWidget(change_box_);

    worker_ = choice_list("salesman");
    fill_optional_choices(worker_, payment.workers(), payment.worker());
    body()->addWidget(captioned("البائ&ع", worker_));

    const auto [confirm, back] = confirm_buttons(add_row(), "payment", "تأكيد");
    connect(paid_, &QLineEdit::textChanged, this, [this](const QString& text) {
        payment_.type_paid(utf8(text));
        show_change();
    });
    connect(worker_, &QComboBox::currentTextChanged, this,
            [this] { payment_.choose_worker(choice_of(worker_).value_or(0)); });
    connect(confirm, &QPushButton::clicked, this, &PaymentDialog::enter);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    show_change();
}

void PaymentDialog::take_focus() {
    paid_->setFocus();
}

void PaymentDialog::enter() {
    leave(1);
}

void PaymentDialog::show_change() {
    change_->setText(qt(payment_.change_text()));
    set_state(change_box_, "short", payment_.change() < 0);
}

}  // namespace ui
