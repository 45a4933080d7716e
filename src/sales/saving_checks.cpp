#include "sales/saving.h"

#include <string>

#include "common/text.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "sales/messages.h"
#include "sales/returns.h"
#include "sales/rights.h"
#include "sales/stock_check.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Sql;

namespace {

class Checks {
  public:
    Checks(Connection& connection, const signin::Session& session, common::Prompts& prompts,
           const Invoice& invoice, Claims* claims)
        : connection_(connection), session_(session), prompts_(prompts), invoice_(invoice), claims_(claims) {}

    std::optional<std::int64_t> run() {
        if (invoice_.lines.empty()) return refuse(message::empty_invoice);
        const auto shift = open_shift();
        if (!shift) return refuse(message::no_shift);
        if (invoice_.store == 0) return refuse(common::message::choose_store);
        if (!authorise_invoice(connection_, session_, prompts_, invoice_)) return release();
        if (const auto shortage = find_shortage()) {
            return refuse(std::string(message::quantity_of) + shortage->item_name +
                          std::string(shortage->claimed ? message::being_sold : message::not_enough));
        }
        if (const auto line = line_beyond_sale(connection_, invoice_))
            return refuse(std::string(message::returned_too_much) + *line);
        if (const auto missing = missing_party()) return refuse(*missing);
        if (invoice_.payment == PaymentOption::account && invoice_.permit_opened) {
            if (common::trim(invoice_.permit_number).empty()) return refuse(message::enter_permit);
            if (number_used()) return refuse(message::number_used);
        }
        if (const auto field = text_too_long())
            return refuse(std::string(*field) + std::string(message::too_long));
        return shift;
    }

  private:
    std::optional<std::int64_t> refuse(std::string_view text) {
        release();  // other tills do not wait for the answer
        prompts_.message(text, common::Icon::exclamation);
        return std::nullopt;
    }

    std::nullopt_t release() {
        if (claims_ != nullptr) claims_->release();
        return std::nullopt;
    }

    // A drawer without any shift has no open one, like a drawer whose last shift is closed.
    std::optional<std::int64_t> open_shift() {
        const auto last =
            connection_.last_row(Sql("select * from shift where  stcode = ") + session_.store_code +
                                 "and cash_no = " + session_.cash_point + " order by scode ");
        if (!last || !last->null("e_date")) return std::nullopt;
        return last->integer("scode");
    }

    std::optional<Shortage> find_shortage() {
        if (claims_ != nullptr) return claims_->claim(invoice_);
        const Line* line = first_short_line(invoice_, stock_levels(connection_, goods_taken(invoice_)));
        return line == nullptr ? std::nullopt : std::optional(Shortage{line->name});
    }

    // A customer, receiver or bank that was not chosen, or was deleted since.
    std::optional<std::string_view> missing_party() {
        switch (invoice_.payment) {
            case PaymentOption::account:
                if (invoice_.lacks_customer()) return message::choose_customer;
                if (connection_.query(Sql("select ccode from custdata where ccode = ") + invoice_.customer)
                        .empty())
                    return common::message::no_such_customer;
                break;
            case PaymentOption::tips:
                if (invoice_.tips_receiver == 0) return message::choose_tips;
                if (connection_
                        .query(Sql("select ccode from boundata where ccode = ") + invoice_.tips_receiver)
                        .empty())
                    return message::tips_gone;
                break;
            case PaymentOption::card:
                if (invoice_.card.bank_code == 0) return message::choose_bank;
                if (connection_
                        .query(Sql("select bcode from bankdata where bcode = ") + invoice_.card.bank_code)
                        .empty())
                    return common::message::no_such_bank;
                if (common::trim(invoice_.card.reference).empty()) return message::enter_reference;
                break;
            case PaymentOption::cash:
                break;
        }
        if (invoice_.has_walk_in() && !invoice_.walk_in->is_new &&
            connection_.query(Sql("select * from cust_cash where zcode = ") + invoice_.walk_in->code).empty())
            return common::message::no_such_cash_customer;
        return std::nullopt;
    }

    // A server refuses a text that is too long, which would stop the save in the middle.
    std::optional<std::string_view> text_too_long() {
        const database::TextLimits header(connection_, "sales");
        if (!header.fits("perm_no", common::trim(invoice_.permit_number))) return message::permit_field;
        if (!header.fits("note", invoice_.note)) return message::note_field;
        if (!header.fits("credit_name", invoice_.card.holder)) return message::holder_field;
        if (!header.fits("ref_no", invoice_.card.reference)) return message::reference_field;
        const database::TextLimits line_texts(connection_, "saledata");
        for (const Line& line : invoice_.lines)
            if (!line_texts.fits("note", line.name)) return message::name_field;
        return std::nullopt;
    }

    bool number_used() {
        for (const auto& row :
             connection_.query(Sql("select * from sales where pnum = ") + invoice_.number +
                               " and ctype = " + ctype_of(invoice_.kind) + " and stcode = " + invoice_.store +
                               " and date = " + quoted(invoice_.date))) {
            if (row.integer("vcode") == invoice_.customer) return true;
        }
        return false;
    }

    Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    const Invoice& invoice_;
    Claims* claims_;
};

}  // namespace

std::optional<std::int64_t> check_before_saving(Connection& connection, const signin::Session& session,
                                                common::Prompts& prompts, const Invoice& invoice,
                                                Claims* claims) {
    return Checks(connection, session, prompts, invoice, claims).run();
}

}  // namespace sales
