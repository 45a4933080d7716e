#include "cash/daily_statement.h"

#include "cash/messages.h"
#include "cash/parties.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "database/till_settings.h"
#include "signin/permissions.h"

namespace cash {

using database::Fragment;
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

namespace {

std::vector<common::Choice> with_all(std::vector<common::Choice> list) {
    list.insert(list.begin(), common::Choice{0, std::string(message::all)});
    return list;
}

// A table of movements joined to the drawers.
struct Source {
    Fragment from;  // up to the store
    Fragment day;   // the condition up to the day
};

constexpr Source sources[] = {
    {"sales LEFT OUTER JOIN cash ON sales.stcode = cash.stcode and sales.ptype = cash.code where "
     "sales.stcode = ",
     " and sales.date "},
    {"vencuspay LEFT OUTER JOIN cash ON vencuspay.stcode = cash.stcode and vencuspay.cash_n = cash.code "
     "where vencuspay.type = 1 and vencuspay.stcode = ",
     " and vencuspay.date "},
    {"btran LEFT OUTER JOIN cash ON btran.stcode = cash.stcode and btran.cash_n = cash.code where "
     "btran.type1 = 1 and btran.stcode = ",
     " and btran.date "},
    {"in_out LEFT OUTER JOIN cash ON in_out.stcode = cash.stcode and in_out.cash_n = cash.code where "
     "in_out.stcode = ",
     " and in_out.date "},
    {"dailyexp LEFT OUTER JOIN cash ON dailyexp.stcode = cash.stcode and dailyexp.cash_n = cash.code where "
     "dailyexp.stcode = ",
     " and dailyexp.expdate "},
    {"mor_les LEFT OUTER JOIN cash ON mor_les.stcode = cash.stcode and mor_les.ptype = cash.code where "
     "mor_les.stcode = ",
     " and mor_les.date "},
    {"cach_t LEFT OUTER JOIN cash ON cach_t.cfr = cash.stcode and cach_t.cash_nf = cash.code where "
     "cach_t.cfr = ",
     " and cach_t.cdate "},
    {"cach_t LEFT OUTER JOIN cash ON cach_t.cto = cash.stcode and cach_t.cash_nt = cash.code where "
     "cach_t.cto = ",
     " and cach_t.cdate "},
};

// The number of cash movements of a store's day that name a deleted or wrong drawer or none at all. No figure
// includes them.
std::int64_t count_stray_movements(database::Connection& connection, std::int64_t store,
                                   const common::Date& day) {
    std::int64_t found = 0;
    for (const Source& source : sources) {
        Sql statement("select count(*) as strays from ");
        statement += source.from;
        statement += store;
        statement += source.day;
        statement += ">= ";
        statement += quoted(common::Moment{day, {}});
        statement += source.day;
        statement += "<= ";
        statement += quoted(common::Moment{day, {23, 59, 59, 0}});
        statement += " and cash.code is null";
        found += database::integer_of(connection.scalar(statement));
    }
    return found;
}

}  // namespace

bool DailyStatement::has_discounts() const {
    return database::net_from(connection_).has_value();
}

bool DailyStatement::open() {
    if (!signin::authorise(session_, services_.prompts, signin::Action::daily_statement)) return false;
    stores_ = with_all(database::load_stores(connection_));
    date = services_.clock.now().date;
    filter_ = JournalFilter::all;
    summary_shown = false;
    choose_store(session_.store_code);
    show();
    return true;
}

void DailyStatement::choose_store(std::int64_t store) {
    store_ = store;
    drawers_ =
        with_all(store == 0 ? std::vector<common::Choice>() : database::load_drawers(connection_, store));
    drawer_ =
        store == session_.store_code && contains(drawers_, session_.cash_point) ? session_.cash_point : 0;
}

std::vector<Drawer> DailyStatement::chosen_drawers() {
    std::vector<Drawer> chosen;
    for (const common::Choice& store : stores_) {
        if (store.code == 0 || (store_ != 0 && store.code != store_)) continue;
        for (const common::Choice& drawer : database::load_drawers(connection_, store.code)) {
            if (drawer_ != 0 && drawer.code != drawer_) continue;
            chosen.push_back({store.code, drawer.code});
        }
    }
    return chosen;
}

bool DailyStatement::show() {
    const auto chosen = chosen_drawers();
    if (chosen.empty()) {
        services_.prompts.message(common::message::no_such_drawer, common::Icon::critical);
        return false;
    }
    // Assigned together at the end: if a sum fails, the old statement remains whole.
    Figures figures;
    DaySummary summary;
    for (const Drawer& drawer : chosen) {
        figures += compute_figures(connection_, drawer, date);
        summary += compute_summary(connection_, drawer, date);
    }
    journal_ = load_journal(connection_, store_, date, filter_);
    figures_ = figures;
    summary_ = summary;
    shown_date_ = date;
    shown_drawers_ = chosen;

    std::int64_t strays = 0;
    for (const common::Choice& store : stores_) {
        if (store.code == 0 || (store_ != 0 && store.code != store_)) continue;
        strays += count_stray_movements(connection_, store.code, date);
    }
    if (strays > 0) {
        services_.prompts.message(std::string(message::stray_movements) + std::to_string(strays),
                                  common::Icon::exclamation);
    }
    return true;
}

void DailyStatement::choose_filter(JournalFilter filter) {
    journal_ = load_journal(connection_, store_, shown_date_, filter);
    filter_ = filter;
}

FigureRows DailyStatement::rows_behind(Figure figure) {
    FigureRows all;
    for (const Drawer& drawer : shown_drawers_) {
        FigureRows part = cash::rows_behind(connection_, drawer, shown_date_, figure);
        all.rows.insert(all.rows.end(), part.rows.begin(), part.rows.end());
        all.sum += part.sum;
    }
    return all;
}

DayReport DailyStatement::print_report() {
    DayReport report;
    report.title = std::string(message::day_report_title) + common::date_text(shown_date_);
    report.store = name_of(stores_, store_);
    report.drawer = name_of(drawers_, drawer_);
    for (const std::size_t column : {0U, 1U, 2U, 4U, 3U})
        report.headings.emplace_back(journal_headings[column]);

    connection_.execute(Sql("delete from [print] where [user] =") + quoted(session_.user_name));
    database::Recordset lines(connection_,
                              Sql("select * from [print] where [user] = ") + quoted(session_.user_name));
    for (const JournalRow& row : journal_) {
        const auto cells = row.cells();
        report.rows.push_back({cells[0], cells[1], cells[2], cells[4], cells[3]});
        lines.add();
        lines.set("f1", cells[0]);
        lines.set("F2", cells[1]);
        lines.set("f3", cells[2]);
        lines.set("f4", cells[4]);
        lines.set("f5", cells[3]);
        lines.set("User", session_.user_name);
        lines.update();
    }
    std::vector<Figure> totals;
    if (has_discounts()) totals = {Figure::discounts, Figure::returned_discounts};
    for (const Figure figure : {Figure::net_cash, Figure::total_deposits, Figure::total_outgoings,
                                Figure::net, Figure::previous_balance, Figure::current_balance})
        totals.push_back(figure);
    for (const Figure figure : totals) {
        report.totals.emplace_back(figure_headings[static_cast<std::size_t>(figure)],
                                   figures_[figure].text());
    }
    connection_.make_durable();
    return report;
}

}  // namespace cash
