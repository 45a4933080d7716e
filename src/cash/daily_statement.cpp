#include "cash/daily_statement.h"

#include "cash/messages.h"
#include "common/messages.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "signin/permissions.h"

namespace cash {

namespace {

using database::Fragment;
using database::quoted;
using database::Sql;

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

// How many cash movements of a store's day name no drawer of the store: a deleted one, a wrong one or none.
// No drawer's figures hold them.
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
    for (const Figure figure : {Figure::net_cash, Figure::total_deposits, Figure::total_outgoings,
                                Figure::net, Figure::previous_balance, Figure::current_balance}) {
        report.totals.emplace_back(figure_headings[static_cast<std::size_t>(figure)],
                                   figures_[figure].text());
    }
    connection_.make_durable();
    return report;
}

}  // namespace cash
