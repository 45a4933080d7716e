// The statements of every procedure, to the letter: other programs on the same database are checked against
// them.
#include "cash/cash_terms.h"

#include <gtest/gtest.h>

namespace cash {
namespace {

// "M" stands for the row's moment, "M(column)" names its date column; "S" and "D" for store 1 and drawer 2.
std::string spelled(std::string text, const std::string& missing = "'00:00:00'") {
    const auto replace = [&text](const std::string& from, const std::string& to) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    };
    for (const char* column : {"[date]", "date", "vencuspay.date", "cdate", "in_out.date", "expdate"}) {
        replace("M(" + std::string(column) + ")", "cast(convert(varchar," + std::string(column) +
                                                      ",101) + ' ' + isnull(convert(varchar,[time_],8)," +
                                                      missing + ") as datetime)");
    }
    return text;
}

constexpr Drawer drawer{1, 2};
const Window at{"2026/11/20 08:00:00", "2026/11/21 10:42:00"};

struct Expected {
    Movement movement;
    const char* text;
};

void expect_texts(const Procedure& procedure, const std::vector<Expected>& expected,
                  const std::string& missing = "'00:00:00'") {
    for (const Expected& entry : expected) {
        EXPECT_EQ(sum_statement(procedure, entry.movement, drawer, at).text(), spelled(entry.text, missing));
    }
}

TEST(CashTerms, StoreWideStatements) {
    expect_texts(
        store_wide,
        {{Movement::opening, "select sum(copen) as xtot from cash where stcode = 1 and code = 2"},
         {Movement::sales_but_card,
          "select sum(ptot) as xs from sales where  M([date])<'2026/11/21 10:42:00' and stcode = 1 and "
          "(ctype = 0 "
          "Or ctype = 1) and vcode = -1 and stype <> 1  and ptype = 2"},
         {Movement::tips,
          "select sum(disboun) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 and "
          "(ctype = "
          "0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 2"},
         {Movement::coupons,
          "select sum(disboun) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 and "
          "(ctype = "
          "0 Or ctype = 1) and vcode = -1 and stype = 3  and ptype = 2"},
         {Movement::uncollected,
          "select sum(ptot) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 and (ctype "
          "= 0 "
          "Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 2"},
         {Movement::returns_but_card,
          "select sum(ptot) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 and (ctype "
          "= 3 "
          "Or ctype = 2) and vcode = -1   and stype <> 1 and ptype = 2"},
         {Movement::returned_coupons,
          "select sum(disboun) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 and "
          "(ctype = "
          "2 Or ctype = 3) and vcode = -1 and stype = 3  and ptype = 2"},
         {Movement::vouchers,
          "SELECT Sum(case when [ptype]=1 then [quan] else 0 end ) AS a1, Sum(case when [ptype]=2 then "
          "[quan] "
          "else 0 end ) AS a2 From vencuspay WHERE  vencuspay.type=1 AND M(vencuspay.date)<'2026/11/21 "
          "10:42:00' "
          "And stcode = 1 and cash_n = 2"},
         {Movement::to_bank,
          "SELECT Sum(btran.quan) AS xs From btran Where M([date])<'2026/11/21 10:42:00' and btran.Type = 1 "
          "And "
          "btran.type1 = 1   And stcode = 1 and cash_n = 2"},
         {Movement::from_bank,
          "SELECT Sum(btran.quan) AS xs From btran Where M([date])<'2026/11/21 10:42:00' and btran.Type = 0 "
          "And "
          "btran.type1 = 1  And stcode = 1 and cash_n = 2"},
         {Movement::transfers_out,
          "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr=1  and M(cdate)<'2026/11/21 "
          "10:42:00'  and cach_t.cash_nf = 2"},
         {Movement::transfers_in,
          "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cto=1  and M(cdate)<'2026/11/21 "
          "10:42:00'  and cach_t.cash_nt = 2"},
         {Movement::in_and_out,
          "SELECT Sum(case when [type1]=0 then [aml] else 0 end ) AS Expr1, Sum(case when [type1]=1 then "
          "[aml] "
          "else 0 end ) AS Expr2 From in_out WHERE M(in_out.date)<'2026/11/21 10:42:00' And stcode = 1 and "
          "cash_n "
          "= 2"},
         {Movement::expenses,
          " select sum(value) as xs from dailyexp where M(expdate)<'2026/11/21 10:42:00'  And stcode = 1 and "
          "cash_n = 2"},
         {Movement::count_difference,
          "SELECT  sum(mor_les.aml) as xs FROM mor_les where (M(date)<'2026/11/21 10:42:00')  And stcode = 1 "
          "and "
          "ptype = 2"}});
}

// The start's literal ends in a blank.
TEST(CashTerms, StatementsOfTheShiftPeriod) {
    expect_texts(
        shift_period,
        {{Movement::card_sales,
          "select sum(ptot) as xs from sales where  (M(date)>'2026/11/20 08:00:00 ' and "
          "M(date)<='2026/11/21 10:42:00') and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and "
          "stype = 1  and ptype = 2"},
         {Movement::card_returns,
          "select sum(ptot) as xs from sales where  (M(date)>'2026/11/20 08:00:00 ' and "
          "M(date)<='2026/11/21 10:42:00') and stcode = 1 and (ctype = 2 Or ctype = 3) and vcode = -1 and "
          "stype = 1 and ptype = 2"},
         {Movement::uncollected,
          "select sum(ptot) as xs from sales where (M(date)>'2026/11/20 08:00:00 ' and "
          "M(date)<='2026/11/21 10:42:00')  and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and "
          "stype = 4 and safe = 0  and ptype = 2"}});
}

TEST(CashTerms, CalcCashStatementsOfBothCopies) {
    const std::vector<Expected> expected{
        {Movement::opening, "select sum(salary1) as xtot from cash where stcode = 1 and code = 2"},
        {Movement::sales,
         "select sum(round(ptot,2)) as xs from sales where  M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and "
         "(ctype = 0 Or ctype = 1) and vcode = -1  and ptype = 2"},
        {Movement::card_sales,
         "select sum(round(ptot,2)) as xs from sales where  M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and "
         "(ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = 2"},
        {Movement::coupons,
         "select sum(round(disboun,2)) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and "
         "(ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3  and ptype = 2"},
        {Movement::returns,
         "select sum(round(ptot,2)) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and "
         "(ctype = 1 Or ctype = 2) and vcode = -1   and ptype = 2"},
        {Movement::to_bank,
         "SELECT Sum(round(btran.quan,2)) AS xs From btran Where M([date])<'2026/11/21 10:42:00' and "
         "btran.Type = "
         "1 And btran.type1 = 1   And stcode = 1 and cash_n = 2"},
        {Movement::tips,
         "select sum(round(disboun,2)) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 2"},
        {Movement::uncollected,
         "select sum(round(ptot,2)) as xs from sales where M([date])<'2026/11/21 10:42:00' and stcode = 1 "
         "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 2"},
        {Movement::from_bank,
         "SELECT Sum(round(btran.quan,2)) AS xs From btran Where M([date])<'2026/11/21 10:42:00' and "
         "btran.Type = 0 And btran.type1 = 1  And stcode = 1 and cash_n = 2"},
        {Movement::transfers_out,
         "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr=1  and M(cdate)<'2026/11/21 "
         "10:42:00'  and cach_t.cash_nf = 2"},
        {Movement::transfers_in,
         "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cto=1  and M(cdate)<'2026/11/21 "
         "10:42:00'  and cach_t.cash_nt = 2"},
        {Movement::expenses,
         " select sum(value) as xs from dailyexp where M(expdate)<'2026/11/21 10:42:00'  And stcode = 1 and "
         "cash_n = 2"},
        {Movement::count_difference,
         "SELECT  sum(mor_les.aml) as xs FROM mor_les where (date <'2026/11/21 10:42:00' )  And stcode = 1 "
         "and "
         "ptype = 2"}};
    expect_texts(calc_of_shift_close, expected);
    expect_texts(calc_of_shift_start, expected, "'00:00'");
}

TEST(CashTerms, StatementsOfThePreviousBalance) {
    expect_texts(balance_brought_forward,
                 {{Movement::opening, "select sum(copen) as xtot from cash where stcode = 1 and code = 2"},
                  {Movement::sales,
                   "select sum(ptot) as xs from sales where ptype = 2 and M([date])<='2026/11/21 10:42:00' "
                   "and stcode = 1 "
                   "and (ctype = 0 Or ctype = 1) and vcode = -1 "},
                  {Movement::returns,
                   "select sum(ptot) as xs from sales where ptype = 2 and M([date])<='2026/11/21 10:42:00' "
                   "and stcode = 1 and (ctype = 1 Or ctype = 2) and vcode = -1  "},
                  {Movement::expenses,
                   " select sum(value) as xs from dailyexp where M(expdate)<='2026/11/21 10:42:00'  And "
                   "stcode = 1 and cash_n = 2"},
                  // Drawers of other stores have the same numbers.
                  {Movement::count_difference,
                   "SELECT  sum(mor_les.aml) as xs FROM mor_les where M([date])<='2026/11/21 10:42:00' and "
                   "ptype = 2 and "
                   "stcode = 1"}});
}

}  // namespace
}  // namespace cash
