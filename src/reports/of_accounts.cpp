// Reports of suppliers, of the ages of debts, of stock and cash, and of closed days.
#include <map>

#include "accounts/vendor_account.h"
#include "database/choices.h"
#include "reports/ageing.h"
#include "reports/frozen_day.h"
#include "reports/labels.h"
#include "reports/line_sums.h"
#include "reports/live_cash.h"
#include "reports/makers.h"
#include "reports/sales_sums.h"

namespace reports {

using database::Connection;
using database::Row;
using database::Sql;

Table table_of_suppliers(Connection& connection, const Request& request) {
    Table table;
    table.label_heading = "المورد";
    // documents of goods in, their totals, discounts, taxes, what went back to the supplier, net
    table.columns = {
        {"عدد الفواتير", Format::count}, {"الوارد"}, {"الخصم"}, {"الضريبة"}, {"المرتجع"}, {"الصافي"}};
    table.charted = 5;
    for (const Row& row : connection.query(
             Sql("select purchase.vcode, max(vendata.vname) as vname, sum(case when purchase.ctype = 1 then "
                 "1 "
                 "else 0 end) as n, sum(case when purchase.ctype = 1 then isnull(ptot,0) else 0 end) as "
                 "supplied, sum(case when purchase.ctype = 1 then isnull(pdis,0) else 0 end) as discount, "
                 "sum(case when purchase.ctype = 1 then isnull(ptax,0) else 0 end) as tax, "
                 "sum(case when purchase.ctype = 3 then ") +
             accounts::net_of_purchase +
             " else 0 end) as back from purchase left outer join vendata on purchase.vcode = vendata.vcode "
             "where " +
             in_period("purchase.[date]", "purchase.stcode", request.period) +
             " and (purchase.ctype = 1 or purchase.ctype = 3) group by purchase.vcode")) {
        const double net =
            row.number("supplied") - row.number("discount") + row.number("tax") - row.number("back");
        table.rows.push_back({row.integer("vcode"),
                              row.text("vname").empty() ? row.text("vcode") : row.text("vname"),
                              {row.number("n"), row.number("supplied"), row.number("discount"),
                               row.number("tax"), row.number("back"), net}});
    }
    table.sort_by_figure();
    table.add_up();
    return table;
}

Table table_of_ages(Connection& connection, const Request& request) {
    const bool is_vendor = request.kind == KindId::ages_of_suppliers;
    Table table;
    table.label_heading = is_vendor ? "المورد" : "العميل";
    // balance, up to 30 days, 31 to 60, 61 to 90, older
    table.columns = {
        {"الرصيد"}, {"حتى 30 يوما"}, {"31 إلى 60 يوما"}, {"61 إلى 90 يوما"}, {"أكثر من 90 يوما"}};
    for (const AgedParty& party :
         aged_parties(connection, is_vendor ? accounts::PartyKind::vendor : accounts::PartyKind::customer,
                      request.now.date)) {
        std::vector<double> figures = {party.balance};
        figures.insert(figures.end(), party.by_age.begin(), party.by_age.end());
        table.rows.push_back({party.code, party.name, std::move(figures)});
    }
    table.sort_by_figure();
    table.add_up();
    return table;
}

Table table_of_stock(Connection& connection, const Request& request) {
    const bool is_by_store = request.kind == KindId::stock_by_store;
    Table table;
    table.label_heading = is_by_store ? "المخزن" : "المجموعة";
    // items in stock, base units, value at retail; value at cost
    table.columns = {{"عدد الأصناف", Format::count}, {"الكمية", Format::quantity}, {"بسعر القطاعي"}};
    table.charted = 2;
    if (request.shows_cost) {
        table.columns.push_back({"بالتكلفة"});
        table.charted = 3;
    }
    const database::Fragment key =
        is_by_store ? database::Fragment("stk.stcode") : database::Fragment("isnull(items.itype,0)");
    Sql statement = Sql("select k, count(distinct icode) as n, sum(quan) as quantity, sum(quan * retail) as "
                        "retail, sum(quan * cost) as cost from (select ") +
                    key +
                    " as k, stk.icode, stk.quan, isnull(items.price12,0) as retail, isnull(items.price11,0) "
                    "as cost from stk inner join items on stk.icode = items.code where stk.quan <> 0";
    if (request.period.store != 0) statement += Sql(" and stk.stcode = ") + request.period.store;
    statement += ") as counted group by k";
    std::map<std::int64_t, std::string> names;
    if (is_by_store)
        for (const common::Choice& store : database::load_stores(connection))
            names.emplace(store.code, store.name);
    else
        names = read_group_names(connection);
    for (const Row& row : connection.query(statement)) {
        std::vector<double> figures = {row.number("n"), row.number("quantity"), row.number("retail")};
        if (request.shows_cost) figures.push_back(row.number("cost"));
        table.rows.push_back({row.integer("k"),
                              name_or_code(names, row.integer("k"), is_by_store ? "غير محدد" : "بدون مجموعة"),
                              std::move(figures)});
    }
    table.sort_by_figure();
    table.add_up();
    return table;
}

Table table_of_cash(Connection& connection, const Request& request) {
    Table table;
    table.label_heading = "الخزينة";
    // cash by the books, paid by card today, not collected today
    table.columns = {{"النقدية الآن"}, {"بالبطاقات اليوم"}, {"تليفون لم يحصل"}};
    for (const DrawerCash& drawer : cash_of_drawers(connection, request.period.store, request.now))
        table.rows.push_back(row_of(drawer));
    table.add_up();
    return table;
}

Table table_of_closed_days(Connection& connection, const Request& request) {
    Table table;
    table.label_heading = "اليوم";
    // net when it was closed, net now, rows that have changed, closed by
    table.columns = {{"الصافي عند الإقفال"},
                     {"الصافي الآن"},
                     {"تغير بعد الإقفال", Format::count},
                     {"أقفله", Format::text}};
    table.is_in_time = true;
    const auto stores = database::load_stores(connection);
    for (const ClosedDay& closed :
         closed_days(connection, request.period.store, request.period.first, request.period.last)) {
        const auto changes = changed_since_closing(connection, closed.store, closed.day);
        const double now = sales_of(connection, {closed.day, closed.day, closed.store}).net();
        table.rows.push_back({key_in_store(closed.store, common::days_from_epoch(closed.day)),
                              day_label(closed.day) + " · " + common::name_of(stores, closed.store),
                              {closed.net.value(), now, static_cast<double>(changes.size())},
                              closed.user});
    }
    table.add_up();
    return table;
}

}  // namespace reports
