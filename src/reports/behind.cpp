#include "reports/behind.h"

#include <map>

#include "accounts/vendor_account.h"
#include "cash/figures.h"
#include "common/numbers.h"
#include "reports/ageing.h"
#include "reports/frozen_day.h"
#include "reports/line_sums.h"
#include "reports/sales_sums.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "sales/recall.h"

namespace reports {

using common::Amount;
using database::Connection;
using database::Row;
using database::Sql;

namespace {

std::string time_cell(const Row& row) {
    return row.null("time_") ? std::string() : common::time_text(row.moment("time_").time).substr(0, 5);
}

std::string document_kind(std::int64_t ctype, std::int64_t vcode, std::int64_t stype) {
    const bool is_sale = ctype == 0 || ctype == 1;
    return std::string(is_sale ? "بيع " : "مرتجع ") +
           std::string(sales::payment_caption(sales::payment_of(vcode, stype)));
}

std::map<std::int64_t, std::string> user_names(Connection& connection) {
    std::map<std::int64_t, std::string> names;
    for (const Row& row : connection.query("select code, [name] from users"))
        names.emplace(row.integer("code"), row.text("name"));
    return names;
}

// Drops the rows beyond `most_rows`.
void cut(Behind& behind) {
    behind.is_cut = behind.rows.size() > Behind::most_rows;
    if (behind.is_cut) behind.rows.resize(Behind::most_rows);
}

std::string sum_text(double net) {
    return "الصافي " + Amount(net).text();
}

Behind invoices(Connection& connection, const Sql& condition, const SalesSums& sums) {
    Behind behind;
    behind.headings = {"التاريخ", "الوقت", "البون", "النوع", "الكاشير", "الإجمالي", "الخصم", "الصافي"};
    behind.figures = {0, 1, 2, 5, 6, 7};
    behind.name_column = 4;
    const auto users = user_names(connection);
    for (const Row& row : connection.query(
             Sql("select top ") + (Behind::most_rows + 1) +
             " pnum, ctype, vcode, stcode, [date], time_, stype, ptot, pdis, [user] from sales where " +
             condition + " and (" + sales::counts_as_sale + " or " + sales::counts_as_return +
             ") order by [date] desc, time_ desc, pnum desc")) {
        const auto identity = sales::identity_of(row);
        const double sign = identity.key.is_sale() ? 1 : -1;
        const auto user = users.find(row.integer("user"));
        behind.rows.push_back(
            {{common::date_text(identity.key.date), time_cell(row), row.text("pnum"),
              document_kind(identity.key.ctype, identity.key.vcode, row.integer("stype")),
              user == users.end() ? row.text("user") : user->second, Amount(sign * row.number("ptot")).text(),
              Amount(sign * row.number("pdis")).text(),
              Amount(sign * (row.number("ptot") - row.number("pdis"))).text()},
             DocumentKey{false, identity}});
    }
    behind.sum = sum_text(sums.net());
    cut(behind);
    return behind;
}

Behind invoices_of(Connection& connection, SalesKey key, const Request& request, std::int64_t value) {
    SalesByKey sums;
    // The same sums again for this key; their net is the figure.
    Period period = request.period;
    if (key == SalesKey::day) period.first = period.last = common::date_from_epoch(static_cast<long>(value));
    for (const Period& part : quarters_of(period))
        add_sales(connection, key, part, sums);
    return invoices(connection, condition_of(key, value, request.period), sums[value]);
}

Behind lines(Connection& connection, const Period& period, const Sql& condition, const Sql& joined) {
    Behind behind;
    behind.headings = {"التاريخ", "البون", "النوع", "الصنف", "الكمية", "الوحدة", "السعر", "الخصم", "القيمة"};
    behind.figures = {0, 1, 4, 6, 7, 8};
    behind.name_column = 3;
    for (const Row& row : connection.query(
             Sql("select top ") + (Behind::most_rows + 1) +
             " saledata.pnum, saledata.ctype, saledata.vcode, saledata.stcode, saledata.[date], "
             "saledata.time_, saledata.stype, saledata.note, saledata.quan, saledata.price, saledata.disc, "
             "saledata.scode from saledata" +
             joined + " where " + in_period("saledata.[date]", "saledata.stcode", period) + condition +
             " order by saledata.[date] desc, saledata.time_ desc, saledata.pnum desc, saledata.serial")) {
        const auto identity = sales::identity_of(row);
        const double sign = identity.key.is_sale() ? 1 : -1;
        behind.rows.push_back(
            {{common::date_text(identity.key.date), row.text("pnum"),
              document_kind(identity.key.ctype, identity.key.vcode, row.integer("stype")), row.text("note"),
              common::format_quantity(sign * row.number("quan")),
              std::string(sales::unit_name(sales::unit_level_of(row.integer("scode")))),
              common::format_amount(row.number("price")), Amount(sign * row.number("disc")).text(),
              Amount(sign * (row.number("quan") * row.number("price") - row.number("disc"))).text()},
             DocumentKey{false, identity}});
    }
    cut(behind);
    return behind;
}

// The lines of an item or group. The report's row shows the net, after the discounts on whole receipts.
Behind lines_of_items(Connection& connection, const Request& request, const TableRow& row) {
    Sql joined("");
    Sql condition("");
    if (request.kind == KindId::sales_by_group || request.kind == KindId::profit_by_group) {
        joined = Sql(" left outer join items on saledata.icode = items.code");
        condition = Sql(" and isnull(items.itype,0) = ") + row.key;
    } else if (row.key == general_item) {
        condition = Sql(" and saledata.icode is null");
    } else {
        condition = Sql(" and saledata.icode = ") + row.key;
    }
    return lines(connection, request.period, condition, joined);
}

Behind supplies(Connection& connection, const Request& request, std::int64_t vendor) {
    Behind behind;
    behind.headings = {"التاريخ", "الرقم", "النوع", "الإجمالي", "الخصم", "الضريبة", "الصافي"};
    behind.figures = {0, 1, 3, 4, 5, 6};
    behind.name_column = 2;
    double net = 0;
    for (const Row& row : connection.query(
             Sql("select pnum, ctype, vcode, stcode, [date], ptot, pdis, ptax, ") +
             accounts::net_of_purchase + " as net from purchase where vcode = " + vendor +
             " and (ctype = 1 or ctype = 3) and " + in_period("[date]", "stcode", request.period) +
             " order by [date] desc, pnum desc")) {
        const double sign = row.integer("ctype") == 1 ? 1 : -1;
        const double value = sign * row.number("net");
        behind.rows.push_back(
            {{common::date_text(row.moment("date").date), row.text("pnum"),
              sign > 0 ? "بضاعة واردة" : "مرتجع للمورد", Amount(sign * row.number("ptot")).text(),
              Amount(sign * row.number("pdis")).text(), Amount(sign * row.number("ptax")).text(),
              Amount(value).text()},
             DocumentKey{true, {sales::key_of(row), {}}}});
        net += value;
    }
    behind.sum = sum_text(net);
    return behind;
}

Behind debts(Connection& connection, const Request& request, std::int64_t party) {
    Behind behind;
    behind.headings = {"التاريخ", "المستند", "الرقم", "القيمة", "الباقي", "العمر بالأيام"};
    behind.figures = {0, 2, 3, 4, 5};
    behind.name_column = 1;
    const auto kind = request.kind == KindId::ages_of_suppliers ? accounts::PartyKind::vendor
                                                                : accounts::PartyKind::customer;
    double open = 0;
    for (const OpenDebt& debt : open_debts(connection, kind, party, request.now.date)) {
        const bool is_dated = !debt.number.empty();
        behind.rows.push_back({{is_dated ? common::date_text(debt.date) : std::string(), debt.document,
                                debt.number, Amount(debt.amount).text(), Amount(debt.open).text(),
                                is_dated ? std::to_string(debt.age) : std::string()}});
        open += debt.open;
    }
    behind.sum = "الباقي " + Amount(open).text();  // what is left
    return behind;
}

Behind goods_in_stock(Connection& connection, const Request& request, std::int64_t key) {
    Behind behind;
    behind.headings = {"الكود", "الصنف", "الكمية", "سعر القطاعي", "القيمة بسعر القطاعي"};
    behind.figures = {0, 2, 3, 4};
    behind.name_column = 1;
    if (request.shows_cost) {
        behind.headings.insert(behind.headings.end(), {"التكلفة", "القيمة بالتكلفة"});
        behind.figures.insert(behind.figures.end(), {5, 6});
    }
    Sql condition(" where stk.quan <> 0 and ");
    if (request.kind == KindId::stock_by_store)
        condition += Sql("stk.stcode = ") + key;
    else
        condition += Sql("isnull(items.itype,0) = ") + key;
    if (request.period.store != 0) condition += Sql(" and stk.stcode = ") + request.period.store;
    double sum = 0;
    for (const Row& row : connection.query(
             Sql("select stk.icode, max(items.[name]) as [name], sum(stk.quan) as quantity, "
                 "max(isnull(items.price12,0)) as price, max(isnull(items.price11,0)) as cost from stk inner "
                 "join items on stk.icode = items.code") +
             condition + " group by stk.icode order by stk.icode")) {
        const double quantity = row.number("quantity");
        const double retail = quantity * row.number("price");
        const double value = request.shows_cost ? quantity * row.number("cost") : retail;
        sum += value;
        std::vector<std::string> cells = {row.text("icode"), row.text("name"),
                                          common::format_quantity(quantity),
                                          Amount(row.number("price")).text(), Amount(retail).text()};
        if (request.shows_cost)
            cells.insert(cells.end(), {common::format_amount(row.number("cost")), Amount(value).text()});
        if (behind.rows.size() <= static_cast<std::size_t>(Behind::most_rows))
            behind.rows.push_back({std::move(cells)});
    }
    behind.sum = (request.shows_cost ? "بالتكلفة " : "بسعر القطاعي ") + Amount(sum).text();
    cut(behind);
    return behind;
}

Behind cash_movements(Connection& connection, const Request& request, std::int64_t key) {
    Behind behind;
    behind.headings = {"البيان", "الرقم", "الوقت", "الطرف", "القيمة"};
    behind.figures = {1, 2, 4};
    behind.name_column = 3;
    const cash::FigureRows found = cash::rows_behind(connection, {store_of(key), in_store(key)},
                                                     request.now.date, cash::Figure::current_balance);
    for (const cash::FigureRow& row : found.rows)
        behind.rows.push_back({{row.kind, row.number, row.moment, row.party, Amount(row.amount).text()}});
    behind.sum = "الرصيد " + found.sum.text();  // the balance
    return behind;
}

std::string caption_of(RowChange change) {
    switch (change) {
        case RowChange::added:
            return "أضيف بعد الإقفال";  // written later
        case RowChange::removed:
            return "حذف بعد الإقفال";  // removed later
        case RowChange::altered:
            break;
    }
    return "تغير بعد الإقفال";  // changed since closing
}

// First the figures, then the rows that have changed.
Behind changes(Connection& connection, std::int64_t key) {
    Behind behind;
    behind.headings = {"البيان", "الرقم", "التغير", "عند الإقفال", "الآن"};
    behind.figures = {1};
    behind.name_column = 3;
    const std::int64_t store = store_of(key);
    const common::Date day = common::date_from_epoch(static_cast<long>(in_store(key)));
    const auto closed = find_closed_day(connection, store, day);
    if (!closed) return behind;
    std::map<std::string, std::string> now;
    for (DayFigure& figure : day_figures(connection, store, day))
        now.emplace(std::move(figure.name), std::move(figure.value));
    behind.rows.push_back(
        {{"وقت الإقفال", "", "", common::moment_text(closed->closed) + " · " + closed->user, ""}});
    for (const DayFigure& figure : closed->figures) {
        const std::string value = now[figure.name];
        behind.rows.push_back({{figure.name, "", value == figure.value ? "" : caption_of(RowChange::altered),
                                figure.value, value}});
    }
    const auto rows = changed_since_closing(connection, store, day);
    for (const ChangedRow& row : rows)
        behind.rows.push_back({{row.kind, row.number, caption_of(row.change), row.before, row.now}});
    behind.sum = "سجلات تغيرت بعد الإقفال " + std::to_string(rows.size());
    cut(behind);
    return behind;
}

Behind find_rows(Connection& connection, const Request& request, const TableRow& row) {
    switch (request.kind) {
        case KindId::sales_by_day:
        case KindId::profit_by_day:
            return invoices_of(connection, SalesKey::day, request, row.key);
        case KindId::sales_by_month:
            return invoices_of(connection, SalesKey::month, request, row.key);
        case KindId::sales_by_hour:
            return invoices_of(connection, SalesKey::hour, request, row.key);
        case KindId::sales_by_cashier:
        case KindId::discounts_and_returns:
            return invoices_of(connection, SalesKey::cashier, request, row.key);
        case KindId::sales_by_store:
            return invoices_of(connection, SalesKey::store, request, row.key);
        case KindId::sales_by_payment:
            return invoices_of(connection, SalesKey::payment, request, row.key);
        case KindId::sales_by_item:
        case KindId::sales_by_group:
        case KindId::profit_by_item:
        case KindId::profit_by_group:
            return lines_of_items(connection, request, row);
        case KindId::suppliers:
            return supplies(connection, request, row.key);
        case KindId::ages_of_customers:
        case KindId::ages_of_suppliers:
            return debts(connection, request, row.key);
        case KindId::stock_by_group:
        case KindId::stock_by_store:
            return goods_in_stock(connection, request, row.key);
        case KindId::cash:
            return cash_movements(connection, request, row.key);
        case KindId::closed_days:
            break;
    }
    return changes(connection, row.key);
}

}  // namespace

Behind rows_behind(Connection& connection, const Request& request, const TableRow& row) {
    Behind behind = find_rows(connection, request, row);
    behind.title = std::string(kind_of(request.kind).caption) + " · " + row.label;
    return behind;
}

Behind lines_of(Connection& connection, const DocumentKey& document) {
    Behind behind;
    behind.headings = {"الكود", "الصنف", "الكمية", "الوحدة", "السعر", "الخصم", "القيمة"};
    behind.figures = {0, 2, 4, 5, 6};
    behind.name_column = 1;
    const auto& key = document.identity.key;
    std::vector<Row> rows =
        document.is_purchase
            ? connection
                  .query(Sql("select purdata.*, items.[name] as item_name from purdata left outer join "
                             "items on purdata.icode = items.code where purdata.pnum = ") +
                         key.number + " and purdata.ctype = " + key.ctype +
                         " and purdata.vcode = " + key.vcode + " and purdata.stcode = " + key.store +
                         " and purdata.[date] = " + database::quoted(key.date) + " order by serial")
                  .release()
            : sales::line_rows(connection, document.identity);
    Amount total;
    for (const Row& row : rows) {
        const Amount value(row.number("quan") * row.number("price") - row.number("disc"));
        total += value;
        behind.rows.push_back(
            {{row.text("icode"), row.text(document.is_purchase ? "item_name" : "note"),
              common::format_quantity(row.number("quan")),
              std::string(sales::unit_name(sales::unit_level_of(row.integer("scode")))),
              common::format_amount(row.number("price")), Amount(row.number("disc")).text(), value.text()}});
    }
    behind.title = (document.is_purchase ? "فاتورة مورد رقم " : "بون رقم ") + std::to_string(key.number) +
                   " · " + common::date_text(key.date);
    behind.sum = "الإجمالي " + total.text();
    return behind;
}

}  // namespace reports
