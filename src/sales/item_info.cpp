#include "sales/item_info.h"

#include <algorithm>

#include "common/numbers.h"
#include "sales/messages.h"

namespace sales {

using database::Sql;

std::optional<ItemInfo> load_item_info(database::Connection& connection, std::int64_t code) {
    const auto rows = connection.query(Sql("select * from items where code =") + code);
    if (rows.empty()) return std::nullopt;
    const auto& row = rows.front();
    ItemInfo info;
    info.code = row.integer("code");
    info.name = row.text("name");
    info.price11 = common::format_amount(row.number("price11"));
    info.price12 = common::format_amount(row.number("price12"));
    info.price13 = common::format_amount(row.number("price13"));
    info.profit = std::string(message::expected_profit) +
                  common::format_amount(row.number("price12") - row.number("price11"));
    return info;
}

std::string stock_text(database::Connection& connection, std::int64_t item, std::int64_t store) {
    const auto sum = connection.scalar(Sql("SELECT Sum(stk.quan) AS xq From stk WHERE stk.icode=") + item +
                                       " AND stk.stcode=" + store);
    if (database::is_null(sum)) return std::string(message::stock_zero);
    return std::string(message::stock_quantity) + common::format_quantity(database::number_of(sum));
}

std::vector<std::string> expiry_texts(database::Connection& connection, std::int64_t item) {
    std::vector<std::string> dated;
    std::vector<std::string> undated;
    for (const auto& row : connection.query(Sql("SELECT edate  From stk WHERE stk.icode=") + item)) {
        const std::string mark(message::expiry_mark);
        // The date of "no expiry" is no date that a cashier could tell a customer.
        if (row.null("edate") || row.moment("edate").date == common::no_expiry)
            undated.push_back(mark + std::string(message::no_expiry_date));
        else
            dated.push_back(mark + common::date_text(row.moment("edate").date));
    }
    std::sort(dated.begin(), dated.end());
    dated.insert(dated.end(), undated.begin(), undated.end());
    return dated;
}

}  // namespace sales
