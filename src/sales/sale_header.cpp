#include "sales/sales_desk.h"

#include "sales/items.h"
#include "sales/messages.h"

namespace sales {

bool SaleHeader::choose_store(std::int64_t code) {
    return change("choose the store", false, [&] {
        if (frozen()) return false;
        sale_.chosen_store = code;
        invoice_.sell_from(code);
        NextInvoiceNumber();
        sale_.stock = stock_of(sale_.current_row);
        return true;
    });
}

bool SaleHeader::choose_date(const common::Date& date) {
    if (!common::is_valid(date)) return false;
    invoice_.date = date;
    sale_.date_chosen = true;
    return true;
}

bool SaleHeader::choose_customer(std::int64_t code) {
    const auto& customers = state_.lists.account_customers;
    if (frozen() || !contains(customers, code)) return false;
    sale_.chosen_customer = code;
    if (invoice_.payment == PaymentOption::account) {
        invoice_.customer = code;
        invoice_.customer_name = common::name_of(customers, code);
    }
    return true;
}

bool SaleHeader::choose_tips_receiver(std::int64_t code) {
    if (frozen() || !contains(state_.lists.tips_receivers, code)) return false;
    invoice_.tips_receiver = code;
    return true;
}

bool SaleHeader::choose_bank(std::int64_t code) {
    if (frozen() || !contains(state_.lists.banks, code)) return false;
    invoice_.card.bank_code = code;
    return true;
}

bool SaleHeader::choose_worker(std::int64_t code) {
    const auto& workers = state_.lists.workers;
    if (code != 0 && !contains(workers, code)) return false;
    invoice_.worker = code;
    invoice_.worker_name = common::name_of(workers, code);
    return true;
}

void SaleHeader::enter_card(std::string_view holder, std::string_view reference) {
    invoice_.card.holder = holder;
    invoice_.card.reference = reference;
}

void SaleHeader::enter_permit(bool opened, std::string_view number) {
    invoice_.permit_opened = opened;
    invoice_.permit_number = number;
}

void SaleHeader::choose_price_level(int level) {
    if (level >= retail_level && level <= last_level) invoice_.price_level = level;
}

bool SaleHeader::SwitchKind(KindOption kind) {
    return change("switch the kind", false, [&] {
        if (frozen()) return false;
        const bool crosses = (kind == KindOption::sale) != (invoice_.kind == KindOption::sale);
        if (crosses && !invoice_.lines.empty()) {
            services_.prompts.message(message::kind_fixed, common::Icon::exclamation);
            return false;
        }
        // An approval is for one return. Between return and third kind it stays.
        if (kind == KindOption::sale) {
            if (crosses) invoice_.approvals.clear();
        } else if (approval_of(invoice_.approvals, signin::Action::return_kind) == nullptr) {
            const auto permit = authorise(signin::Action::return_kind);
            if (!permit) {
                if (invoice_.lines.empty()) apply_kind(KindOption::sale);
                return false;
            }
            permit_return(permit, invoice_);
        }
        apply_kind(kind);
        return true;
    });
}

void SaleHeader::apply_kind(KindOption kind) {
    invoice_.kind = kind;
    apply_payment(payment_after_switch(invoice_.payment, kind));
}

bool SaleHeader::SwitchPayment(PaymentOption payment) {
    return change("switch the payment", false, [&] {
        if (frozen() || !payment_enabled(payment, invoice_.kind)) return false;
        apply_payment(payment);
        return true;
    });
}

void SaleHeader::apply_payment(PaymentOption payment) {
    invoice_.payment = payment;
    const bool on_account = payment == PaymentOption::account;
    invoice_.customer = on_account ? sale_.chosen_customer : walk_in_customer;
    invoice_.customer_name =
        on_account ? common::name_of(state_.lists.account_customers, sale_.chosen_customer) : std::string();
    const auto& banks = state_.lists.banks;
    if (payment == PaymentOption::card && invoice_.card.bank_code == 0 && !banks.empty())
        invoice_.card.bank_code = banks.front().code;
    NextInvoiceNumber();
    RecalcTotals();
}

bool SaleHeader::toggle_kind() {
    return SwitchKind(invoice_.kind == KindOption::sale ? KindOption::return_ : KindOption::sale);
}

bool SaleHeader::toggle_payment() {
    return SwitchPayment(invoice_.payment == PaymentOption::cash ? PaymentOption::account
                                                                 : PaymentOption::cash);
}

}  // namespace sales
