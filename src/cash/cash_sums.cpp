#include "cash/cash_sums.h"

#include <array>
#include <memory>
#include <stdexcept>

namespace cash {

namespace {

using database::Fragment;
using database::quoted;
using database::Sql;

constexpr std::array terms{
    Term{Movement::opening, +1, "رصيد افتتاحي", "xtot", ""},
    Term{Movement::sales, +1, "مبيعات نقدية", "xs", "ptot"},
    Term{Movement::card_sales, -1, "مبيعات إئتمان", "xs", "ptot"},
    Term{Movement::card_returns, +1, "مرتجع إئتمان", "xs", "ptot"},
    Term{Movement::tips, -1, "اكراميـــــات", "xs", "disboun"},
    Term{Movement::coupons, -1, "بـــونــــات", "xs", "disboun"},
    Term{Movement::uncollected, -1, "تليفون لم يحصل", "xs", "ptot"},
    Term{Movement::returns, -1, "مرتجع نقدي", "xs", "ptot"},
    Term{Movement::returned_coupons, +1, "مرتجع بونات", "xs", "disboun"},
    Term{Movement::discounts, -1, "خصومات البونات", "xs", "pdis"},
    Term{Movement::returned_discounts, +1, "خصومات المرتجع", "xs", "pdis"},
    Term{Movement::account_sales, 0, "مبيعات آجلة", "xs", "ptot"},
    Term{Movement::account_returns, 0, "مرتجعات آجلة", "xs", "ptot"},
    Term{Movement::receipts, +1, "مقبوضــــات", "a2", "quan", "ptype", 2},
    Term{Movement::payments, -1, "مدفوعــــات", "a1", "quan", "ptype", 1},
    Term{Movement::to_bank, -1, "تحويل الي بنك", "xs", "quan"},
    Term{Movement::from_bank, +1, "تحويل من بنك", "xs", "quan"},
    Term{Movement::transfers_out, -1, "تحويل من الخزينة", "xs", "caml"},
    Term{Movement::transfers_in, +1, "تحويل الي الخزينة", "xs", "caml"},
    Term{Movement::withdrawals, -1, "مسحوبات شخصيه", "Expr1", "aml", "type1", 0},
    Term{Movement::deposits, +1, "ايداع شخصي", "Expr2", "aml", "type1", 1},
    Term{Movement::expenses, -1, "مصروفــــــات", "xs", "value"},
    Term{Movement::count_difference, +1, "زيادة / عجز جردي", "xs", "aml"},
};

constexpr bool in_order() {
    for (std::size_t i = 0; i < terms.size(); ++i) {
        if (terms[i].movement != static_cast<Movement>(i)) return false;
    }
    return true;
}
static_assert(in_order(), "a term must be at the index of its movement");

// Invoices: vcode -1 is a walk-in customer; stype 1 card, 2 tips, 3 coupon, 4 with safe 0 a telephone order
// that has not been paid yet; ctype 0 and 1 are sales, 2 and 3 returns. ptot is the total before the invoice
// discount (pdis). A procedure takes the discounts off exactly those invoices that bring it cash or take cash
// from it. A tips sale's discount is its disboun, which is subtracted anyway. The date is wrapped where it is
// compared with net_from, or SQLite would look for all invoices since that day in the index by day, and for
// each of them in the table.

// Statements that several procedures have in common.
constexpr Fragment opening = "select sum(copen) as xtot from cash where stcode = {store} and code = {drawer}";
constexpr SumStatement vouchers = {
    Movement::receipts,
    "SELECT Sum(case when [ptype]=1 then [quan] else 0 end ) AS a1, "
    "Sum(case when [ptype]=2 then [quan] else 0 end ) AS a2 From vencuspay WHERE  vencuspay.type=1 AND "
    "{moment vencuspay.date} And stcode = {store} and cash_n = {drawer}",
    Movement::payments};
constexpr SumStatement to_bank = {
    Movement::to_bank,
    "SELECT Sum(btran.quan) AS xs From btran Where {moment [date]} and btran.Type = 1 And btran.type1 = 1   "
    "And stcode = {store} and cash_n = {drawer}"};
constexpr SumStatement from_bank = {
    Movement::from_bank,
    "SELECT Sum(btran.quan) AS xs From btran Where {moment [date]} and btran.Type = 0 And btran.type1 = 1  "
    "And stcode = {store} and cash_n = {drawer}"};
constexpr SumStatement transfers_out = {
    Movement::transfers_out,
    "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr={store}  and {moment cdate}  "
    "and cach_t.cash_nf = {drawer}"};
constexpr SumStatement left_statements[] = {transfers_out};
constexpr SumStatement transfers_in = {
    Movement::transfers_in,
    "SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cto={store}  and {moment cdate}  "
    "and cach_t.cash_nt = {drawer}"};
constexpr SumStatement in_and_out = {
    Movement::withdrawals,
    "SELECT Sum(case when [type1]=0 then [aml] else 0 end ) AS Expr1, "
    "Sum(case when [type1]=1 then [aml] else 0 end ) AS Expr2 From in_out WHERE {moment in_out.date} "
    "And stcode = {store} and cash_n = {drawer}",
    Movement::deposits};
constexpr SumStatement expenses = {Movement::expenses,
                                   " select sum(value) as xs from dailyexp where {moment expdate}  "
                                   "And stcode = {store} and cash_n = {drawer}"};

// The discounts of the position.
constexpr SumStatement discounts = {
    Movement::discounts,
    "select sum(pdis) as xs from sales where {moment [date]} and isnull([date],'1753/01/01') >= {net_from} "
    "and stcode = {store} "
    "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype <> 1 and stype <> 2 "
    "and (stype <> 4 Or isnull(safe,1) <> 0) and pdis <> 0 and ptype = {drawer}"};
constexpr SumStatement returned_discounts = {
    Movement::returned_discounts,
    "select sum(pdis) as xs from sales where {moment [date]} and isnull([date],'1753/01/01') >= {net_from} "
    "and stcode = {store} "
    "and (ctype = 3 Or ctype = 2) and vcode = -1 and stype <> 1 and pdis <> 0 and ptype = {drawer}"};

// The position. Card sales are left out of the sales, and the coupons of returns come back.
constexpr SumStatement store_wide_statements[] = {
    {Movement::opening, opening},
    {Movement::sales,
     "select sum(ptot) as xs from sales where  {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype <> 1  and ptype = {drawer}"},
    {Movement::tips,
     "select sum(disboun) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = {drawer}"},
    {Movement::coupons,
     "select sum(disboun) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3  and ptype = {drawer}"},
    {Movement::uncollected,
     "select sum(ptot) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = {drawer}"},
    {Movement::returns,
     "select sum(ptot) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 3 Or ctype = 2) and vcode = -1   and stype <> 1 and ptype = {drawer}"},
    {Movement::returned_coupons,
     "select sum(disboun) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 3  and ptype = {drawer}"},
    discounts,
    returned_discounts,
    vouchers,
    to_bank,
    from_bank,
    transfers_out,
    transfers_in,
    in_and_out,
    expenses,
    {Movement::count_difference,
     "SELECT  sum(mor_les.aml) as xs FROM mor_les where ({moment date})  "
     "And stcode = {store} and ptype = {drawer}"},
};

// The figures of a shift beside its position. The date column has no brackets here.
constexpr SumStatement period_statements[] = {
    {Movement::card_sales,
     "select sum(ptot) as xs from sales where  {moment date} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = {drawer}"},
    {Movement::card_returns,
     "select sum(ptot) as xs from sales where  {moment date} and stcode = {store} "
     "and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 1 and ptype = {drawer}"},
    {Movement::uncollected,
     "select sum(ptot) as xs from sales where {moment date}  and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = {drawer}"},
};

constexpr SumStatement discount_statements[] = {discounts, returned_discounts};

// calc_cash. Card sales are counted and subtracted again; kind 1 is both a sale and a return while kind 3 is
// neither; the surplus or shortage is counted by its date without its time.
constexpr SumStatement calc_statements[] = {
    {Movement::opening, "select sum(salary1) as xtot from cash where stcode = {store} and code = {drawer}"},
    {Movement::sales,
     "select sum(round(ptot,2)) as xs from sales where  {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1  and ptype = {drawer}"},
    {Movement::card_sales,
     "select sum(round(ptot,2)) as xs from sales where  {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = {drawer}"},
    {Movement::tips,
     "select sum(round(disboun,2)) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = {drawer}"},
    {Movement::coupons,
     "select sum(round(disboun,2)) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3  and ptype = {drawer}"},
    {Movement::uncollected,
     "select sum(round(ptot,2)) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = {drawer}"},
    {Movement::returns,
     "select sum(round(ptot,2)) as xs from sales where {moment [date]} and stcode = {store} "
     "and (ctype = 1 Or ctype = 2) and vcode = -1   and ptype = {drawer}"},
    {Movement::discounts,
     "select sum(round(pdis,2)) as xs from sales where {moment [date]} and isnull([date],'1753/01/01') >= "
     "{net_from} "
     "and stcode = {store} and (ctype = 0 Or ctype = 1) and vcode = -1 and isnull(stype,0) <> 1 "
     "and isnull(stype,0) <> 2 and (isnull(stype,0) <> 4 Or isnull(safe,1) <> 0) and pdis <> 0 "
     "and ptype = {drawer}"},
    {Movement::returned_discounts,
     "select sum(round(pdis,2)) as xs from sales where {moment [date]} and isnull([date],'1753/01/01') >= "
     "{net_from} "
     "and stcode = {store} and (ctype = 1 Or ctype = 2) and vcode = -1 and pdis <> 0 and ptype = {drawer}"},
    vouchers,
    {Movement::to_bank,
     "SELECT Sum(round(btran.quan,2)) AS xs From btran Where {moment [date]} and btran.Type = 1 And "
     "btran.type1 = 1   And stcode = {store} and cash_n = {drawer}"},
    {Movement::from_bank,
     "SELECT Sum(round(btran.quan,2)) AS xs From btran Where {moment [date]} and btran.Type = 0 And "
     "btran.type1 = 1  And stcode = {store} and cash_n = {drawer}"},
    transfers_out,
    transfers_in,
    in_and_out,
    expenses,
    {Movement::count_difference,
     "SELECT  sum(mor_les.aml) as xs FROM mor_les where (date <{until} )  "
     "And stcode = {store} and ptype = {drawer}"},
};

// The daily statement: the balance brought forward leaves out the two account sums at the end, the day leaves
// out the opening balance.
constexpr SumStatement daily_statements[] = {
    {Movement::opening, opening},
    {Movement::sales,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 "},
    {Movement::card_sales,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1 "},
    {Movement::tips,
     "select sum(disboun) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2 "},
    {Movement::coupons,
     "select sum(disboun) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3 "},
    {Movement::uncollected,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0 "},
    {Movement::returns,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 1 Or ctype = 2) and vcode = -1  "},
    {Movement::discounts,
     "select sum(pdis) as xs from sales where ptype = {drawer} and {moment [date]} and "
     "isnull([date],'1753/01/01') >= {net_from} "
     "and stcode = {store} and (ctype = 0 Or ctype = 1) and vcode = -1 and isnull(stype,0) <> 1 "
     "and isnull(stype,0) <> 2 and (isnull(stype,0) <> 4 Or isnull(safe,1) <> 0) and pdis <> 0"},
    {Movement::returned_discounts,
     "select sum(pdis) as xs from sales where ptype = {drawer} and {moment [date]} and "
     "isnull([date],'1753/01/01') >= {net_from} "
     "and stcode = {store} and (ctype = 1 Or ctype = 2) and vcode = -1 and pdis <> 0"},
    vouchers,
    to_bank,
    from_bank,
    transfers_out,
    transfers_in,
    in_and_out,
    expenses,
    // Drawers of different stores share their numbers, so the store is named here as in every other sum.
    {Movement::count_difference,
     "SELECT  sum(mor_les.aml) as xs FROM mor_les where {moment [date]} and ptype = {drawer} "
     "and stcode = {store}"},
    {Movement::account_sales,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 0 Or ctype = 1) and vcode <> -1 "},
    {Movement::account_returns,
     "select sum(ptot) as xs from sales where ptype = {drawer} and {moment [date]} and stcode = {store} "
     "and (ctype = 1 Or ctype = 2) and vcode <> -1  "},
};
constexpr std::span<const SumStatement> of_daily_statement{daily_statements};

// The moment of a row is its date joined with its time; a missing time counts as midnight.
constexpr Fragment before_end =
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    "<{until}";
constexpr Fragment before_end_of_shift_start =
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)"
    "<{until}";
constexpr Fragment up_to_end =
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    "<={until}";
constexpr Fragment in_day =
    "(cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    ">{from} and "
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    "<={until})";
constexpr Fragment in_shift =
    "(cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    ">{from_blank} and "
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    "<={until})";
constexpr Fragment since_start =
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    ">={from} and "
    "cast(convert(varchar,{column},101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)"
    "<{until}";

// Puts the values into the places of a statement.
class Filler {
  public:
    Filler(const Procedure& procedure, const Drawer& drawer, const Window& window)
        : procedure_(procedure), drawer_(drawer), window_(window) {}

    void append(Sql& statement, Fragment text, Fragment column = "") const {
        std::size_t at = 0;
        for (;;) {
            const std::size_t open = text.text().find('{', at);
            if (open == std::string_view::npos) break;
            const std::size_t close = text.text().find('}', open);
            statement += text.piece(at, open - at);
            append_value(statement, text.piece(open + 1, close - open - 1), column);
            at = close + 1;
        }
        statement += text.piece(at);
    }

  private:
    void append_value(Sql& statement, Fragment place, Fragment column) const {
        constexpr std::string_view moment = "moment ";
        const std::string_view name = place.text();
        if (name == "store") {
            statement += drawer_.store;
        } else if (name == "drawer") {
            statement += drawer_.code;
        } else if (name == "column") {
            statement += column;
        } else if (name == "from") {
            statement += quoted(window_.from);
        } else if (name == "from_blank") {
            statement += quoted(window_.from + " ");
        } else if (name == "until") {
            statement += quoted(window_.until);
        } else if (name == "net_from") {
            statement += quoted(window_.net_from.value());
        } else if (name.starts_with(moment)) {
            append(statement, procedure_.moment, place.piece(moment.size()));
        } else {
            throw std::logic_error("a statement has an unknown place: " + std::string(name));
        }
    }

    const Procedure& procedure_;
    const Drawer& drawer_;
    const Window& window_;
};

// A shop that counts drawers with the invoice discounts does not sum them.
bool applies(const SumStatement& statement, const Window& window) {
    return window.net_from || statement.text.text().find("{net_from}") == std::string_view::npos;
}

// The statement that sums a movement; null if there is none in this window.
const SumStatement* find_statement(const Procedure& procedure, Movement movement, const Window& window) {
    for (const SumStatement& entry : procedure.statements) {
        if ((entry.movement == movement || entry.second == movement) && applies(entry, window)) return &entry;
    }
    return nullptr;
}

}  // namespace

const Procedure store_wide{store_wide_statements, before_end};
const Procedure shift_period{period_statements, in_shift};
const Procedure discount_period{discount_statements, since_start};
const Procedure left_drawer{left_statements, since_start};
const Procedure calc_of_shift_close{calc_statements, before_end};
const Procedure calc_of_shift_start{calc_statements, before_end_of_shift_start};
const Procedure balance_brought_forward{of_daily_statement.first(of_daily_statement.size() - 2), up_to_end};
const Procedure statement_day{of_daily_statement.subspan(1), in_day};

const Term& term(Movement movement) {
    return terms[static_cast<std::size_t>(movement)];
}

Window until(const common::Moment& moment, const std::optional<common::Date>& net_from) {
    return {"", common::moment_text(moment), net_from};
}

common::Amount Sum::counted() const {
    if (term->sign == 0) return {};
    return term->sign < 0 ? -amount : amount;
}

bool is_summed(const Procedure& procedure, Movement movement, const Window& window) {
    return find_statement(procedure, movement, window) != nullptr;
}

Sql rows_statement(const Procedure& procedure, Movement movement, const Drawer& drawer,
                   const Window& window) {
    const SumStatement* found = find_statement(procedure, movement, window);
    if (found == nullptr) throw std::logic_error("the procedure does not sum this movement");
    // " from ", " From " or " FROM " ends the sums.
    const std::string_view text = found->text.text();
    std::size_t from = text.find("rom ");
    if (from == std::string_view::npos) from = text.find("ROM ");
    Sql filled("select * ");
    Filler(procedure, drawer, window).append(filled, found->text.piece(from - 1));
    return filled;
}

std::vector<Sum> read_sums(database::Connection& connection, const Procedure& procedure, const Drawer& drawer,
                           const Window& window) {
    std::vector<Sum> read;
    database::Reads reads;
    ask_sums(reads, procedure, drawer, window, [&](const std::vector<Sum>& sums) { read = sums; });
    reads.run(connection);
    return read;
}

void ask_sums(database::Reads& reads, const Procedure& procedure, const Drawer& drawer, const Window& window,
              std::function<void(const std::vector<Sum>& sums)> take) {
    const auto sums = std::make_shared<std::vector<Sum>>();
    const SumStatement* last = nullptr;
    for (const SumStatement& statement : procedure.statements)
        if (applies(statement, window)) last = &statement;
    for (const SumStatement& statement : procedure.statements) {
        if (!applies(statement, window)) continue;
        Sql filled("");
        Filler(procedure, drawer, window).append(filled, statement.text);
        reads.add(std::move(filled),
                  [&statement, sums, take, is_last = &statement == last](const database::Result& result) {
                      const auto add = [&](Movement movement) {
                          const Term& described = term(movement);
                          const double amount = result.empty() ? 0 : result.front().number(described.column);
                          sums->push_back({&described, common::Amount(amount)});
                      };
                      add(statement.movement);
                      if (statement.second) add(*statement.second);
                      if (is_last) take(*sums);
                  });
    }
}

common::Amount total_of(const std::vector<Sum>& sums) {
    common::Amount total;
    for (const Sum& sum : sums)
        total += sum.counted();
    return total;
}

}  // namespace cash
