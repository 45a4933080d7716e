#include "sales/recall.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "sales/item_lookup.h"
#include "sales/pricing.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

// Below this a rest of a returned quantity is rounding, not goods.
constexpr double nothing_left = 1e-6;

// What tells one article of an invoice from another: the item, or the typed name of a general item.
using Article = std::pair<std::int64_t, std::string>;

Article article_of(const Line& line) {
    return line.item_code ? Article{*line.item_code, ""} : Article{0, line.name};
}

KindOption kind_of(std::int64_t ctype) {
    if (ctype == 2) return KindOption::return_;
    if (ctype == 3) return KindOption::third;
    return KindOption::sale;
}

PaymentOption payment_of(const Row& header) {
    if (header.integer("vcode") != walk_in_customer) return PaymentOption::account;
    switch (header.integer("stype")) {
        case 1:
            return PaymentOption::card;
        case 2:
            return PaymentOption::tips;
        default:
            return PaymentOption::cash;
    }
}

Line line_of(Connection& connection, const Row& row, const Lists& lists) {
    Line line;
    line.name = row.text("note");
    line.quantity = row.number("quan");
    line.price = row.number("price");
    line.discount = row.number("disc");
    line.factor = row.null("unit1") || row.number("unit1") == 0 ? 1 : row.number("unit1");
    line.unit_code = static_cast<int>(std::max<std::int64_t>(1, row.integer("scode")));
    line.unit_name = unit_name(line.unit_code);
    line.salver_code = row.integer("salvcode");
    if (!row.null("edate")) line.expiry = row.moment("edate").date;
    if (row.null("icode")) return line;

    line.item_code = row.integer("icode");
    const auto item = connection.query(Sql("select * from items where code = ") + *line.item_code);
    if (item.empty()) return line;  // deleted since: shown as it was sold, without stock
    line.group = group_name(lists, item.front().integer("itype"));
    line.stock_kept = item.front().integer("sale_only") == 0;
    // Other programs may have written codes here that are no unit level.
    const int unit_level = line.unit_code <= 3 ? line.unit_code : 1;
    line.unit_cost = item.front().number(price_column(unit_level, cost_level));
    return line;
}

// The conditions that find an invoice's rows in sales and saledata.
Sql& add_key(Sql& statement, const Invoice& invoice) {
    statement = statement + " where pnum = " + invoice.number + " and ctype = " + ctype_of(invoice.kind) +
                " and vcode = " + invoice.customer + " and stcode = " + invoice.store +
                " and date = " + quoted(invoice.date);
    return statement;
}

// Base quantities of the articles in lines, as the given query returns them.
std::map<Article, double> quantities(const database::Result& rows) {
    std::map<Article, double> sums;
    for (const Row& row : rows) {
        const Article article =
            row.null("icode") ? Article{0, row.text("note")} : Article{row.integer("icode"), ""};
        sums[article] += row.number("quan1");
    }
    return sums;
}

std::map<Article, double> returned_of(Connection& connection, std::int64_t sale_number,
                                      std::int64_t customer) {
    return quantities(connection.query(
        Sql("select saledata.icode, saledata.note, saledata.quan1 from sales inner join saledata on "
            "sales.pnum = saledata.pnum and sales.ctype = saledata.ctype and sales.stcode = saledata.stcode "
            "and sales.vcode = saledata.vcode where sales.inv_o = ") +
        sale_number + " and (sales.ctype = 2 or sales.ctype = 3) and sales.vcode = " + customer));
}

}  // namespace

