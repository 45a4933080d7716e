// How the figures of the daily statement and of the day summary stand in their ledgers.
#pragma once

#include <vector>

#include "ui/cash/figure_ledger.h"

namespace ui {

// The ids are the columns of the statement and of the summary; object names "figure_cash_sales",
// "summary_4".
std::vector<LedgerColumn> statement_ledger();
std::vector<LedgerColumn> summary_ledger();

}  // namespace ui
