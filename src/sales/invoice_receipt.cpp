#include "sales/invoice_receipt.h"

namespace sales {

namespace {

printing::Kind kind_of(KindOption kind) {
    switch (kind) {
        case KindOption::return_:
            return printing::Kind::return_;
        case KindOption::third:
            return printing::Kind::third;
        case KindOption::sale:
            break;
    }
    return printing::Kind::sale;
}

printing::Payment payment_of(PaymentOption payment) {
    switch (payment) {
        case PaymentOption::account:
            return printing::Payment::account;
        case PaymentOption::card:
            return printing::Payment::card;
        case PaymentOption::tips:
            return printing::Payment::tips;
        case PaymentOption::cash:
            break;
    }
    return printing::Payment::cash;
}

}  // namespace

printing::Receipt receipt_of(const Invoice& invoice, const PaymentTaken& payment,
                             const signin::Session& session, std::int64_t shift,
                             const common::TimeOfDay& time) {
    printing::Receipt receipt;
    receipt.store_name = session.settings.aname;
    receipt.second_store_name = session.settings.ename;
    receipt.telephone = session.settings.tel;
    receipt.credit_lines = session.credit_lines;
    receipt.logo = session.settings.logo;
    receipt.cash_point = session.cash_point;
    receipt.user_name = session.user_name;
    receipt.shift_number = shift;
    receipt.salesman = invoice.worker_name;
    if (invoice.payment == PaymentOption::account)
        receipt.customer = invoice.customer_name;
    else if (invoice.walk_in)
        receipt.customer = invoice.walk_in->name;
    receipt.number = invoice.number;
    receipt.code = receipt_code({key_of(invoice), time});
    receipt.date = invoice.date;
    receipt.time = time;
    receipt.kind = kind_of(invoice.kind);
    receipt.payment = payment_of(invoice.payment);
    for (const Line& line : invoice.lines) {
        receipt.lines.push_back({line.item_code ? std::to_string(*line.item_code) : std::string(), line.name,
                                 line.unit_name, line.quantity, line.price, line.discount, line.total()});
    }
    receipt.total = invoice.total();
    receipt.discount = invoice.discount();
    receipt.net = invoice.net();
    receipt.paid = payment.paid;
    receipt.remaining = payment.change;
    return receipt;
}

database::Sql receipt_settings(const Invoice& invoice, bool is_saved) {
    if (invoice.payment != PaymentOption::account) return database::Sql("select * from basic ");
    common::Amount to_come;
    if (!is_saved) to_come = invoice.is_return() ? -invoice.net() : invoice.net();
    return database::Sql("select *, (select max(cacc) + ") + to_come +
           " from custdata where ccode = " + invoice.customer + ") as customer_balance from basic ";
}

void print_receipts(const database::Result& settings, const signin::Session& session,
                    printing::ReceiptPrinter& printer, const InvoiceToSave& save) {
    const auto setting = [&](std::string_view column) {
        return settings.empty() ? 0 : settings.front().integer(column);
    };
    printing::Receipt receipt = receipt_of(save.invoice, save.payment, session, save.shift, save.moment.time);
    receipt.user_name = save.user_name;
    if (save.invoice.payment == PaymentOption::account && !settings.empty() &&
        !settings.front().null("customer_balance"))
        receipt.balance = common::Amount(settings.front().number("customer_balance"));
    if (setting("inv_p") == 1) {
        printer.print(receipt,
                      setting("csh_inv") != 0 ? printing::Form::cash_page : printing::Form::standard_page);
        return;
    }
    const bool wanted = !save.invoice.suppress_receipt || printer.prints_text();
    const bool reachable = !wanted || printer.print(receipt, printing::Form::full);
    // Shops with a second print point get a copy without the telephone. A printer that has just failed is not
    // tried again, because that would make the cashier wait twice.
    if (setting("cust_n") == 1 && reachable) printer.print(receipt, printing::Form::no_telephone);
}

}  // namespace sales
