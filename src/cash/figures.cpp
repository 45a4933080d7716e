#include "cash/figures.h"

#include <cmath>

#include "cash/cash_sums.h"
#include "cash/figure_parts.h"
#include "common/numbers.h"

namespace cash {

// Column 0 to 24, each with its English meaning in the enumeration.
const std::array<std::string_view, figure_count> figure_headings{
    "مبيعات آجلة",   "مرتجعات آجلة",      "مبيعات نقدية",  "مبيعات إئتمان", "اكراميـــــات",
    "بـــونــــات",  "تليفون لم يحصل",    "مرتجع نقدي",    "زيادة جردية",   "صافي نقــــدي",
    "مقبوضــــات",   "تحويل الي الخزينة", "تحويل من بنك",  "ايداع شخصي",    "اجمال ايداعات",
    "مدفوعــــات",   "تحويل من الخزينة",  "تحويل الي بنك", "مصروفــــــات", "مسحوبات شخصيه",
    "عجز جـــــردي", "اجمالي مصروفات",    "الصـــــافي",   "رصيد سابق",     "رصيد حــالي"};

namespace {

constexpr SummedFigure summed[] = {
    {Figure::account_sales, Movement::account_sales, "xs"},
    {Figure::account_returns, Movement::account_returns, "xs"},
    {Figure::cash_sales, Movement::sales, "xs"},
    {Figure::card_sales, Movement::card_sales, "xs"},
    {Figure::tips, Movement::tips, "xs"},
    {Figure::coupons, Movement::coupons, "xs"},
    {Figure::uncollected, Movement::uncollected, "xs"},
    {Figure::cash_returns, Movement::returns, "xs"},
    {Figure::surplus, Movement::count_difference, "xs"},
    {Figure::receipts, Movement::vouchers, "a2"},
    {Figure::transfers_in, Movement::transfers_in, "xs"},
    {Figure::from_bank, Movement::from_bank, "xs"},
    {Figure::deposits, Movement::in_and_out, "Expr2"},
    {Figure::payments, Movement::vouchers, "a1"},
    {Figure::transfers_out, Movement::transfers_out, "xs"},
    {Figure::to_bank, Movement::to_bank, "xs"},
    {Figure::expenses, Movement::expenses, "xs"},
    {Figure::withdrawals, Movement::in_and_out, "Expr1"},
    {Figure::shortage, Movement::count_difference, "xs"},
};

// In the order in which they depend on each other.
constexpr MadeFigure made[] = {
    {Figure::net_cash, Figure::cash_sales, +1},
    {Figure::net_cash, Figure::card_sales, -1},
    {Figure::net_cash, Figure::tips, -1},
    {Figure::net_cash, Figure::coupons, -1},
    {Figure::net_cash, Figure::uncollected, -1},
    {Figure::net_cash, Figure::cash_returns, -1},
    {Figure::net_cash, Figure::surplus, +1},
    {Figure::total_deposits, Figure::net_cash, +1},
    {Figure::total_deposits, Figure::receipts, +1},
    {Figure::total_deposits, Figure::transfers_in, +1},
    {Figure::total_deposits, Figure::from_bank, +1},
    {Figure::total_deposits, Figure::deposits, +1},
    {Figure::total_outgoings, Figure::payments, +1},
    {Figure::total_outgoings, Figure::transfers_out, +1},
    {Figure::total_outgoings, Figure::to_bank, +1},
    {Figure::total_outgoings, Figure::expenses, +1},
    {Figure::total_outgoings, Figure::withdrawals, +1},
    {Figure::total_outgoings, Figure::shortage, +1},
    {Figure::net, Figure::total_deposits, +1},
    {Figure::net, Figure::total_outgoings, -1},
    {Figure::current_balance, Figure::previous_balance, +1},
    {Figure::current_balance, Figure::net, +1},
};

}  // namespace

std::span<const SummedFigure> summed_figures() {
    return summed;
}
std::span<const MadeFigure> made_figures() {
    return made;
}

double share_of_figure(Figure figure, double amount) {
    if (figure == Figure::surplus) return amount > 0 ? amount : 0;
    if (figure == Figure::shortage) return amount < 0 ? -amount : 0;
    return amount;
}

Window day_window(const common::Date& day) {
    return {common::moment_text({day, {}}), common::moment_text({day, {23, 59, 59, 0}})};
}

Window start_of(const common::Date& day) {
    return until({day, {}});
}

Figures& Figures::operator+=(const Figures& other) {
    for (std::size_t i = 0; i < figure_count; ++i)
        values[i] = add_amounts(values[i], other.values[i]);
    return *this;
}

std::string Figures::text(Figure figure) const {
    return common::format_amount((*this)[figure]);
}

Figures compute_figures(database::Connection& connection, const Drawer& drawer, const common::Date& day) {
    Figures figures;
    for (const Sum& sum : read_all_sums(connection, statement_day, drawer, day_window(day))) {
        for (const SummedFigure& entry : summed) {
            if (entry.movement != sum.movement || entry.column != sum.reading->column) continue;
            figures[entry.figure] = share_of_figure(entry.figure, sum.amount);
        }
    }
    figures[Figure::previous_balance] =
        total_of(read_all_sums(connection, balance_brought_forward, drawer, start_of(day)));
    for (const MadeFigure& entry : made) {
        figures[entry.figure] = add_amounts(figures[entry.figure], entry.sign * figures[entry.part]);
    }
    return figures;
}

}  // namespace cash
