#include "cash/difference_causes.h"

#include <algorithm>

namespace cash {

using common::Amount;

namespace {

// A movement of the difference, or of half of it, explains a shortage (-1) or a surplus (+1).
struct Rule {
    Figure figure;
    int side;
    int times;
    std::string_view text;
};
constexpr Rule rules[] = {
    // a cash sale of that amount: perhaps paid by card, or not at all
    {Figure::cash_sales, -1, 1, "بيع نقدي بنفس القيمة، ربما دفع ببطاقة أو لم يدفع"},
    // a return: perhaps paid out twice
    {Figure::cash_returns, -1, 1, "مرتجع بنفس القيمة، ربما رد مرتين"},
    // an expense: perhaps paid twice
    {Figure::expenses, -1, 1, "مصروف بنفس القيمة، ربما صرف مرتين"},
    // a receipt: perhaps it never came into the drawer
    {Figure::receipts, -1, 1, "قبض بنفس القيمة، ربما لم يدخل الدرج"},
    // a sale of half the amount: perhaps it was a return
    {Figure::cash_sales, -1, 2, "بيع بنصف القيمة، ربما كان مرتجعا"},
    // a card sale: perhaps paid in cash
    {Figure::card_sales, +1, 1, "بيع ببطاقة بنفس القيمة، ربما دفع نقدا"},
    // a return: perhaps not paid out
    {Figure::cash_returns, +1, 1, "مرتجع بنفس القيمة، ربما لم يرد للعميل"},
    // an expense, a payment: perhaps not paid out
    {Figure::expenses, +1, 1, "مصروف بنفس القيمة، ربما لم يصرف"},
    {Figure::payments, +1, 1, "دفع بنفس القيمة، ربما لم يصرف"},
    // a return of half the amount: perhaps it was a sale
    {Figure::cash_returns, +1, 2, "مرتجع بنصف القيمة، ربما كان بيعا"},
};
// The discount of one receipt; the discounts of all of them, which the expected cash contains.
constexpr std::string_view one_discount = "خصم على بون بنفس القيمة";
constexpr std::string_view all_discounts = "خصومات البونات، غير مطروحة من الرصيد الدفتري";

// Returns true if the cash of a movement is the amount. An invoice moves its net, and some shops expect its
// total.
bool is_worth(const FigureRow& row, Amount amount, int times) {
    const auto matches = [&](double value) {
        return Amount::of_hundredths(Amount(value).hundredths() * times) == amount;
    };
    return matches(row.amount) || matches(row.amount - row.discount);
}

}  // namespace

DifferenceCauses::DifferenceCauses(database::Connection& connection, const Drawer& drawer,
                                   const common::Moment& from, const common::Moment& until) {
    for (const Rule& rule : rules) {
        if (!rows_.contains(rule.figure))
            rows_.emplace(rule.figure, rows_between(connection, drawer, from, until, rule.figure));
    }
    // All sales to walk-in customers are in one sum, those by card too.
    std::erase_if(rows_[Figure::cash_sales].rows, [](const FigureRow& row) { return row.by_card; });
}

std::vector<Cause> DifferenceCauses::of(Amount difference, Amount beside) const {
    std::vector<Cause> causes;
    if (difference.is_zero()) return causes;
    const int side = difference < Amount() ? -1 : +1;
    const Amount amount = side < 0 ? -difference : difference;
    const auto& sales = rows(Figure::cash_sales).rows;
    const auto discounted =
        std::find_if(sales.begin(), sales.end(), [](const FigureRow& row) { return row.discount != 0; });
    if (side < 0 && amount == beside && discounted != sales.end())
        causes.push_back(
            {all_discounts, Figure::cash_sales, static_cast<std::size_t>(discounted - sales.begin())});
    const auto add = [&](std::string_view text, Figure figure, auto is_cause) {
        const auto& all = rows(figure).rows;
        for (std::size_t at = 0; at < all.size(); ++at)
            if (is_cause(all[at])) causes.push_back({text, figure, at});
    };
    for (const Rule& rule : rules) {
        if (rule.side == side)
            add(rule.text, rule.figure,
                [&](const FigureRow& row) { return is_worth(row, amount, rule.times); });
    }
    add(one_discount, Figure::cash_sales,
        [&](const FigureRow& row) { return row.discount != 0 && Amount(row.discount) == amount; });
    return causes;
}

}  // namespace cash
