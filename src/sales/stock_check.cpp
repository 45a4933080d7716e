#include "sales/stock_check.h"

#include "common/numbers.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

using database::Sql;

double available_stock(database::Connection& connection, std::int64_t item, std::int64_t store) {
    return database::number_of(connection.scalar(Sql("select sum(quan) as qt from stk where icode = ") +
                                                 item + " AND stcode = " + store));
}

bool stock_suffices(double available, double needed) {
    // Rounding never turns two numbers round.
    return available >= needed || common::round_decimals(available, 3) >= common::round_decimals(needed, 3);
}

double held_by_lines(const Invoice& invoice, std::int64_t item, std::int64_t store, const Line* except) {
    double held = 0;
    for (const Line& line : invoice.lines) {
        if (&line == except || line.item_code != item) continue;
        const std::int64_t from =
            line.source_kind == SourceKind::other_store ? line.source_store : invoice.store;
        if (from == store) held += line.base_quantity();
    }
    return held;
}

StockAnswer StockCheck::judge(const StockNeed& need, std::string_view refusal) {
    const double available = available_stock(connection_, need.item, need.store);
    if (stock_suffices(available, need.base_quantity)) return StockAnswer::enough;
    const double reserved = database::number_of(
        connection_.scalar(Sql("select sum(quan1) as rq from reservd where icode = ") + need.item));
    // Goods set aside for others are there: to sell them is one question, not also a sale below stock.
    if (reserved > 0 && stock_suffices(reserved, need.base_quantity - available)) return ask_for_reserved();
    if (!signin::authorise(session_, prompts_, signin::Action::sell_below_stock, refusal, common::Icon::none))
        return StockAnswer::refused;
    return ask_override(need, available) ? StockAnswer::confirmed : StockAnswer::refused;
}

StockAnswer StockCheck::ask_for_reserved() {
    if (!prompts_.question(message::stock_reserved, common::Icon::critical)) return StockAnswer::refused;
    return signin::authorise(session_, prompts_, signin::Action::sell_reserved,
                             message::may_not_sell_reserved)
               ? StockAnswer::confirmed
               : StockAnswer::refused;
}

// The one place where a sale below stock is confirmed: item, stock and need in the cashier's unit.
bool StockCheck::ask_override(const StockNeed& need, double available) {
    const double factor = need.factor > 0 ? need.factor : 1;
    const auto quantity = [&](double base) {
        return common::format_quantity(base / factor) + " " + need.unit_name;
    };
    std::string text(message::override_item);
    text += need.name;
    text += message::override_stock;
    text += quantity(available);
    text += message::override_need;
    text += quantity(need.base_quantity);
    text += message::override_question;
    return prompts_.question(text, common::Icon::critical);
}

}  // namespace sales
