#include "ui/sales/party_bar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QStackedLayout>

#include "sales/sales_desk.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QWidget* page(std::initializer_list<std::pair<QString, QWidget*>> fields) {
    auto* made = new QWidget;
    auto* row = new QHBoxLayout(made);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    for (const auto& [caption, field] : fields) {
        QLabel* before = label(caption, "side");
        before->setBuddy(field);
        field->setAccessibleName(caption);
        row->addWidget(before);
        row->addWidget(field, 1);
    }
    return made;
}

}  // namespace

PartyBar::PartyBar(QWidget* parent) : QWidget(parent) {
    setProperty(keys_property, keys_no_scans);
    pages_ = new QStackedLayout(this);
    customer_ = choice_list("account_customer");
    permit_ = new QCheckBox("إذن تسليم");  // delivery permit
    permit_->setObjectName("permit");
    permit_number_ = text_field("permit_number");
    permit_number_->setMaxLength(20);
    permit_number_->setEnabled(false);
    bank_ = choice_list("bank");
    holder_ = text_field("card_holder");
    holder_->setMaxLength(100);
    reference_ = text_field("card_reference");
    reference_->setMaxLength(50);
    receiver_ = choice_list("tips_receiver");
    QWidget* account = page({{"العميل", customer_}});
    auto* row = static_cast<QHBoxLayout*>(account->layout());
    permit_number_->setAccessibleName("رقم الإذن");
    set_hint(permit_number_, "رقم الإذن");
    permit_number_->setMaximumWidth(px(180));
    row->addWidget(permit_);
    row->addWidget(permit_number_);
    pages_->addWidget(account);
    pages_->addWidget(new QWidget);  // cash has no fields
    pages_->addWidget(page({{"البنك", bank_}, {"صاحب البطاقة", holder_}, {"رقم مرجعي", reference_}}));
    pages_->addWidget(page({{"عميل الإكراميات", receiver_}}));
    connect_fields();
}

void PartyBar::connect_fields() {
    const auto choosing = [this](QComboBox* list, auto signal, QWidget* next) {
        connect(list, &QComboBox::activated, this,
                [this, list, signal] { emit(this->*signal)(choice_of(list).value_or(0)); });
        connect(list->lineEdit(), &QLineEdit::returnPressed, this, [this, list, signal, next] {
            const qlonglong code = choice_of(list).value_or(0);
            if (is_unknown(list)) return emit unknown_name(list);
            // Move the focus first: only a list without the focus replaces the typed text by the chosen
            // entry.
            if (next != nullptr) next->setFocus();
            emit(this->*signal)(code);
            if (next == nullptr) emit finished();
        });
    };
    choosing(customer_, &PartyBar::customer_chosen, nullptr);
    choosing(bank_, &PartyBar::bank_chosen, holder_);
    choosing(receiver_, &PartyBar::tips_receiver_chosen, nullptr);
    const auto permit_changed = [this] { emit permit_typed(permit_->isChecked(), permit_number_->text()); };
    connect(permit_, &QCheckBox::clicked, this, [this, permit_changed](bool opened) {
        permit_number_->setEnabled(opened);
        permit_changed();
        if (opened) {
            permit_number_->setFocus();
        } else {
            emit finished();
        }
    });
    connect(permit_number_, &QLineEdit::textEdited, this, permit_changed);
    connect(permit_number_, &QLineEdit::returnPressed, this, &PartyBar::finished);
    const auto typed = [this] { emit card_typed(holder_->text(), reference_->text()); };
    connect(holder_, &QLineEdit::textEdited, this, typed);
    connect(reference_, &QLineEdit::textEdited, this, typed);
    connect(holder_, &QLineEdit::returnPressed, reference_, qOverload<>(&QWidget::setFocus));
    connect(reference_, &QLineEdit::returnPressed, this, &PartyBar::finished);
    hide();
}

void PartyBar::fill(const sales::SalesDesk& desk) {
    fill_choices(customer_, desk.lists().account_customers, {});
    fill_choices(bank_, desk.lists().banks, {});
    fill_choices(receiver_, desk.lists().tips_receivers, {});
}

void PartyBar::show_state(const sales::SalesDesk& desk) {
    const sales::Invoice& invoice = desk.invoice();
    pages_->setCurrentIndex(static_cast<int>(invoice.payment));
    if (!customer_->hasFocus()) show_choice(customer_, invoice.customer);
    if (!bank_->hasFocus()) show_choice(bank_, invoice.card.bank_code);
    if (!receiver_->hasFocus()) show_choice(receiver_, invoice.tips_receiver);
    permit_->setChecked(invoice.permit_opened);
    permit_number_->setEnabled(invoice.permit_opened);
    if (!permit_number_->hasFocus()) permit_number_->setText(qt(invoice.permit_number));
    if (!holder_->hasFocus()) holder_->setText(qt(invoice.card.holder));
    if (!reference_->hasFocus()) reference_->setText(qt(invoice.card.reference));
    setEnabled(!desk.sale().partly_saved);
    setVisible(invoice.payment != sales::PaymentOption::cash);
}

QWidget* PartyBar::first_field(sales::PaymentOption payment) {
    switch (payment) {
        case sales::PaymentOption::account:
            return customer_;
        case sales::PaymentOption::card:
            return bank_;
        case sales::PaymentOption::tips:
            return receiver_;
        case sales::PaymentOption::cash:
            break;
    }
    return nullptr;
}

bool PartyBar::focus_field(std::string_view name) {
    auto* field = name.empty() ? nullptr : findChild<QWidget*>(qt(name));
    if (field == nullptr || !field->isVisible() || !field->isEnabled()) return false;
    field->setFocus(Qt::OtherFocusReason);
    return true;
}

}  // namespace ui
