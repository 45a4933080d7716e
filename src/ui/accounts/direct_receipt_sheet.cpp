#include "ui/accounts/direct_receipt_sheet.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "accounts/balances.h"
#include "accounts/direct_receipt.h"
#include "accounts/lists.h"
#include "accounts/messages.h"
#include "accounts/printed_voucher.h"
#include "accounts/voucher_statements.h"
#include "common/numbers.h"
#include "sales/sales_desk.h"
#include "signin/session.h"
#include "ui/accounts/print_voucher.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

DirectReceipt::DirectReceipt(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "قبض مباشر من عميل آجل"), context_(context), desk_(desk) {
    setObjectName("direct_receipt");
    set_card_width(520);
    customer_ = choice_list("direct_customer");
    for (const common::Choice& choice : desk.lists().account_customers)
        customer_->addItem(qt(choice.name), QVariant::fromValue<qlonglong>(choice.code));
    customer_->setCurrentIndex(customer_->findData(QVariant::fromValue<qlonglong>(desk.invoice().customer)));
    amount_ = new AmountField("direct_amount");
    set_role(amount_, "large");
    amount_->setText("0.00");
    balance_ = new Figure("direct_balance", "figure");
    after_ = new Figure("direct_after", "figure");
    body()->addWidget(captioned("ال&عميل", customer_));
    auto* figures = new QHBoxLayout;
    figures->setSpacing(px(16));
    figures->addWidget(captioned("الرصيد قبل", balance_), 1);
    figures->addWidget(captioned("الرصيد بعد", after_), 1);
    body()->addLayout(figures);
    body()->addWidget(captioned("الم&بلغ المقبوض", amount_));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    set_role(foot_button(row, "direct_save", "&حفظ  Enter", 2, [this] { save(); }), "main");
    foot_button(row, "direct_back", "&رجوع", 1, [this] { leave(0); });
    body()->addLayout(row);

    enter_leads_on({customer_, amount_});
    connect(customer_, &QComboBox::activated, this, &DirectReceipt::show_balance);
    connect(amount_, &QLineEdit::textChanged, this, [this] {
        const double paid = accounts::read_amount(utf8(amount_->text())).value;
        after_->setText(choice_of(customer_) ? qt(common::format_amount(owed_ - paid)) : QString("—"));
    });
    connect(amount_, &QLineEdit::returnPressed, this, &DirectReceipt::save);
    show_balance();
}

void DirectReceipt::show_balance() {
    owed_ = 0;
    const auto customer = choice_of(customer_);
    guarded(context_.services, "CustomerBalance", [&] {
        if (!customer) return;
        if (const auto party =
                accounts::find_party(context_.connection, accounts::Ledger::customers, *customer))
            owed_ = party->balance;
    });
    balance_->setText(customer ? qt(common::format_amount(owed_)) : QString("—"));
    emit amount_->textChanged(amount_->text());
}

void DirectReceipt::take_focus() {
    QWidget* first = choice_of(customer_) ? static_cast<QWidget*>(amount_) : customer_;
    first->setFocus();
}

void DirectReceipt::save() {
    if (Sheet::top_of(window()) != this) return;
    const auto refuse = [this](std::string_view text, QWidget* field) {
        context_.services.prompts.message(text, common::Icon::critical);
        field->setFocus();
    };
    const auto customer = choice_of(customer_);
    const accounts::Amount amount = accounts::read_amount(utf8(amount_->text()));
    if (!customer) return refuse(accounts::message::enter_customer, customer_);
    if (!amount.message.empty()) return refuse(amount.message, amount_);
    if (amount.value == 0) return refuse(accounts::message::enter_value, amount_);
    guarded(context_.services, "DirectReceipt", [&] {
        const auto party = accounts::find_party(context_.connection, accounts::Ledger::customers, *customer);
        if (!party) return refuse(accounts::message::no_such_customer, customer_);
        const std::string number =
            accounts::write_direct_receipt(context_.connection, context_.session, context_.services.clock,
                                           *customer, context_.services.clock.now().date, amount.value);
        desk_.checkout().OpenDrawer();
        offer_paper(number, amount.value, party->balance);
        leave(1);
    });
}

void DirectReceipt::offer_paper(const std::string& number, double amount, double before) {
    if (!context_.services.prompts.question(std::string(message::direct_receipt_saved) + number +
                                            std::string(message::print_it)))
        return;
    accounts::PrintedVoucher paper;
    paper.title = accounts::printed_title(accounts::VoucherKind::receipt, accounts::Method::cash);
    paper.number = number;
    paper.date = context_.services.clock.now().date;
    paper.party = utf8(customer_->currentText());
    paper.amount = amount;
    paper.words = accounts::words_of(amount);
    paper.method = accounts::method_name(accounts::Method::cash);
    paper.place = context_.session.drawer_name;
    paper.balance_before = before;
    paper.balance_after = common::round_decimals(before - amount, 2);
    print_voucher(context_, paper);
}

}  // namespace ui
