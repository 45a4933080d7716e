#include "sales/saving.h"

#include <string>

#include "common/text.h"
#include "database/choices.h"
#include "sales/messages.h"
#include "sales/returns.h"
#include "sales/rights.h"

namespace sales {

using database::quoted;
using database::Result;
using database::Sql;

namespace {

// Object names of the fields that a refusal leads to.
constexpr std::string_view customer_field = "account_customer";
constexpr std::string_view receiver_field = "tips_receiver";
constexpr std::string_view bank_field = "bank";
constexpr std::string_view holder_field = "card_holder";
constexpr std::string_view reference_field = "card_reference";
constexpr std::string_view permit_field = "permit_number";

// The row of the customer, receiver or bank that the invoice names; nothing if it needs none or names none.
std::optional<Sql> party_statement(const Invoice& invoice) {
    switch (invoice.payment) {
        case PaymentOption::account:
            if (invoice.lacks_customer()) return std::nullopt;
            return Sql("select ccode from custdata where ccode = ") + invoice.customer;
        case PaymentOption::tips:
            if (invoice.tips_receiver == 0) return std::nullopt;
            return Sql("select ccode from boundata where ccode = ") + invoice.tips_receiver;
        case PaymentOption::card:
            if (invoice.card.bank_code == 0) return std::nullopt;
            return Sql("select bcode from bankdata where bcode = ") + invoice.card.bank_code;
        case PaymentOption::cash:
            break;
    }
    return std::nullopt;
}

}  // namespace

void SavingChecks::ask(database::Reads& reads) {
    const auto into = [](bool& found) { return [&found](const Result& rows) { found = !rows.empty(); }; };
    reads.add(cash::last_shift_statement(session_.store_code, session_.cash_point),
              [this](const Result& rows) { shift_ = cash::last_shift_in(rows); });
    if (claims_ == nullptr)
        reads.add(levels_statement(goods_taken(invoice_)),
                  [this](const Result& levels) { levels_ = stock_levels(levels); });
    if (const auto party = party_statement(invoice_)) reads.add(*party, into(has_party_));
    if (invoice_.has_walk_in() && !invoice_.walk_in->is_new)
        reads.add(Sql("select * from cust_cash where zcode = ") + invoice_.walk_in->code, into(has_walk_in_));
}

std::optional<std::int64_t> SavingChecks::run() {
    if (invoice_.lines.empty()) return refuse(message::empty_invoice);
    // A drawer without any shift has no open one, like a drawer whose last shift is closed.
    if (!shift_ || !shift_->is_open()) return refuse(message::no_shift);
    if (invoice_.store == 0) return refuse(common::message::choose_store);
    if (!authorise_invoice(connection_, session_, prompts_, invoice_)) return release();
    if (const auto shortage = find_shortage()) {
        return refuse(std::string(message::quantity_of) + shortage->item_name +
                      std::string(shortage->claimed ? message::being_sold : message::not_enough));
    }
    if (const auto line = line_beyond_sale(connection_, invoice_))
        return refuse(std::string(message::returned_too_much) + *line);
    if (const auto missing = missing_party()) return refuse(missing->text, missing->field);
    if (invoice_.payment == PaymentOption::account && invoice_.permit_opened) {
        if (common::trim(invoice_.permit_number).empty()) return refuse(message::enter_permit, permit_field);
        if (number_used()) return refuse(message::number_used, permit_field);
    }
    if (const auto too_long = text_too_long()) return refuse(too_long->text, too_long->field);
    return shift_->number;
}

std::optional<std::int64_t> SavingChecks::refuse(std::string_view text, std::string_view field) {
    refused_field_ = field;
    release();  // other tills do not wait for the answer
    prompts_.message(text, common::Icon::exclamation);
    return std::nullopt;
}

std::nullopt_t SavingChecks::release() {
    if (claims_ != nullptr) claims_->release();
    return std::nullopt;
}

std::optional<Shortage> SavingChecks::find_shortage() {
    if (claims_ != nullptr) return claims_->claim(invoice_);
    const Line* line = first_short_line(invoice_, levels_);
    return line == nullptr ? std::nullopt : std::optional(Shortage{line->name});
}

// A customer, receiver or bank that was not chosen, or was deleted since.
std::optional<common::Refusal> SavingChecks::missing_party() const {
    switch (invoice_.payment) {
        case PaymentOption::account:
            if (invoice_.lacks_customer()) return common::Refusal(customer_field, message::choose_customer);
            if (!has_party_) return common::Refusal(customer_field, common::message::no_such_customer);
            break;
        case PaymentOption::tips:
            if (invoice_.tips_receiver == 0) return common::Refusal(receiver_field, message::choose_tips);
            if (!has_party_) return common::Refusal(receiver_field, message::tips_gone);
            break;
        case PaymentOption::card:
            if (invoice_.card.bank_code == 0) return common::Refusal(bank_field, message::choose_bank);
            if (!has_party_) return common::Refusal(bank_field, common::message::no_such_bank);
            if (common::trim(invoice_.card.reference).empty())
                return common::Refusal(reference_field, message::enter_reference);
            break;
        case PaymentOption::cash:
            break;
    }
    if (!has_walk_in_) return common::Refusal({}, common::message::no_such_cash_customer);
    return std::nullopt;
}

// A server refuses a text that is too long, which would stop the save in the middle.
std::optional<common::Refusal> SavingChecks::text_too_long() const {
    const auto too_long = [](std::string_view field, std::string_view caption) {
        return common::Refusal(field, std::string(caption) + std::string(message::too_long));
    };
    const database::TextLimits header(connection_, "sales");
    if (!header.fits("perm_no", common::trim(invoice_.permit_number)))
        return too_long(permit_field, message::permit_field);
    if (!header.fits("note", invoice_.note)) return too_long({}, message::note_field);
    if (!header.fits("credit_name", invoice_.card.holder))
        return too_long(holder_field, message::holder_field);
    if (!header.fits("ref_no", invoice_.card.reference))
        return too_long(reference_field, message::reference_field);
    const database::TextLimits line_texts(connection_, "saledata");
    for (const Line& line : invoice_.lines)
        if (!line_texts.fits("note", line.name)) return too_long({}, message::name_field);
    return std::nullopt;
}

bool SavingChecks::number_used() const {
    for (const auto& row : connection_.query(Sql("select * from sales where pnum = ") + invoice_.number +
                                             " and ctype = " + ctype_of(invoice_.kind) + " and stcode = " +
                                             invoice_.store + " and date = " + quoted(invoice_.date))) {
        if (row.integer("vcode") == invoice_.customer) return true;
    }
    return false;
}

}  // namespace sales
