// Goods taken in from a supplier, or returned to one, as a plain value: what is typed, kept as a draft and
// saved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "accounts/vendor_account.h"
#include "common/amount.h"
#include "common/json.h"

namespace purchases {

using accounts::PurchaseKind;

struct Line {
    std::int64_t item = 0;
    std::string name;
    int unit_level = 1;   // 1 unit, 2 pack, 3 carton
    double factor = 1;    // base units in that unit
    double quantity = 0;  // in that unit
    double price = 0;     // what one of it costs
    double discount = 0;  // of the line, a value
    std::optional<common::Date> expiry;

    // What the card says of that unit; 0 where it says nothing.
    double former_price = 0;  // its cost
    double retail = 0;

    // A new retail price of that unit; or a margin in percent of the cost for all units of the item, rounded
    // to a multiple of `step`.
    std::optional<double> new_retail;
    std::optional<double> margin;
    int step = 0;  // in hundredths

    // On a return that was started from a receipt: its line there, and the most that may still go back.
    std::int64_t source = 0;
    std::optional<double> returnable;

    double base_quantity() const { return quantity * factor; }
    double gross() const { return quantity * price; }
    common::Amount value() const { return common::Amount(gross() - discount); }
    // The batch in the store.
    common::Date batch() const { return expiry.value_or(common::no_expiry); }
};

struct Receipt {
    PurchaseKind kind = PurchaseKind::supply;
    // Drawn by chance when the document is begun and stored with it, so that it is never saved twice.
    std::int64_t id = 0;
    std::optional<std::int64_t> supplier;
    std::string invoice;  // the supplier's number of it
    common::Date date;
    std::int64_t store = 0;
    std::vector<Line> lines;
    common::Amount discount;  // of the whole
    common::Amount tax;
    std::string note;
    std::optional<std::int64_t> drawer;  // pays the net at once, or takes the net of a return
    std::int64_t source = 0;             // on a return: the number of the receipt that it was started from
    std::int64_t corrects = 0;           // the number of a receipt that is taken back when this one is saved

    bool is_return() const { return kind == PurchaseKind::vendor_return; }
    common::Amount total() const;
    common::Amount net() const { return total() - discount + tax; }
    // What each line costs in total, with its share of discount and tax; together they are the net.
    std::vector<common::Amount> costs() const;
};

// What one of the line's units costs after all discounts and the tax.
double unit_cost(const Line& line, common::Amount cost);

TALLVEX_JSON(Line, item, name, unit_level, factor, quantity, price, discount, expiry, former_price, retail,
             new_retail, margin, step, source, returnable)
TALLVEX_JSON(Receipt, kind, id, supplier, invoice, date, store, lines, discount, tax, note, drawer, source,
             corrects)

}  // namespace purchases
