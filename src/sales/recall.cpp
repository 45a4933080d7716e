#include "sales/recall.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "sales/items.h"
#include "sales/stock_check.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

// A rest of a returned quantity below this is a rounding error, not goods.
constexpr double nothing_left = 1e-6;

// An article of an invoice: an item, or a general item by its typed name.
using Article = std::pair<std::int64_t, std::string>;

Article article_of(const Line& line) {
    return line.item_code ? Article{*line.item_code, ""} : Article{0, line.name};
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
    // Other programs may have written other codes here than unit levels.
    const int unit_level = line.unit_code <= 3 ? line.unit_code : 1;
    line.unit_cost = item.front().number(price_column(unit_level, cost_level));
    return line;
}

// The base quantities of the articles in rows of `saledata`.
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

std::vector<Line> lines_of(Connection& connection, const RecalledInvoice& recalled, bool number_is_shared,
                           const Lists& lists) {
    const auto rows = connection.query(Sql("select * from saledata") + where(key_of(recalled.invoice)) +
                                       " order by serial");
    // Lines carry the time of their save, which tells two invoices of one number apart, unless another
    // program left it empty.
    const auto is_own = [&](const Row& row) { return row.moment("time_").time == recalled.saved_at.time; };
    const bool by_time = number_is_shared && std::any_of(rows.begin(), rows.end(), is_own);
    std::vector<Line> lines;
    for (const Row& row : rows)
        if (!by_time || is_own(row)) lines.push_back(line_of(connection, row, lists));
    return lines;
}

// The invoice of a header, whose number other headers may share.
RecalledInvoice load_invoice(Connection& connection, const Row& header, bool number_is_shared,
                             const Lists& lists) {
    RecalledInvoice recalled;
    recalled.shift = header.integer("Shift");
    recalled.saved_at = {header.moment("Date").date, header.moment("time_").time};

    Invoice& invoice = recalled.invoice;
    const InvoiceKey key = key_of(header);
    invoice.number = key.number;
    invoice.kind = kind_of(key.ctype);
    invoice.payment = payment_of(key.vcode, header.integer("stype"));
    invoice.customer = key.vcode;
    invoice.date = key.date;
    invoice.store = key.store;
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
        invoice.customer_name = account_name(connection, invoice.customer);
    if (!header.null("cust_c"))
        invoice.walk_in = accounts::find_walk_in(connection, header.integer("cust_c"));
    invoice.lines = lines_of(connection, recalled, number_is_shared, lists);
    invoice.set_discount(header.number("pdis"));
    return recalled;
}

}  // namespace

std::optional<RecalledInvoice> recall_newest(Connection& connection, std::int64_t number, Series series,
                                             std::int64_t store, const Lists& lists) {
    Sql statement = Sql("select * from sales where pnum = ") + number;
    switch (series) {
        case Series::returns:
            statement = statement + " and (ctype = 2 or ctype = 3) and stcode = " + store;
            break;
        case Series::account_sales:
            statement += " and (ctype = 0 or ctype = 1) and vcode <> -1";
            break;
        case Series::cash_sales:
            statement += " and (ctype = 0 or ctype = 1) and vcode = -1";
            break;
    }
    const auto headers = connection.query(statement + " order by date desc, time_ desc");
    if (headers.empty()) return std::nullopt;
    return load_invoice(connection, headers.front(), headers.size() > 1, lists);
}

std::optional<RecalledInvoice> recall_invoice(Connection& connection, const ReceiptRow& receipt,
                                              const Lists& lists) {
    const auto headers =
        connection.query(Sql("select * from sales") + where(receipt.key) + " order by time_ desc");
    if (headers.empty()) return std::nullopt;
    const auto wanted = std::find_if(headers.begin(), headers.end(), [&](const Row& row) {
        return row.moment("time_").time == receipt.time;
    });
    const Row& header = wanted == headers.end() ? headers.front() : *wanted;
    return load_invoice(connection, header, headers.size() > 1, lists);
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
        if (found == sold.end() || !stock_suffices(found->second, sum)) return line.name;
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
        const InvoiceKey key = key_of(row);
        rows.push_back({key, row.moment("time_").time, payment_of(key.vcode, row.integer("stype")),
                        common::Amount(row.number("ptot") - row.number("pdis"))});
    }
    return rows;
}

}  // namespace sales
