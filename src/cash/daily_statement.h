// The logic of the day's cash statement: figures, journal, day summary and the cashier's report of the day.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cash/day_summary.h"
#include "cash/figures.h"
#include "cash/journal.h"
#include "common/choice.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

// The printed report of the day as plain data.
struct DayReport {
    std::string title;  // "تقرير الكاشير عن يوم " and the date
    std::string store;
    std::string drawer;
    std::vector<std::string> headings;           // number, kind, value, customer/vendor, salesman
    std::vector<std::vector<std::string>> rows;  // as written to the printing table
    // Net cash, total deposits, total outgoings, net, previous and current balance, "0.00".
    std::vector<std::pair<std::string, std::string>> totals;
};

class DailyStatement {
  public:
    DailyStatement(database::Connection& connection, const signin::Session& session,
                   common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // Returns false after a message if the user may not see the statement. Otherwise reads the lists and
    // computes today's statement of the workstation's drawer.
    bool open();
    // Store 0 is "الكل", the sum of every drawer of every store; drawer 0 is every drawer of the store.
    void choose_store(
        std::int64_t store);  // takes the workstation's drawer in its own store, else every drawer
    void choose_drawer(std::int64_t drawer) { drawer_ = drawer; }

    // Computes everything for the chosen store, drawer and date, and tells the cashier if movements of the
    // day name a drawer that the store does not have. Returns false after a message if the chosen drawer does
    // not exist.
    bool show();
    // Reads the journal again under another filter.
    void choose_filter(JournalFilter filter);

    // Writes the report's rows to the printing table and returns it for printing.
    DayReport print_report();

    // The rows behind a figure of the statement shown.
    FigureRows rows_behind(Figure figure);

    common::Date date;
    bool summary_shown = false;  // the switch "ملخص اليوم": the day summary in place of the statement
    static constexpr std::string_view summary_switch = "ملخص اليوم";

    // "الكل" (0) first in each.
    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    std::int64_t store() const { return store_; }
    std::int64_t drawer() const { return drawer_; }
    JournalFilter filter() const { return filter_; }

    const Figures& figures() const { return figures_; }
    const DaySummary& summary() const { return summary_; }
    const std::vector<JournalRow>& journal() const { return journal_; }

  private:
    std::vector<Drawer> chosen_drawers();
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::int64_t store_ = 0;
    std::int64_t drawer_ = 0;
    common::Date shown_date_;
    std::vector<Drawer> shown_drawers_;
    JournalFilter filter_ = JournalFilter::all;
    Figures figures_;
    DaySummary summary_;
    std::vector<JournalRow> journal_;
};

}  // namespace cash
