// The one description of the sums that make a drawer's cash: every movement with its sign, its condition and
// its texts, and the procedures that add them up, whose differences stand here as data.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "database/sql.h"

namespace cash {

struct Drawer {
    std::int64_t store = 0;
    std::int64_t code = 0;
    auto operator<=>(const Drawer&) const = default;
};

// What moves the cash of a drawer, and the invoices that a statement shows beside them.
enum class Movement {
    opening,
    sales,           // to walk-in customers, whatever their payment
    sales_but_card,  // the same without card sales
    card_sales,      // no cash reaches the drawer
    card_returns,
    tips,              // paid out of the drawer on an invoice
    coupons,           // likewise
    uncollected,       // telephone orders whose money has not come yet
    returns,           // kinds 1 and 2: kind 1 counts as a sale as well
    returns_but_card,  // kinds 2 and 3, less card returns
    returned_coupons,
    discounts,           // on whole cash invoices, which no cash sum takes off; shown beside them
    returned_discounts,  // likewise on returns
    account_sales,
    account_returns,
    vouchers,  // two sums: receipts and payments
    to_bank,
    from_bank,
    transfers_out,
    transfers_in,
    in_and_out,  // two sums: withdrawals and deposits
    expenses,
    count_difference  // surplus, or shortage below zero
};

// One result column of a sum and how it counts.
struct Reading {
    std::string_view column;   // empty: the sum has no such column
    int sign = 0;              // +1 adds to the drawer's cash, -1 takes from it, 0 neither
    std::string_view caption;  // as screens name it
};

// A piece of a statement: a text, or the place of a value.
enum class Slot { text, amount, gap, moment, condition, store, drawer };
struct Part {
    Slot slot = Slot::text;
    database::Fragment text;
    template <std::size_t N>
    consteval Part(const char (&literal)[N]) : text(literal) {}
    consteval Part(Slot place) : slot(place), text("") {}
};

// How a statement on one table is put together.
struct Shape {
    std::span<const Part> select;  // the head of the sum
    std::span<const Part> source;  // from "from" on
    database::Fragment date;       // the date column that is joined with time_
};

struct Term {
    Movement movement;
    Shape shape;                // as the position and calc_cash write it
    Shape drawer_first;         // as the statement writes it; mostly the same
    database::Fragment amount;  // what is summed
    bool rounded_by_calc;       // calc_cash rounds each row's amount in the query
    database::Fragment gap;     // after "where"
    database::Fragment condition;
    Reading first;
    Reading second;
    const Shape* of_period = nullptr;  // as the figures of a period write it, if not like the first
};
const Term& term(Movement movement);

// How a procedure bounds the moments it counts.
enum class Span {
    before,  // strictly before the end
    up_to,   // up to and including the end
    period,  // after the start, up to and including the end; the start's literal ends in a blank
    day,     // the same without the blank
    since    // from the start on, strictly before the end: what the position counts and had not at the start
};
struct Window {
    std::string from;  // used by period, day and since only
    std::string until;
};

struct Procedure {
    std::span<const Movement> order;
    Span span;
    bool drawer_first;                // the statement names the drawer before the moment
    bool rounded_rows;                // sum(round(amount,2)) instead of sum(amount)
    bool counts_by_bare_date;         // the surplus or shortage is counted by its date without its time
    database::Fragment opening;       // the column of the drawer's opening figure
    database::Fragment missing_time;  // what stands in for a missing time
};
extern const Procedure store_wide;               // the position
extern const Procedure calc_of_shift_close;      // calc_cash of shift2s
extern const Procedure calc_of_shift_start;      // calc_cash of shiftc
extern const Procedure balance_brought_forward;  // of the daily statement
extern const Procedure statement_day;            // the daily statement's own sums
extern const Procedure shift_period;             // the figures of a shift beside its position
extern const Procedure discount_period;          // the invoice discounts of a span

// The statement that sums a movement of a drawer.
database::Sql sum_statement(const Procedure& procedure, Movement movement, const Drawer& drawer,
                            const Window& window);
// The rows that such a sum counts, whole.
database::Sql rows_statement(const Procedure& procedure, Movement movement, const Drawer& drawer,
                             const Window& window);

}  // namespace cash
