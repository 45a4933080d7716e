#include "cash/daily_statement.h"

#include <algorithm>
#include <map>

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
        "sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.teln, sales.cust_c, sales.stcode, "
        "sales.ptype, "
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

}  // namespace

std::vector<JournalRow> load_journal(database::Connection& connection, std::int64_t store,
                                     const common::Date& day, JournalFilter filter) {
    std::vector<JournalRow> journal;
    Parties parties(connection);
    const auto rows = connection.query(journal_statement(store, day, filter));
    parties.read_walk_ins(rows);
    journal.reserve(rows.size());
    for (const auto& row : rows) {
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
        line.drawer = {row.integer("stcode"), row.integer("ptype")};
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

// A table of movements, and the columns that name a movement's store, drawer and day.
struct Source {
    Fragment table;
    Fragment store;
    Fragment drawer;
    Fragment day;
    Fragment condition = "";
};

constexpr Source sources[] = {
    {"sales", "sales.stcode", "sales.ptype", "sales.date"},
    {"vencuspay", "vencuspay.stcode", "vencuspay.cash_n", "vencuspay.date", " and vencuspay.type = 1"},
    {"btran", "btran.stcode", "btran.cash_n", "btran.date", " and btran.type1 = 1"},
    {"in_out", "in_out.stcode", "in_out.cash_n", "in_out.date"},
    {"dailyexp", "dailyexp.stcode", "dailyexp.cash_n", "dailyexp.expdate"},
    {"mor_les", "mor_les.stcode", "mor_les.ptype", "mor_les.date"},
    {"cach_t", "cach_t.cfr", "cach_t.cash_nf", "cach_t.cdate"},
    {"cach_t", "cach_t.cto", "cach_t.cash_nt", "cach_t.cdate"},
};

// The movements of a day.
Sql count_of(const Source& source, const common::Date& day) {
    return Sql("select count(*) as strays from ") + source.table + " LEFT OUTER JOIN cash ON " +
           source.store + " = cash.stcode and " + source.drawer + " = cash.code where " + source.day +
           " >= " + quoted(common::Moment{day, {}}) + " and " + source.day +
           " <= " + quoted(common::Moment{day, {23, 59, 59, 0}}) + source.condition;
}

// Conditions for a store code that is none of the shop's (which has at least one store), as ranges between
// their codes: an index of the movements by store can then answer without reading a million invoices. No row
// meets two of them. Each holds a limited number of ranges, because the engines limit the nesting of
// expressions.
std::vector<Sql> unknown_stores(const Source& source, const std::vector<std::int64_t>& stores) {
    constexpr std::size_t most_ranges = 200;
    std::vector<Sql> conditions = {Sql(source.store) + " is null or " + source.store + " < " +
                                   stores.front() + " or " + source.store + " > " + stores.back()};
    std::size_t ranges = 2;
    for (std::size_t i = 1; i < stores.size(); ++i) {
        if (stores[i] <= stores[i - 1] + 1) continue;
        const Sql range = Sql("(") + source.store + " > " + stores[i - 1] + " and " + source.store + " < " +
                          stores[i] + ")";
        if (ranges++ % most_ranges == 0)
            conditions.push_back(range);
        else
            conditions.back() += Sql(" or ") + range;
    }
    return conditions;
}

// The number of cash movements of a day that name a deleted or wrong drawer or none at all, in the chosen
// stores, or a store that the shop does not have. No figure includes them.
std::int64_t count_stray_movements(database::Connection& connection, const std::vector<std::int64_t>& chosen,
                                   const std::vector<std::int64_t>& stores, const common::Date& day) {
    std::int64_t found = 0;
    for (const Source& source : sources) {
        for (const std::int64_t store : chosen) {
            found += database::integer_of(connection.scalar(
                count_of(source, day) + " and cash.code is null and " + source.store + " = " + store));
        }
        for (const Sql& condition : unknown_stores(source, stores)) {
            found +=
                database::integer_of(connection.scalar(count_of(source, day) + " and (" + condition + ")"));
        }
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

    std::vector<std::int64_t> stores;
    for (const common::Choice& store : stores_) {
        if (store.code != 0) stores.push_back(store.code);
    }
    std::sort(stores.begin(), stores.end());
    const std::int64_t strays = count_stray_movements(
        connection_, store_ == 0 ? stores : std::vector<std::int64_t>{store_}, stores, date);
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

namespace {

using DrawerNames = std::map<Drawer, std::string>;

// The drawer's number if it is unknown.
std::string drawer_name(const DrawerNames& names, const Drawer& drawer) {
    const auto found = names.find(drawer);
    return found == names.end() ? std::to_string(drawer.code) : found->second;
}

}  // namespace

DayReport DailyStatement::print_report() {
    DayReport report;
    report.title = std::string(message::day_report_title) + common::date_text(shown_date_);
    report.store = name_of(stores_, store_);
    report.drawer = name_of(drawers_, drawer_);
    report.filter = journal_filters[static_cast<std::size_t>(filter_)];
    for (const std::size_t column : {0U, 1U, 2U, 4U, 3U})
        report.headings.emplace_back(journal_headings[column]);
    report.headings.emplace_back(message::drawer);

    // Drawers of different stores may have the same name.
    DrawerNames names;
    for (const common::Choice& store : stores_) {
        for (const common::Choice& drawer : database::load_drawers(connection_, store.code))
            names[{store.code, drawer.code}] = (store_ == 0 ? store.name + " / " : "") + drawer.name;
    }
    connection_.execute(Sql("delete from [print] where [user] =") + quoted(session_.user_name));
    database::Recordset lines(connection_,
                              Sql("select * from [print] where [user] = ") + quoted(session_.user_name));
    for (const JournalRow& row : journal_) {
        const auto cells = row.cells();
        report.rows.push_back(
            {cells[0], cells[1], cells[2], cells[4], cells[3], drawer_name(names, row.drawer)});
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
