#include "sales/offers.h"

#include <algorithm>

#include "common/amount_in_words.h"
#include "common/numbers.h"
#include "common/text.h"
#include "printing/receipt.h"
#include "sales/messages.h"
#include "sales/rights.h"
#include "stock/offers.h"

namespace sales {

using database::Connection;
using database::Sql;

namespace {

// Restores a name that was cut to the width of an offer's cell from the item's card.
void restore_cut_name(Connection& connection, Line& line) {
    // It may be one short of the width, if a character that counts twice no longer fitted.
    if (!line.item_code || common::column_width(line.name) + 1 < stock::cell_width) return;
    const std::string whole =
        database::text_of(connection.scalar(Sql("select [name] from items where code = ") + *line.item_code));
    if (common::cut_to_column(whole, stock::cell_width) == line.name) line.name = whole;
}

std::string customer_of(const Invoice& invoice) {
    if (invoice.payment == PaymentOption::account) return invoice.customer_name;
    if (invoice.walk_in) return invoice.walk_in->name;
    return "عميل نقدي";  // a cash customer
}

stock::OfferHeader offer_header(const Invoice& invoice, std::int64_t user) {
    stock::OfferHeader header;
    header.customer = invoice.vcode();
    header.ctype = ctype_of(invoice.kind);
    header.stype = stype_of(invoice.payment);
    header.user = user;
    header.discount = invoice.discount().value();
    header.walk_in = invoice.walk_in ? invoice.walk_in->code : 0;
    header.date = invoice.date;
    return header;
}

std::vector<stock::OfferLine> offer_lines(const Invoice& invoice) {
    static_assert(stock::offer_cells == column::count);
    std::vector<stock::OfferLine> lines;
    for (const Line& line : invoice.lines)
        lines.push_back(line.cells(static_cast<int>(lines.size()) + 1));
    return lines;
}

// The offer as an invoice without number, store and price level, its lines marked. A customer who was deleted
// since keeps his code, which saving then refuses.
Invoice invoice_of(Connection& connection, const stock::Offer& offer) {
    Invoice invoice;
    invoice.kind = kind_of(offer.header.ctype);
    invoice.payment = payment_of(offer.header.customer, offer.header.stype);
    invoice.date = offer.header.date;
    if (invoice.payment == PaymentOption::account) {
        invoice.customer = offer.header.customer;
        invoice.customer_name = account_name(connection, invoice.customer);
    }
    if (offer.header.walk_in != 0) {
        const WalkInCustomer deleted{offer.header.walk_in, false, {}, {}, {}};
        invoice.walk_in = accounts::find_walk_in(connection, offer.header.walk_in).value_or(deleted);
    }
    for (const stock::OfferLine& cells : offer.lines) {
        invoice.lines.push_back(Line::from_cells(cells));
        invoice.lines.back().marked = true;
        restore_cut_name(connection, invoice.lines.back());
    }
    invoice.set_discount(offer.header.discount);
    invoice.grant_as_it_is();
    return invoice;
}

}  // namespace

void OfferLines::ask(database::Reads& reads, const Invoice& invoice) {
    for (const Line& line : invoice.lines) {
        if (!line.marked || !line.item_code) continue;
        const std::int64_t item = *line.item_code;
        reads.add(Sql("select stop from items where code = ") + item,
                  [this, item](const database::Result& card) {
                      if (!card.empty()) stopped_[item] = card.front().integer("stop") != 0;
                  });
    }
    if (std::ranges::any_of(invoice.lines, [](const Line& line) { return line.marked; }))
        reads.add(levels_statement(goods_taken(invoice)),
                  [this](const database::Result& levels) { levels_ = stock_levels(levels); });
}

std::optional<std::string> OfferLines::refused(const Invoice& invoice) const {
    for (const Line& line : invoice.lines) {
        if (!line.marked || !line.item_code) continue;
        const auto stopped = stopped_.find(*line.item_code);
        if (stopped == stopped_.end())
            return std::string(message::item_of) + line.name + std::string(message::item_deleted);
        if (stopped->second) return std::string(message::stopped) + "\n" + line.name;
        const auto held = levels_.find({*line.item_code, line.source_store});
        if (!supplier_suffices(invoice, line, line.quantity, held == levels_.end() ? 0 : held->second))
            return std::string(message::transfer_store_short) + "\n" + line.name;
    }
    return std::nullopt;
}

std::optional<printing::Report> quotation(Connection& connection, const signin::Session& session,
                                          std::int64_t number) {
    using printing::Align;
    const auto offer = stock::load_offer(connection, number);
    if (!offer) return std::nullopt;
    const Invoice invoice = invoice_of(connection, *offer);

    printing::Report report = printing::headed("offer-" + std::to_string(number), session);
    report.title = "عرض سعر";  // quotation
    report.captions = {
        {"رقم العرض", std::to_string(number)},
        {"التاريخ", common::date_text(invoice.date)},
        {"العميل", customer_of(invoice)},
        {"اسم المستخدم", database::text_of(connection.scalar(Sql("select name from [users] where code = ") +
                                                             offer->header.user))},
    };
    report.columns = {{"م", Align::centre, 0.5},      {"كود", Align::centre, 1},
                      {"اسم الصنف", Align::start, 4}, {"الوحدة", Align::centre, 1},
                      {"كمية", Align::end, 0.9},      {"سعر", Align::end, 1.1},
                      {"خصم", Align::end, 0.9},       {"الاجمالي", Align::end, 1.3}};
    for (const Line& line : invoice.lines) {
        report.rows.push_back({std::to_string(report.rows.size() + 1),
                               line.item_code ? std::to_string(*line.item_code) : std::string(), line.name,
                               line.unit_name, common::shortest_text(line.quantity),
                               common::format_amount(line.price), common::format_amount(line.discount),
                               line.total().text()});
    }
    report.totals = {{"الاجمالي", invoice.total().text()},
                     {"خـــــــصم", invoice.discount().text()},
                     {"الصافي", invoice.net().text()}};
    report.words = common::invoice_words(invoice.net());
    for (const std::string& line : session.credit_lines) {
        if (!line.empty()) report.footers.push_back(line);
    }
    report.signatures = {"البائع", "العميل"};
    return report;
}

std::int64_t SaleOffers::SaveOffer() {
    return change("save an offer", std::int64_t{0}, [&]() -> std::int64_t {
        if (frozen()) return 0;
        if (invoice_.lines.empty()) {
            services_.prompts.message(message::empty_offer, common::Icon::exclamation);
            return 0;
        }
        if (!lines_complete()) return 0;
        if (invoice_.lacks_customer()) {
            services_.prompts.message(message::choose_customer, common::Icon::exclamation);
            return 0;
        }
        // What an offer holds is granted to whoever loads it.
        if (!authorise_invoice(connection_, session_, services_.prompts, invoice_)) return 0;
        // The offer knows a walk-in customer by his code alone.
        if (invoice_.walk_in && invoice_.walk_in->is_new)
            accounts::store_walk_in_customer(connection_, *invoice_.walk_in);
        const std::int64_t number =
            stock::save_offer(connection_, offer_header(invoice_, session_.user_code), offer_lines(invoice_));
        give_up();
        start_next_invoice();
        return number;
    });
}

bool SaleOffers::LoadOffer(std::int64_t number) {
    return change("load an offer", false, [&] {
        const auto offer = stock::load_offer(connection_, number);
        if (!offer) {
            services_.prompts.message(message::no_such_offer);
            return false;
        }
        Invoice loaded = invoice_of(connection_, *offer);
        if (loaded.is_return()) {
            const auto permit = authorise(signin::Action::return_kind);
            if (!permit) return false;
            permit_return(permit, loaded);
        }
        if (!may_replace_invoice()) return false;
        loaded.date = server_date();
        loaded.sell_from(sale_.chosen_store);
        loaded.price_level = invoice_.price_level;
        const auto& banks = state_.lists.banks;
        if (loaded.payment == PaymentOption::card && !banks.empty())
            loaded.card.bank_code = banks.front().code;
        sale_ = empty_sale();
        invoice_ = std::move(loaded);
        sale_.offer = number;
        sale_.chosen_customer = invoice_.customer;
        NextInvoiceNumber();
        show_line(invoice_.first_row());
        return true;
    });
}

}  // namespace sales
