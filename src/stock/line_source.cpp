#include "stock/line_source.h"

#include <algorithm>

#include "common/messages.h"
#include "common/numbers.h"

namespace stock {

using database::Sql;

namespace {

// A store cannot supply itself.
constexpr std::string_view same_store = "لا يمكن التحويل لنفس المخزن";
// The item is not in the store transferred from.
constexpr std::string_view not_there = "الصنف غير موجود بالمخزن المحول منه";
// The quantity in the store is not enough.
constexpr std::string_view too_little = "الكمية بالمخزن لا تكفي";

}  // namespace

bool stock_suffices(double available, double needed) {
    // Rounding preserves the order of two numbers, so it can only let more through.
    return available >= needed || common::round_decimals(available, 3) >= common::round_decimals(needed, 3);
}

LineSource::LineSource(database::Connection& connection, common::Prompts& prompts, std::int64_t item,
                       double quantity, double factor, std::int64_t selling_store)
    : connection_(connection),
      prompts_(prompts),
      item_(item),
      base_quantity_(quantity * factor),
      selling_store_(selling_store) {
    for (const auto& row : connection.query("select * from stocks"))
        stores_.push_back({row.integer("code"), row.text("name"), 0});
    for (const auto& row :
         connection.query(Sql("select sum(quan) as qq,stcode from stk where icode = ") + item +
                          " and isnull([quan],0)  > 0  Group By stcode  having stcode <> " + selling_store)) {
        const std::int64_t store = row.integer("stcode");
        const auto known = std::find_if(stores_.begin(), stores_.end(),
                                        [&](const StoreHolding& holding) { return holding.store == store; });
        // Stock of a deleted store is ignored.
        if (known != stores_.end()) known->quantity = row.number("qq");
    }
    const auto card = connection.query(Sql("select num1, NUM2, NUM3 from items where code = ") + item);
    const auto offer = [&](int code, const char* name, const char* column) {
        const double base_units = card.empty() ? 0 : card.front().number(column);
        if (base_units > 0) units_.push_back({code, name, base_units});
    };
    offer(3, "كرتونة", "NUM3");
    offer(2, "عبوة", "NUM2");
    offer(1, "وحدة", "num1");
    if (units_.empty()) units_.push_back({1, "وحدة", 1});
}

bool LineSource::confirm(std::int64_t store, double taken_by_others) {
    const auto refuse = [this](std::string_view text) {
        prompts_.message(text, common::Icon::exclamation);
        return false;
    };
    if (store == 0) return refuse(common::message::choose_store);
    if (store == selling_store_) return refuse(same_store);
    const database::Value held = connection_.scalar(Sql("select sum(quan) as quan from stk where icode = ") +
                                                    item_ + " and stcode = " + store);
    if (database::is_null(held)) return refuse(not_there);
    if (!stock_suffices(database::number_of(held), base_quantity_ + taken_by_others))
        return refuse(too_little);
    return true;
}

}  // namespace stock
