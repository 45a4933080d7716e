#include "sales/recall.h"

#include <algorithm>

#include "sales/items.h"
#include "sales/return_links.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

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
    // Other programs may have written codes here that are not unit levels.
    line.unit_cost = item.front().number(price_column(unit_level_of(line.unit_code), cost_level));
    return line;
}

RecalledInvoice load_invoice(Connection& connection, const Row& header, const Lists& lists) {
    RecalledInvoice recalled;
    recalled.shift = header.integer("Shift");
    recalled.identity = identity_of(header);

    Invoice& invoice = recalled.invoice;
    const InvoiceKey& key = recalled.identity.key;
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
    if (!header.null("inv_o"))
        invoice.original = {header.integer("inv_o"), linked_sale(connection, recalled.identity)};
    if (invoice.payment == PaymentOption::account)
        invoice.customer_name = account_name(connection, invoice.customer);
    if (!header.null("cust_c"))
        invoice.walk_in = accounts::find_walk_in(connection, header.integer("cust_c"));
    for (const Row& row : line_rows(connection, recalled.identity))
        invoice.lines.push_back(line_of(connection, row, lists));
    invoice.set_discount(header.number("pdis"));
    invoice.grant_as_it_is();
    return recalled;
}

}  // namespace

std::optional<RecalledInvoice> recall_newest(Connection& connection, std::int64_t number, Series series,
                                             std::int64_t store, const Lists& lists) {
    const auto headers = connection.query(Sql("select * from sales where pnum = ") + number + " and " +
                                          condition_of(series, store) + " order by date desc, time_ desc");
    if (headers.empty()) return std::nullopt;
    return load_invoice(connection, headers.front(), lists);
}

std::optional<RecalledInvoice> recall_printed(Connection& connection, const ReceiptCode& code,
                                              const Lists& lists) {
    const auto headers = connection.query(Sql("select * from sales where pnum = ") + code.number +
                                          " and date = " + quoted(code.moment.date) + " order by time_ desc");
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [&](const Row& row) { return is_code_of(code, identity_of(row)); });
    if (found == headers.end()) return std::nullopt;
    return load_invoice(connection, *found, lists);
}

std::optional<RecalledInvoice> recall_invoice(Connection& connection, const ReceiptRow& receipt,
                                              const Lists& lists) {
    const auto headers =
        connection.query(Sql("select * from sales") + where(receipt.identity.key) + " order by time_ desc");
    if (headers.empty()) return std::nullopt;
    const auto wanted = std::find_if(headers.begin(), headers.end(),
                                     [&](const Row& row) { return identity_of(row) == receipt.identity; });
    return load_invoice(connection, wanted == headers.end() ? headers.front() : *wanted, lists);
}

std::vector<Row> line_rows(Connection& connection, const InvoiceIdentity& invoice) {
    std::vector<Row> rows =
        connection.query(Sql("select * from saledata") + where(invoice.key) + " order by serial").release();
    // Lines carry the time of their save, unless another program left it empty or took it line by line.
    const auto is_foreign = [&](const Row& row) { return row.moment("time_").time != invoice.time; };
    const auto foreign = std::count_if(rows.begin(), rows.end(), is_foreign);
    if (foreign == 0 || foreign == static_cast<std::ptrdiff_t>(rows.size())) return rows;
    const auto headers = connection.scalar(Sql("select count(*) from sales") + where(invoice.key));
    if (database::integer_of(headers) > 1)
        rows.erase(std::remove_if(rows.begin(), rows.end(), is_foreign), rows.end());
    return rows;
}

std::vector<ReceiptRow> receipts_of_day(Connection& connection, std::int64_t store, std::int64_t cash_point,
                                        const common::Date& day) {
    std::vector<ReceiptRow> rows;
    for (const Row& row : connection.query(Sql("select * from sales where ptype = ") + cash_point +
                                           " and date = " + quoted(day) + " and stcode = " + store +
                                           " order by time_ desc, pnum desc")) {
        rows.push_back({identity_of(row), payment_of(row.integer("vcode"), row.integer("stype")),
                        common::Amount(row.number("ptot") - row.number("pdis"))});
    }
    return rows;
}

}  // namespace sales