std::optional<RecalledInvoice> recall_invoice(Connection& connection, std::int64_t number, KindOption kind,
                                              PaymentOption payment, std::int64_t store, const Lists& lists,
                                              const std::optional<common::TimeOfDay>& saved_at) {
    Sql statement = Sql("select * from sales where pnum = ") + number;
    if (kind != KindOption::sale)
        statement = statement + " and (ctype = 2 or ctype = 3) and stcode = " + store;
    else if (payment == PaymentOption::account)
        statement += " and (ctype = 0 or ctype = 1) and vcode <> -1";
    else
        statement += " and (ctype = 0 or ctype = 1) and vcode = -1";
    statement += " order by date desc, time_ desc";

    const auto headers = connection.query(statement);
    if (headers.empty()) return std::nullopt;
    const auto wanted = std::find_if(headers.begin(), headers.end(), [&](const Row& row) {
        return saved_at && row.moment("time_").time == *saved_at;
    });
    const Row& header = wanted == headers.end() ? headers.front() : *wanted;

    RecalledInvoice recalled;
    recalled.shift = header.integer("Shift");
    recalled.cash_point = header.integer("ptype");
    recalled.user_code = header.integer("User");
    recalled.saved_at = {header.moment("Date").date, header.moment("time_").time};

    Invoice& invoice = recalled.invoice;
    invoice.number = number;
    invoice.kind = kind_of(header.integer("ctype"));
    invoice.payment = payment_of(header);
    invoice.customer = header.integer("vcode");
    invoice.date = header.moment("Date").date;
    invoice.store = header.integer("stcode");
    invoice.worker = header.integer("wCode");
    invoice.worker_name = database::text_of(
        connection.scalar(Sql("select work_name from worker where work_code = ") + invoice.worker));
    invoice.tips_receiver = invoice.payment == PaymentOption::tips ? header.integer("link") : 0;
    invoice.card = {header.integer("bcode"), header.text("credit_name"), header.text("ref_no")};
    invoice.permit_number = header.text("perm_no");
    invoice.permit_opened = !invoice.permit_number.empty();
    invoice.note = header.text("note");
    if (!header.null("inv_o")) invoice.original_number = header.integer("inv_o");
    if (invoice.payment == PaymentOption::account)
        invoice.customer_name = database::text_of(
            connection.scalar(Sql("select cname from custdata where ccode = ") + invoice.customer));
    if (!header.null("cust_c")) {
        const auto found =
            connection.query(Sql("select * from cust_cash where zcode = ") + header.integer("cust_c"));
        if (!found.empty())
            invoice.walk_in = WalkInCustomer{header.integer("cust_c"), false, found.front().text("zname"),
                                             found.front().text("zphone"), found.front().text("zmail")};
    }

    Sql lines("select * from saledata");
    const auto rows = connection.query(add_key(lines, invoice) + " order by serial");
    // Lines carry the time of their save, which tells two invoices of one number apart; other programs may
    // have left it empty.
    const auto is_own = [&](const Row& row) { return row.moment("time_").time == recalled.saved_at.time; };
    const bool shared = headers.size() > 1 && std::any_of(rows.begin(), rows.end(), is_own);
    for (const Row& row : rows)
        if (!shared || is_own(row)) invoice.lines.push_back(line_of(connection, row, lists));
    const double total = invoice.total();
    invoice.discount_percent = total == 0 ? 0 : header.number("pdis") * 100 / total;
    return recalled;
}

Invoice return_of(Connection& connection, const RecalledInvoice& sale) {
    Invoice back = sale.invoice;
    back.kind = KindOption::return_;
    if (back.payment != PaymentOption::account) back.payment = PaymentOption::cash;
    back.card = {};
    back.tips_receiver = 0;
    back.permit_opened = false;
    back.permit_number.clear();
    back.original_number = sale.invoice.number;
    back.lines.clear();

    auto returned = returned_of(connection, sale.invoice.number, sale.invoice.customer);
    for (const Line& sold : sale.invoice.lines) {
        if (sold.item_code && !sold.stock_kept) continue;
        // Earlier returns are charged to the sale's lines from the top.
        double& charged = returned[article_of(sold)];
        const double taken = std::min(charged, sold.base_quantity());
        charged -= taken;
        const double rest = (sold.base_quantity() - taken) / sold.factor;
        if (rest <= nothing_left) continue;
        Line line = sold;
        line.discount = sold.quantity == 0 ? 0 : sold.discount * rest / sold.quantity;
        line.quantity = rest;
        line.returnable = rest;
        line.source_kind = SourceKind::selling_store;
        back.lines.push_back(std::move(line));
    }
    return back;
}

std::optional<std::string> line_beyond_sale(Connection& connection, const Invoice& invoice) {
    if (!invoice.is_return() || !invoice.original_number) return std::nullopt;
    const std::int64_t customer = invoice.customer;
    const auto sold = quantities(
        connection.query(Sql("select icode, note, quan1 from saledata where pnum = ") +
                         *invoice.original_number + " and (ctype = 0 or ctype = 1) and vcode = " + customer));
    auto used = returned_of(connection, *invoice.original_number, customer);
    for (const Line& line : invoice.lines) {
        const auto found = sold.find(article_of(line));
        double& sum = used[article_of(line)];
        sum += line.base_quantity();
        if (found == sold.end() || sum > found->second + nothing_left) return line.name;
    }
    return std::nullopt;
}

std::vector<ReceiptRow> receipts_of_day(Connection& connection, std::int64_t store, std::int64_t cash_point,
                                        const common::Date& day, std::size_t limit) {
    std::vector<ReceiptRow> rows;
    for (const Row& row : connection.query(Sql("select * from sales where ptype = ") + cash_point +
                                           " and date = " + quoted(day) + " and stcode = " + store +
                                           " order by time_ desc, pnum desc")) {
        if (rows.size() == limit) break;
        rows.push_back({row.integer("pnum"), kind_of(row.integer("ctype")), payment_of(row),
                        row.integer("stcode"), row.moment("time_").time,
                        row.number("ptot") - row.number("pdis")});
    }
    return rows;
}

}  // namespace sales
