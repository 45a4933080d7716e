// A line turned between the units of its item.
#include <algorithm>
#include <vector>

#include "sales/items.h"
#include "sales/line_editing.h"
#include "sales/messages.h"

namespace sales {

namespace {

constexpr int unit_levels = 3;

// The item in each unit that it is sold in at a price level, in the order of the key, starting after the
// line's own.
std::vector<Item> other_units(const database::Result& cards, const Line& line, int price_level) {
    std::vector<Item> units;
    const int own = unit_level_of(line.unit_code);
    for (int step = 1; step < unit_levels; ++step) {
        const auto item = item_of(cards, (own - 1 + step) % unit_levels + 1);
        if (item && item->factor > 0 && entry_price(*item, price_level).value_or(0) > 0)
            units.push_back(*item);
    }
    return units;
}

// The line as if it had been entered in that unit.
Line in_unit(Line line, const Item& item, double price) {
    if (line.balance) line.balance = *line.balance * line.factor / item.factor;
    line.price = price;
    line.factor = item.factor;
    line.unit_code = item.unit_level;
    line.unit_name = unit_name(item.unit_level);
    line.unit_cost = item.prices[cost_level - 1].value_or(0);
    line.clearance = is_clearance(item);
    line.granted.emplace().price = price;
    return line;
}

}  // namespace

bool LineEditing::next_unit(Invoice& invoice, std::size_t row) {
    Line& line = invoice.lines[row];
    if (!line.item_code || line.salver_code != 0 || line.returnable) return refuse(message::fixed_unit);
    std::vector<Item> units;
    ItemStock stock;
    database::Reads reads;
    reads.add(item_statement(*line.item_code),
              [&](const database::Result& cards) { units = other_units(cards, line, invoice.price_level); });
    stock.ask(reads, *line.item_code, stores_asked(invoice, *line.item_code, 0));
    reads.run(connection_);
    if (units.empty()) return refuse(message::one_unit);

    const Line before = line;
    bool asked = false;
    for (const Item& item : units) {
        if (const auto refusal = item_refusal(item, invoice.is_return())) return refuse(*refusal);
        const bool takes_more = item.factor > before.factor;
        if (takes_more && asked) continue;
        line = in_unit(before, item, *entry_price(item, invoice.price_level));
        if (exceeds_ceiling(line.discount, line.gross(), session_.settings.max_dis)) {
            line = before;
            return refuse(message::price_against_discount);
        }
        if (!takes_more || stock_allows(invoice, line, line.quantity, stock, std::nullopt)) return true;
        asked = true;
        line = before;
    }
    return false;
}

}  // namespace sales
