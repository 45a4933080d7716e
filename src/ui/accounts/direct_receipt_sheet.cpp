#include "ui/accounts/direct_receipt_sheet.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "accounts/messages.h"
#include "common/amount.h"
#include "common/typed.h"
#include "printing/report_printer.h"
#include "sales/sales_desk.h"
#include "ui/accounts/voucher_sheet.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "The receipt was saved under number …"
constexpr std::string_view direct_receipt_saved = "تم حفظ إيصال القبض رقم ";
// "… Print it?"
constexpr std::string_view print_it = " .. هل تريد طباعته ؟";

}  // namespace

DirectReceiptSheet::DirectReceiptSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "قبض مباشر من عميل آجل"), context_(context), desk_(desk) {
    setObjectName("direct_receipt");
    set_card_width(520);
    FieldGrid grid(2, 14);
    grid.layout()->setHorizontalSpacing(px(16));
    form_.add(accounts::direct_receipt_form(), grid);
    form_.enlarge("direct_amount");
    body()->addLayout(grid.layout());
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    set_role(foot_button(row, "direct_save", "&حفظ  Enter", 2, [this] { save(); }), "main");
    foot_button(row, "direct_back", "&رجوع", 1, [this] { leave(0); });
    body()->addLayout(row);

    QComboBox* customers = form_.list("direct_customer");
    QLineEdit* amount = form_.line("direct_amount");
    fill_choices(customers, desk.lists().account_customers, {});
    fields_.customer = desk.invoice().customer;
    form_.show(fields_);
    enter_leads_on({customers, amount});
    connect(customers, &QComboBox::activated, this, &DirectReceiptSheet::show_balance);
    connect(amount, &QLineEdit::textChanged, this, &DirectReceiptSheet::show_balance_after);
    connect(amount, &QLineEdit::returnPressed, this, &DirectReceiptSheet::save);
    show_balance();
}

void DirectReceiptSheet::show_balance() {
    owed_ = 0;
    const auto customer = choice_of(form_.list("direct_customer"));
    guarded(context_.services, "CustomerBalance", [&] {
        if (!customer) return;
        if (const auto party =
                accounts::find_party(context_.connection, accounts::PartyKind::customer, *customer))
            owed_ = party->balance;
    });
    form_.figure("direct_balance")->setText(customer ? qt(common::Amount(owed_).text()) : QString("—"));
    show_balance_after();
}

void DirectReceiptSheet::show_balance_after() {
    const auto paid = common::read_amount(utf8(form_.line("direct_amount")->text()));
    const common::Amount after =
        common::Amount(owed_) + accounts::effect_on_balance(accounts::VoucherKind::receipt,
                                                            accounts::PartyKind::customer,
                                                            accounts::Method::cash, paid.value);
    const bool known = choice_of(form_.list("direct_customer")).has_value() && paid.is_good();
    form_.figure("direct_after")->setText(known ? qt(after.text()) : QString("—"));
}

void DirectReceiptSheet::take_focus() {
    const bool chosen = choice_of(form_.list("direct_customer")).has_value();
    form_.field(chosen ? "direct_amount" : "direct_customer")->setFocus();
}

void DirectReceiptSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    std::optional<accounts::DirectReceipt> receipt;
    const auto write = [&] {
        if (accounts::VoucherSaving(context_.connection, context_.session, context_.services)
                .settle_earlier())
            return std::optional(common::Refusal("", accounts::message::look_at_vouchers));
        auto refusal = accounts::check_direct_receipt(context_.connection, fields_);
        if (refusal) return refusal;
        receipt = accounts::write_direct_receipt(context_.connection, context_.session, context_.services,
                                                 *fields_.customer, context_.services.clock.now().date,
                                                 common::read_amount(fields_.amount).value);
        if (receipt->saved.outcome == accounts::SavedVoucher::Outcome::undone)
            refusal = accounts::why_not_saved(receipt->saved);
        return refusal;
    };
    if (!form_.save(context_.services, "DirectReceipt", fields_, write)) return;
    // The receipt is written: whatever fails from here on, the sheet closes, so that it is not written again.
    guarded(context_.services, "DirectReceipt", [&] {
        desk_.checkout().OpenDrawer();
        if (receipt->saved.outcome == accounts::SavedVoucher::Outcome::saved)
            return offer_paper(receipt->paper);
        context_.services.prompts.message(accounts::why_not_saved(receipt->saved).text,
                                          common::Icon::critical);
    });
    leave(1);
}

void DirectReceiptSheet::offer_paper(const accounts::PrintedVoucher& paper) {
    if (context_.services.prompts.question(std::string(direct_receipt_saved) + paper.number +
                                           std::string(print_it)))
        context_.reports.print_slip(report_of(paper, context_.session));
}

}  // namespace ui
