// What moves the cash of a drawer, and the statements that sum it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "database/connection.h"
#include "database/reads.h"
#include "database/sql.h"

namespace cash {

struct Drawer {
    std::int64_t store = 0;
    std::int64_t code = 0;
    auto operator<=>(const Drawer&) const = default;
};

// What moves the cash of a drawer, and the invoices that a statement shows beside them. The procedures differ
// in which invoices count as sales and as returns.
enum class Movement {
    opening,
    sales,  // to walk-in customers
    card_sales,
    card_returns,
    tips,         // paid out of the drawer on an invoice
    coupons,      // likewise
    uncollected,  // telephone orders that have not been paid yet
    returns,
    returned_coupons,
    discounts,  // on whole cash invoices
    returned_discounts,
    account_sales,
    account_returns,
    receipts,
    payments,
    to_bank,
    from_bank,
    transfers_out,
    transfers_in,
    withdrawals,
    deposits,
    expenses,
    count_difference  // surplus, or shortage below zero
};

// One sum of a statement's result and how it counts.
struct Term {
    Movement movement;
    int sign;                    // +1 adds to the drawer's cash, -1 takes from it, 0 neither
    std::string_view caption;    // as screens name it
    std::string_view column;     // of the result
    std::string_view amount;     // column of the movement's table that is summed
    std::string_view code = {};  // where one statement has two sums: the column that tells their rows apart
    int code_value = 0;
};
const Term& term(Movement movement);

// A statement that sums one movement, or two. Its places: {store} and {drawer}; {until}, the end of the
// window; {moment COLUMN}, the procedure's condition on the moment of a row whose date is in that column;
// {net_from}, the window's. Without that day a statement that names it is left out.
struct SumStatement {
    Movement movement;
    database::Fragment text;
    std::optional<Movement> second = {};
};

// The statements in their order, and which moments they count. Places of the condition: {column}, the date
// column; {from} and {until}, the window's ends in quotes; {from_blank}, the start with a blank behind it.
struct Procedure {
    std::span<const SumStatement> statements;
    database::Fragment moment;
};
extern const Procedure store_wide;           // the position: strictly before the end
extern const Procedure shift_period;         // figures of a shift: after the start up to the end
extern const Procedure discount_period;      // discounts like the position: from the start on, before the end
extern const Procedure left_drawer;          // transfers out of a drawer: from the start on, before the end
extern const Procedure calc_of_shift_close;  // calc_cash of shift2s: strictly before the end
extern const Procedure calc_of_shift_start;  // calc_cash of shiftc: likewise
extern const Procedure balance_brought_forward;  // of the daily statement: up to the end
extern const Procedure statement_day;            // its own sums: after the start up to the end

// The moments between which a procedure counts, as the statements write them.
struct Window {
    std::string from;  // unused by procedures that count from the beginning
    std::string until;
    // From this day on a drawer's cash is counted without the invoice discounts (database::net_from); nothing
    // in a shop that counts it with them.
    std::optional<common::Date> net_from;
};
// Up to a moment, for the procedures that count from the beginning.
Window until(const common::Moment& moment, const std::optional<common::Date>& net_from);

// A sum, rounded to hundredths; a missing one counts as 0.
struct Sum {
    const Term* term;
    common::Amount amount;  // without the sign
    common::Amount counted() const;
};

// The sums of a procedure in its order; read alone, or asked for with other reads.
std::vector<Sum> read_sums(database::Connection& connection, const Procedure& procedure, const Drawer& drawer,
                           const Window& window);
void ask_sums(database::Reads& reads, const Procedure& procedure, const Drawer& drawer, const Window& window,
              std::function<void(const std::vector<Sum>& sums)> take);
// Their total: the drawer's cash.
common::Amount total_of(const std::vector<Sum>& sums);

// Returns true if the procedure sums a movement in this window.
bool is_summed(const Procedure& procedure, Movement movement, const Window& window);
// Reads the rows that the sum of a movement counts, whole: the same statement with "*" in place of its sums.
database::Sql rows_statement(const Procedure& procedure, Movement movement, const Drawer& drawer,
                             const Window& window);

}  // namespace cash
