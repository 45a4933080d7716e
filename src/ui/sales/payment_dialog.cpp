#include "ui/sales/payment_dialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "sales/payment.h"
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
    worker_->addItem({}, QVariant::fromValue<qlonglong>(0));
    for (const common::Choice& worker : payment.workers()) {
        worker_->addItem(qt(worker.name), QVariant::fromValue<qlonglong>(worker.code));
    }
    worker_->setCurrentIndex(
        std::max(0, worker_->findData(QVariant::fromValue<qlonglong>(payment.worker()))));
    body()->addWidget(captioned("البائ&ع", worker_));

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* confirm = new KeyButton("payment_confirm", "Enter", "تأكيد", KeyButton::Look::save);
    confirm->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* back = new KeyButton("payment_back", "Esc", "رجوع", KeyButton::Look::tool);
    back->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    row->addWidget(confirm, 2);
    row->addWidget(back, 1);
    body()->addLayout(row);

    connect(paid_, &QLineEdit::textChanged, this, [this](const QString& text) {
        payment_.type_paid(utf8(text));
        show_change();
    });
    connect(worker_, &QComboBox::currentTextChanged, this,
            [this] { payment_.choose_worker(chosen_code(worker_)); });
    connect(confirm, &QPushButton::clicked, this, [this] { leave(1); });
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    show_change();
}

void PaymentDialog::take_focus() {
    paid_->setFocus();
}

void PaymentDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto* button = qobject_cast<QPushButton*>(focusWidget());
        if (button != nullptr) {
            button->click();
        } else {
            leave(1);
        }
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

void PaymentDialog::show_change() {
    change_->setText(qt(payment_.change_text()));
    change_box_->setProperty("short", payment_.change() < 0);
    change_box_->style()->unpolish(change_box_);
    change_box_->style()->polish(change_box_);
    change_->style()->unpolish(change_);
    change_->style()->polish(change_);
}

}  // namespace ui
