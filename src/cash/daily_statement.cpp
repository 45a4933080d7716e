#include "cash/daily_statement.h"

#include "cash/cash_sums.h"
#include "cash/messages.h"
#include "cash/stray_movements.h"
#include "common/numbers.h"
#include "database/recordset.h"
#include "signin/permissions.h"

namespace cash {

namespace {

std::vector<common::Choice> with_all(std::vector<common::Choice> list) {
    list.insert(list.begin(), common::Choice{0, std::string(message::all)});
    return list;
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
        services_.prompts.message(message::no_such_drawer, common::Icon::critical);
        return false;
    }
    // Taken over together at the end: when a sum fails, what is shown stays whole.
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
        all.sum = add_amounts(all.sum, part.sum);
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

    connection_.execute(database::Sql("delete from [print] where [user] =") +
                        database::quoted(session_.user_name));
    database::Recordset lines(connection_, database::Sql("select * from [print] where [user] = ") +
                                               database::quoted(session_.user_name));
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
        report.totals.emplace_back(figure_headings[static_cast<std::size_t>(figure)], figures_.text(figure));
    }
    connection_.make_durable();
    return report;
}

}  // namespace cash
