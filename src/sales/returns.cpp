#include "sales/returns.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "sales/return_links.h"
#include "sales/stock_check.h"

namespace sales {

using common::Amount;
using database::Connection;
using database::Row;
using database::Sql;

namespace {

// A remainder below this is a rounding error, not goods.
constexpr double nothing_left = 1e-6;

// An article of an invoice: an item, or a general item by its typed name.
using Article = std::pair<std::int64_t, std::string>;
using Quantities = std::map<Article, double>;  // in base units

Article article_of(const Line& line) {
    return line.item_code ? Article{*line.item_code, ""} : Article{0, line.name};
}

// A saved line.
struct SavedLine {
    Article article;
    double base_quantity = 0;
    double factor = 1;
    double price = 0;
    double discount = 0;
};

void add_lines(std::vector<SavedLine>& saved, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        const Article article =
            row.null("icode") ? Article{0, row.text("note")} : Article{row.integer("icode"), ""};
        saved.push_back(
            {article, row.number("quan1"), row.number("unit1"), row.number("price"), row.number("disc")});
    }
}

Quantities quantities_of(const std::vector<SavedLine>& lines) {
    Quantities sums;
    for (const SavedLine& line : lines)
        sums[line.article] += line.base_quantity;
    return sums;
}

// What earlier returns brought back of a sale.
struct Returned {
    std::vector<SavedLine> lines;
    double discount = 0;  // of the whole invoice
};

// A return that names only a number counts for every sale of it.
Returned returned_of(Connection& connection, const OriginalSale& sale, std::int64_t customer) {
    Returned returned;
    for (const Row& header : connection.query(Sql("select * from sales where inv_o = ") + sale.number +
                                              " and (ctype = 2 or ctype = 3) and vcode = " + customer)) {
        const InvoiceIdentity back = identity_of(header);
        const auto linked = linked_sale(connection, back);
        if (linked && sale.identity && *linked != *sale.identity) continue;
        add_lines(returned.lines, line_rows(connection, back));
        returned.discount += header.number("pdis");
    }
    return returned;
}

std::vector<Row> sold_rows(Connection& connection, const OriginalSale& sale, std::int64_t customer) {
    if (!sale.identity) {
        return connection
            .query(Sql("select * from saledata where pnum = ") + sale.number +
                   " and (ctype = 0 or ctype = 1) and vcode = " + customer)
            .release();
    }
    // Goods paid for in cash do not come back onto an account, nor the other way round.
    if (sale.identity->key.vcode != customer) return {};
    return line_rows(connection, *sale.identity);
}

// The part of an invoice discount that falls on each line, in whole piastres; the largest line takes what
// rounding leaves.
std::vector<Amount> shares(const Invoice& sale, Amount discount) {
    const double whole = sale.total().value();
    std::vector<Amount> parts;
    Amount rest = discount;
    std::size_t largest = 0;
    for (const Line& line : sale.lines) {
        parts.emplace_back(whole > 0 ? discount.value() * line.total().value() / whole : 0);
        rest -= parts.back();
        if (line.total() > sale.lines[largest].total()) largest = parts.size() - 1;
    }
    if (!parts.empty()) parts[largest] += rest;
    return parts;
}

bool may_come_back(const Line& sold) {
    return !sold.item_code || sold.stock_kept;
}

// Returns true if a returned line was in the unit of a sold line, at its price and with its share of the
// discount.
bool is_part_of(const SavedLine& returned, const Line& sold) {
    const double share = sold.sold_discount * returned.base_quantity / sold.base_quantity();
    return returned.factor == sold.factor && is_same_price(returned.price, sold.price) &&
           std::abs(returned.discount - share) < two_roundings;
}

// What earlier returns took from each line, in base units. Goods count against the line they were sold on;
// those that fit none (a pack out of a carton, another price) count from the top.
std::vector<double> taken_from(const std::vector<Line>& sale, std::vector<SavedLine> returned) {
    std::vector<double> taken(sale.size());
    for (const bool to_its_line : {true, false}) {
        for (SavedLine& back : returned) {
            for (std::size_t at = 0; at < sale.size(); ++at) {
                const Line& sold = sale[at];
                if (article_of(sold) != back.article || (to_its_line && !is_part_of(back, sold))) continue;
                const double part = std::min(back.base_quantity, sold.base_quantity() - taken[at]);
                taken[at] += part;
                back.base_quantity -= part;
            }
        }
    }
    return taken;
}

// The discount percent of the goods left to return: with what earlier returns took, it adds up to the sale's
// discount on all goods that may come back.
double discount_left(const Invoice& sale, const Invoice& back, double returned) {
    const double rest = back.total().value();
    const double whole = sale.total().value();
    if (rest <= 0 || whole <= 0) return 0;
    Amount returnable;
    for (const Line& sold : sale.lines)
        if (may_come_back(sold)) returnable += sold.total();
    const Amount left(Amount(sale.discount().value() * returnable.value() / whole).value() - returned);
    return std::clamp(left.value() * 100 / rest, 0.0, 100.0);
}

}  // namespace

Invoice return_of(Connection& connection, const RecalledInvoice& recalled) {
    const Invoice& sale = recalled.invoice;
    Invoice back = sale;
    back.kind = KindOption::return_;
    if (back.payment != PaymentOption::account) back.payment = PaymentOption::cash;
    back.card = {};
    back.tips_receiver = 0;
    back.permit_opened = false;
    back.permit_number.clear();
    back.original = {sale.number, recalled.identity};
    back.lines.clear();

    const bool tips = sale.payment == PaymentOption::tips;
    const std::vector<Amount> tips_shares = shares(sale, tips ? sale.discount() : Amount());
    std::vector<Line> lines = sale.lines;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        lines[at].sold_quantity = lines[at].quantity;
        lines[at].sold_discount = lines[at].discount + tips_shares[at].value();
    }
    const Returned returned = returned_of(connection, *back.original, sale.customer);
    const std::vector<double> taken = taken_from(lines, returned.lines);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        Line& line = lines[at];
        const double rest = (line.base_quantity() - taken[at]) / line.factor;
        if (!may_come_back(line) || rest <= nothing_left) continue;
        line.returnable = rest;
        line.set_quantity(rest);
        line.source_kind = SourceKind::selling_store;
        back.lines.push_back(std::move(line));
    }
    back.discount_percent = tips ? 0 : discount_left(sale, back, returned.discount);
    back.grant_as_it_is();
    return back;
}

std::optional<std::string> line_beyond_sale(Connection& connection, const Invoice& invoice) {
    if (!invoice.is_return() || !invoice.original) return std::nullopt;
    std::vector<SavedLine> sale;
    add_lines(sale, sold_rows(connection, *invoice.original, invoice.customer));
    const Quantities sold = quantities_of(sale);
    Quantities used = quantities_of(returned_of(connection, *invoice.original, invoice.customer).lines);
    for (const Line& line : invoice.lines) {
        const auto found = sold.find(article_of(line));
        double& sum = used[article_of(line)];
        sum += line.base_quantity();
        if (found == sold.end() || !stock_suffices(found->second, sum)) return line.name;
    }
    return std::nullopt;
}

}  // namespace sales
