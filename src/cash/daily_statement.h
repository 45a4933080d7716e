// The logic of the day's cash statement: figures, journal, day summary and the cashier's report of the day.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cash/figures.h"
#include "common/choice.h"
#include "common/date_time.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

// The journal lists the invoices of a day that pass a filter.
enum class JournalFilter { all, cash_sales, account_sales, cash_returns, account_returns };
extern const std::array<std::string_view, 5> journal_filters;  // their names, in order

struct JournalRow {
    std::int64_t number = 0;
    std::string kind;  // "مبيعات نقدية" ...
    double value = 0;
    std::string salesman;
    std::string party;  // account customer, else vendor, else walk-in customer, else the receiver of the tips
    std::string time;   // "hh:mm AM/PM"; empty if the row has no time
    std::string date;   // "yyyy/mm/dd"
    std::string note;
    std::string user;
    // Hidden columns.
    std::int64_t customer = 0;  // vcode
    int ctype = 0;
    int stype = 0;
    double discount = 0;  // pdis
    int inv_type = 0;
    std::int64_t shift = 0;
    Drawer drawer;
    std::string link;       // the receiver's name on a tips sale, else the representative's
    std::string telephone;  // teln

    // The nine visible cells, under journal_headings.
    std::array<std::string, 9> cells() const;
};
extern const std::array<std::string_view, 9> journal_headings;

// The invoices of a store on a day, ordered by number; store 0 is every store.
std::vector<JournalRow> load_journal(database::Connection& connection, std::int64_t store,
                                     const common::Date& day, JournalFilter filter);

// The printed report of the day as plain data.
struct DayReport {
    std::string title;  // "تقرير الكاشير عن يوم " and the date
    std::string store;
    std::string drawer;
    std::string filter;                          // which invoices the rows list
    std::vector<std::string> headings;           // number, kind, value, customer/vendor, salesman, drawer
    std::vector<std::vector<std::string>> rows;  // all but the drawer as written to the printing table
    // Net cash, total deposits, total outgoings, net, previous and current balance, "0.00"; before them the
    // discounts where the net leaves them out.
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
    // Chooses the workstation's drawer in the workstation's store, all drawers in any other.
    void choose_store(std::int64_t store);
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

    // Whether the shop counts drawers without the invoice discounts. They are then figures of their own.
    bool has_discounts() const;

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
