// The figures of the daily statement with the rows that make each of them, and the shorter day summary.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "cash/cash_sums.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

// The 25 columns of the statement in order, followed by the discounts on whole cash invoices. From the day
// net_from on the net leaves these out; in a shop without that day they are 0.
enum class Figure {
    account_sales,
    account_returns,
    cash_sales,
    card_sales,
    tips,
    coupons,
    uncollected,
    cash_returns,
    surplus,
    net_cash,
    receipts,
    transfers_in,
    from_bank,
    deposits,
    total_deposits,
    payments,
    transfers_out,
    to_bank,
    expenses,
    withdrawals,
    shortage,
    total_outgoings,
    net,
    previous_balance,
    current_balance,
    discounts,
    returned_discounts
};
inline constexpr std::size_t figure_count = 27;

extern const std::array<std::string_view, figure_count> figure_headings;

// Figures of one drawer, or of several added up.
struct Figures {
    std::array<common::Amount, figure_count> values{};
    common::Amount operator[](Figure figure) const { return values[static_cast<std::size_t>(figure)]; }
    common::Amount& operator[](Figure figure) { return values[static_cast<std::size_t>(figure)]; }
    Figures& operator+=(const Figures& other);
};

// The statement of one drawer on one day: the movements after 00:00:00 up to and including 23:59:59.
Figures compute_figures(database::Connection& connection, const Drawer& drawer, const common::Date& day);

// One line behind a figure. A figure made of others has their lines, with their signs; the previous balance
// has one line for each of its sums.
struct FigureRow {
    std::string kind;    // the heading of the figure, or the name of the sum, that the line belongs to
    std::string number;  // of the invoice, voucher or transfer
    std::string moment;  // "yyyy/mm/dd hh:mm AM/PM"; empty for a sum
    std::string party;
    double amount = 0;     // as the database holds it, not rounded
    double discount = 0;   // of an invoice, contained in its amount
    bool by_card = false;  // an invoice that was paid by card
};
struct FigureRows {
    std::vector<FigureRow> rows;
    common::Amount sum;  // equals the figure
};
FigureRows rows_behind(database::Connection& connection, const Drawer& drawer, const common::Date& day,
                       Figure figure);

// The rows of a movement's figure after `from` up to `until`, such as those of a shift.
FigureRows rows_between(database::Connection& connection, const Drawer& drawer, const common::Moment& from,
                        const common::Moment& until, Figure figure);

// The columns of the day summary; column 0 is the invoice count, 11 and 12 are the discounts that the net
// cash (10) leaves out, as in the statement.
inline constexpr std::size_t summary_count = 13;
extern const std::array<std::string_view, summary_count> summary_headings;

// The invoice count and the figures of one drawer's day, or of several drawers added up.
struct DaySummary {
    std::int64_t invoices = 0;
    std::array<common::Amount, summary_count> columns{};  // from 1 on
    DaySummary& operator+=(const DaySummary& other);
    // The cells under the headings: the count, then amounts as "0.00".
    std::array<std::string, summary_count> cells() const;
};

DaySummary compute_summary(database::Connection& connection, const Drawer& drawer, const common::Date& day);

}  // namespace cash
