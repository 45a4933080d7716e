#include "ui/cash/statement_ledgers.h"

#include "cash/day_summary.h"
#include "cash/figures.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

using Kind = FigureCell::Kind;

LedgerEntry figure(cash::Figure figure, const char* name, const char* sign, Kind kind = Kind::plain) {
    const auto column = static_cast<std::size_t>(figure);
    return {static_cast<int>(column), name, sign, qt(cash::figure_headings[column]), kind};
}

LedgerEntry sum(std::size_t column, const char* sign, Kind kind = Kind::plain) {
    const QString name = kind == Kind::carried ? QString() : "summary_" + QString::number(column);
    return {static_cast<int>(column), name, sign, qt(cash::summary_headings[column]), kind};
}

}  // namespace

// Each column adds up, with the signs shown, to the total at its foot. Account invoices move no cash and
// stand apart.
std::vector<LedgerColumn> statement_ledger() {
    using cash::Figure;
    return {
        {{"المبيعات النقدية",
          {figure(Figure::cash_sales, "figure_cash_sales", "+"),
           figure(Figure::card_sales, "figure_card_sales", "−"), figure(Figure::tips, "figure_tips", "−"),
           figure(Figure::coupons, "figure_coupons", "−"),
           figure(Figure::uncollected, "figure_uncollected", "−"),
           figure(Figure::cash_returns, "figure_cash_returns", "−"),
           figure(Figure::surplus, "figure_surplus", "+"),
           figure(Figure::net_cash, "figure_net_cash", "=", Kind::total)}}},
        {{"الايداعات",
          {figure(Figure::net_cash, "", "+", Kind::carried), figure(Figure::receipts, "figure_receipts", "+"),
           figure(Figure::transfers_in, "figure_transfers_in", "+"),
           figure(Figure::from_bank, "figure_from_bank", "+"),
           figure(Figure::deposits, "figure_deposits", "+"),
           figure(Figure::total_deposits, "figure_total_deposits", "=", Kind::total)}}},
        {{"المصروفات",
          {figure(Figure::payments, "figure_payments", "+"),
           figure(Figure::transfers_out, "figure_transfers_out", "+"),
           figure(Figure::to_bank, "figure_to_bank", "+"), figure(Figure::expenses, "figure_expenses", "+"),
           figure(Figure::withdrawals, "figure_withdrawals", "+"),
           figure(Figure::shortage, "figure_shortage", "+"),
           figure(Figure::total_outgoings, "figure_total_outgoings", "=", Kind::total)}}},
        {{"آجل (خارج الخزينة)",
          {figure(Figure::account_sales, "figure_account_sales", ""),
           figure(Figure::account_returns, "figure_account_returns", "")}},
         {"الرصيد",
          {figure(Figure::net, "figure_net", "+"),
           figure(Figure::previous_balance, "figure_previous_balance", "+"),
           figure(Figure::current_balance, "figure_current_balance", "=", Kind::total)}}},
    };
}

std::vector<LedgerColumn> summary_ledger() {
    return {
        {{"المبيعات", {sum(4, "+"), sum(3, "+"), sum(2, "+"), sum(1, "=", Kind::total)}}},
        {{"النقدية",
          {sum(4, "+", Kind::carried), sum(6, "−"), sum(7, "−"), sum(8, "+"), sum(9, "−"),
           sum(10, "=", Kind::total)}}},
        {{"اليوم", {sum(0, ""), sum(5, "")}}},
    };
}

}  // namespace ui
