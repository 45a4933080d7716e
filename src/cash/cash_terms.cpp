#include "cash/cash_terms.h"

#include <array>

namespace cash {

namespace {

constexpr Part invoices_select[] = {"select sum(", Slot::amount, ") as xs "};
constexpr Part invoices[] = {"from sales where", Slot::gap,       Slot::moment,    " and stcode = ",
                             Slot::store,        Slot::condition, " and ptype = ", Slot::drawer};
constexpr Part invoices_drawer_first[] = {"from sales where ptype = ",
                                          Slot::drawer,
                                          " and ",
                                          Slot::moment,
                                          " and stcode = ",
                                          Slot::store,
                                          Slot::condition};
// The uncollected orders of a period have one blank more.
constexpr Part uncollected_of_period[] = {"from sales where", Slot::gap,   Slot::moment,
                                          "  and stcode = ",  Slot::store, Slot::condition,
                                          " and ptype = ",    Slot::drawer};

constexpr Part opening_select[] = {"select sum(", Slot::amount, ") as xtot "};
constexpr Part opening_row[] = {"from cash where stcode = ", Slot::store, " and code = ", Slot::drawer};

constexpr Part vouchers_select[] = {
    "SELECT Sum(case when [ptype]=1 then [quan] else 0 end ) AS a1, "
    "Sum(case when [ptype]=2 then [quan] else 0 end ) AS a2 "};
constexpr Part vouchers_rows[] = {"From vencuspay WHERE  vencuspay.type=1 AND ",
                                  Slot::moment,
                                  " And stcode = ",
                                  Slot::store,
                                  " and cash_n = ",
                                  Slot::drawer};

constexpr Part bank_select[] = {"SELECT Sum(", Slot::amount, ") AS xs "};
constexpr Part bank_rows[] = {"From btran Where ", Slot::moment,     Slot::condition, " And stcode = ",
                              Slot::store,         " and cash_n = ", Slot::drawer};

constexpr Part transfers_select[] = {"SELECT Sum(", Slot::amount, ") AS xs "};
constexpr Part transfers_from[] = {"From cach_t WHERE cach_t.cfr=", Slot::store, "  and ", Slot::moment,
                                   "  and cach_t.cash_nf = ",       Slot::drawer};
constexpr Part transfers_to[] = {"From cach_t WHERE cach_t.cto=", Slot::store, "  and ", Slot::moment,
                                 "  and cach_t.cash_nt = ",       Slot::drawer};

constexpr Part in_and_out_select[] = {
    "SELECT Sum(case when [type1]=0 then [aml] else 0 end ) AS Expr1, "
    "Sum(case when [type1]=1 then [aml] else 0 end ) AS Expr2 "};
constexpr Part in_and_out_rows[] = {
    "From in_out WHERE ", Slot::moment, " And stcode = ", Slot::store, " and cash_n = ", Slot::drawer};

constexpr Part expenses_select[] = {" select sum(", Slot::amount, ") as xs "};
constexpr Part expenses_rows[] = {"from dailyexp where ", Slot::moment, "  And stcode = ", Slot::store,
                                  " and cash_n = ",       Slot::drawer};

constexpr Part counts_select[] = {"SELECT  sum(", Slot::amount, ") as xs "};
constexpr Part counts_rows[] = {"FROM mor_les where (", Slot::moment, ")  And stcode = ", Slot::store,
                                " and ptype = ",        Slot::drawer};
// Drawers of different stores share their numbers, so the store stands here as in every other sum.
constexpr Part counts_drawer_first[] = {
    "FROM mor_les where ", Slot::moment, " and ptype = ", Slot::drawer, " and stcode = ", Slot::store};

constexpr Shape of_invoices{invoices_select, invoices, "[date]"};
constexpr Shape of_invoices_drawer_first{invoices_select, invoices_drawer_first, "[date]"};
constexpr Shape of_uncollected{invoices_select, uncollected_of_period, "[date]"};
constexpr Shape of_opening{opening_select, opening_row, ""};
constexpr Shape of_vouchers{vouchers_select, vouchers_rows, "vencuspay.date"};
constexpr Shape of_bank{bank_select, bank_rows, "[date]"};
constexpr Shape of_transfers_out{transfers_select, transfers_from, "cdate"};
constexpr Shape of_transfers_in{transfers_select, transfers_to, "cdate"};
constexpr Shape of_in_and_out{in_and_out_select, in_and_out_rows, "in_out.date"};
constexpr Shape of_expenses{expenses_select, expenses_rows, "expdate"};
constexpr Shape of_counts{counts_select, counts_rows, "date"};
constexpr Shape of_counts_drawer_first{counts_select, counts_drawer_first, "[date]"};

// An invoice's settlement: vcode -1 a walk-in customer; stype 1 card, 2 tips, 3 coupon, 4 with safe 0 a
// telephone order not yet collected; ctype 0 and 1 sales, 2 and 3 returns. ptot is the total before the
// invoice discount (pdis), which no sum takes off: a discount given on a plain cash sale is expected in the
// drawer and comes out of the count as a shortage of that much. On a tips sale it is disboun and is taken
// off.
constexpr Term invoice_term(Movement movement, database::Fragment amount, database::Fragment gap,
                            database::Fragment condition, int sign, std::string_view caption,
                            const Shape* of_period = nullptr) {
    return {movement, of_invoices, of_invoices_drawer_first, amount, true,
            gap,      condition,   {"xs", sign, caption},    {},     of_period};
}
constexpr Term plain_term(Movement movement, const Shape& shape, database::Fragment amount,
                          bool rounded_by_calc, database::Fragment condition, int sign,
                          std::string_view caption) {
    return {movement, shape, shape, amount, rounded_by_calc, "", condition, {"xs", sign, caption}, {}};
}

constexpr std::array terms{
    Term{Movement::opening, of_opening, of_opening, "", false, "", "", {"xtot", +1, "رصيد افتتاحي"}, {}},
    invoice_term(Movement::sales, "ptot", "  ", " and (ctype = 0 Or ctype = 1) and vcode = -1 ", +1,
                 "مبيعات نقدية"),
    invoice_term(Movement::sales_but_card, "ptot", "  ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and stype <> 1 ", +1, "مبيعات نقدية"),
    invoice_term(Movement::card_sales, "ptot", "  ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1 ", -1, "مبيعات إئتمان"),
    invoice_term(Movement::card_returns, "ptot", "  ",
                 " and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 1", +1, "مرتجع إئتمان"),
    invoice_term(Movement::tips, "disboun", " ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2 ", -1, "اكراميـــــات"),
    invoice_term(Movement::coupons, "disboun", " ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3 ", -1, "بـــونــــات"),
    invoice_term(Movement::uncollected, "ptot", " ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0 ", -1,
                 "تليفون لم يحصل", &of_uncollected),
    invoice_term(Movement::returns, "ptot", " ", " and (ctype = 1 Or ctype = 2) and vcode = -1  ", -1,
                 "مرتجع نقدي"),
    invoice_term(Movement::returns_but_card, "ptot", " ",
                 " and (ctype = 3 Or ctype = 2) and vcode = -1   and stype <> 1", -1, "مرتجع نقدي"),
    invoice_term(Movement::returned_coupons, "disboun", " ",
                 " and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 3 ", +1, "مرتجع بونات"),
    // No part of the cash: what of it was never taken in. Not on tips sales, where it is taken off as tips.
    invoice_term(Movement::discounts, "pdis", " ",
                 " and (ctype = 0 Or ctype = 1) and vcode = -1 and (stype = 0 Or stype = 3 Or (stype = 4 and "
                 "safe <> 0)) ",
                 +1, "خصومات الفواتير"),
    invoice_term(Movement::returned_discounts, "pdis", " ",
                 " and (ctype = 3 Or ctype = 2) and vcode = -1 and stype <> 1 ", -1, "خصومات المرتجع"),
    invoice_term(Movement::account_sales, "ptot", " ", " and (ctype = 0 Or ctype = 1) and vcode <> -1 ", 0,
                 "مبيعات آجلة"),
    invoice_term(Movement::account_returns, "ptot", " ", " and (ctype = 1 Or ctype = 2) and vcode <> -1  ", 0,
                 "مرتجعات آجلة"),
    Term{Movement::vouchers,
         of_vouchers,
         of_vouchers,
         "",
         false,
         "",
         "",
         {"a2", +1, "مقبوضــــات"},
         {"a1", -1, "مدفوعــــات"}},
    plain_term(Movement::to_bank, of_bank, "btran.quan", true, " and btran.Type = 1 And btran.type1 = 1  ",
               -1, "تحويل الي بنك"),
    plain_term(Movement::from_bank, of_bank, "btran.quan", true, " and btran.Type = 0 And btran.type1 = 1 ",
               +1, "تحويل من بنك"),
    plain_term(Movement::transfers_out, of_transfers_out, "round(cach_t.caml,2)", false, "", -1,
               "تحويل من الخزينة"),
    plain_term(Movement::transfers_in, of_transfers_in, "round(cach_t.caml,2)", false, "", +1,
               "تحويل الي الخزينة"),
    Term{Movement::in_and_out,
         of_in_and_out,
         of_in_and_out,
         "",
         false,
         "",
         "",
         {"Expr1", -1, "مسحوبات شخصيه"},
         {"Expr2", +1, "ايداع شخصي"}},
    plain_term(Movement::expenses, of_expenses, "value", false, "", -1, "مصروفــــــات"),
    Term{Movement::count_difference,
         of_counts,
         of_counts_drawer_first,
         "mor_les.aml",
         false,
         "",
         "",
         {"xs", +1, "زيادة / عجز جردي"},
         {}},
};

constexpr bool in_order() {
    for (std::size_t i = 0; i < terms.size(); ++i) {
        if (terms[i].movement != static_cast<Movement>(i)) return false;
    }
    return true;
}
static_assert(in_order(), "a term stands at the place of its movement");

// Card sales are left out of the sales, kind 1 is no return, and returned coupons come back.
constexpr Movement store_wide_order[] = {
    Movement::opening,          Movement::sales_but_card, Movement::tips,
    Movement::coupons,          Movement::uncollected,    Movement::returns_but_card,
    Movement::returned_coupons, Movement::vouchers,       Movement::to_bank,
    Movement::from_bank,        Movement::transfers_out,  Movement::transfers_in,
    Movement::in_and_out,       Movement::expenses,       Movement::count_difference};

// Card sales are counted and taken off again, and kind 1 is both a sale and a return while kind 3 is neither.
constexpr Movement calc_order[] = {Movement::opening,    Movement::sales,         Movement::card_sales,
                                   Movement::tips,       Movement::coupons,       Movement::uncollected,
                                   Movement::returns,    Movement::vouchers,      Movement::to_bank,
                                   Movement::from_bank,  Movement::transfers_out, Movement::transfers_in,
                                   Movement::in_and_out, Movement::expenses,      Movement::count_difference};

constexpr Movement day_order[] = {Movement::account_sales,
                                  Movement::account_returns,
                                  Movement::sales,
                                  Movement::card_sales,
                                  Movement::tips,
                                  Movement::coupons,
                                  Movement::uncollected,
                                  Movement::returns,
                                  Movement::count_difference,
                                  Movement::vouchers,
                                  Movement::transfers_in,
                                  Movement::from_bank,
                                  Movement::in_and_out,
                                  Movement::transfers_out,
                                  Movement::to_bank,
                                  Movement::expenses};

constexpr Movement period_order[] = {Movement::card_sales, Movement::card_returns, Movement::uncollected};

constexpr Movement discount_order[] = {Movement::discounts, Movement::returned_discounts};

}  // namespace

// order, span, drawer first, rounded rows, counts by bare date, opening, missing time
const Procedure store_wide{store_wide_order, Span::before, false, false, false, "copen", "'00:00:00'"};
const Procedure calc_of_shift_close{calc_order, Span::before, false, true, true, "salary1", "'00:00:00'"};
const Procedure calc_of_shift_start{calc_order, Span::before, false, true, true, "salary1", "'00:00'"};
const Procedure balance_brought_forward{calc_order, Span::up_to, true, false, false, "copen", "'00:00:00'"};
const Procedure statement_day{day_order, Span::day, true, false, false, "copen", "'00:00:00'"};
const Procedure shift_period{period_order, Span::period, false, false, false, "copen", "'00:00:00'"};

const Procedure discount_period{discount_order, Span::since, false, false, false, "copen", "'00:00:00'"};

const Term& term(Movement movement) {
    return terms[static_cast<std::size_t>(movement)];
}

}  // namespace cash
