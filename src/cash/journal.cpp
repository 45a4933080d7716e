#include "cash/journal.h"

#include "cash/parties.h"
#include "common/numbers.h"

namespace cash {

using database::quoted;
using database::Sql;

const std::array<std::string_view, 5> journal_filters{"الكل", "مبيعات نقدية", "مبيعات آجلة", "مرتجعات نقدية",
                                                      "مرتجعات آجلة"};
// Number, kind, value, salesman, customer/vendor, time, date, notes, user.
const std::array<std::string_view, 9> journal_headings{
    "رقم", "النوع", "القيمة", "البائع", "العميل/المورد", "الوقت", "التاريخ", "ملاحظات", "مستخدم"};

std::array<std::string, 9> JournalRow::cells() const {
    return {
        std::to_string(number), kind, common::format_amount(value), salesman, party, time, date, note, user};
}

namespace {

Sql journal_statement(std::int64_t store, const common::Date& day, JournalFilter filter) {
    Sql statement(
        "select sales.pnum, sales.ptot, sales.time_, sales.[Date], sales.note, sales.vcode, sales.ctype, "
        "sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.teln, sales.cust_c, "
        "case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end as E1, "
        "case when sales.vcode = -1 then 'نقدية' else 'آجلة' end as E2, "
        "users.[Name] as user_name, worker.work_name, custdata.cname as customer_name, "
        "vendata.vname as vendor_name, "
        "boundata.cname as receiver, link.cname as representative "
        "from sales LEFT OUTER JOIN users ON sales.[User] = users.code "
        "LEFT OUTER JOIN worker ON sales.wCode = worker.work_code "
        "LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode "
        "LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode "
        "LEFT OUTER JOIN boundata ON sales.link = boundata.ccode "
        "LEFT OUTER JOIN link ON sales.link = link.ccode "
        "where sales.date >=");
    statement += quoted(common::Moment{day, {}});
    statement += " and sales.date <=";
    statement += quoted(common::Moment{day, {23, 59, 59, 0}});
    if (store != 0) {
        statement += " and sales.stcode = ";
        statement += store;
    }
    switch (filter) {
        case JournalFilter::all:
            break;
        case JournalFilter::cash_sales:
            statement += " and (sales.ctype = 0 or sales.ctype = 1) and sales.vcode = -1 ";
            break;
        case JournalFilter::account_sales:
            statement += " and (sales.ctype = 0 or sales.ctype = 1) and sales.vcode <> -1 ";
            break;
        case JournalFilter::cash_returns:
            statement += " and (sales.ctype = 2 or sales.ctype = 3) and sales.vcode = -1 ";
            break;
        case JournalFilter::account_returns:
            statement += " and (sales.ctype = 2 or sales.ctype = 3) and sales.vcode <> -1 ";
            break;
    }
    statement += " order by pnum;";
    return statement;
}

constexpr int tips_payment = 2;

}  // namespace

std::vector<JournalRow> load_journal(database::Connection& connection, std::int64_t store,
                                     const common::Date& day, JournalFilter filter) {
    std::vector<JournalRow> journal;
    Parties parties(connection);
    for (const auto& row : connection.query(journal_statement(store, day, filter))) {
        JournalRow line;
        line.number = row.integer("pnum");
        line.kind = row.text("E1") + " " + row.text("E2");
        line.value = row.number("ptot");
        line.salesman = row.text("work_name");
        line.customer = row.integer("vcode");
        line.ctype = static_cast<int>(row.integer("ctype"));
        line.stype = static_cast<int>(row.integer("stype"));
        line.link = row.text(line.stype == tips_payment ? "receiver" : "representative");
        line.party = parties.of_invoice(row);
        if (!row.null("time_")) line.time = common::twelve_hour_text(row.moment("time_").time);
        line.date = common::date_text(row.moment("Date").date);
        line.note = row.text("note");
        line.user = row.text("user_name");
        line.discount = row.number("pdis");
        line.inv_type = static_cast<int>(row.integer("inv_type"));
        line.shift = row.integer("Shift");
        line.telephone = row.text("teln");
        journal.push_back(std::move(line));
    }
    return journal;
}

}  // namespace cash
