// The items of the shop as the office lists them, by the same search as the till's.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "database/connection.h"

namespace goods {

struct ItemFilter {
    std::string typed = {};              // words of the name, a code or a barcode
    std::int64_t group = 0;              // 0 for all
    std::int64_t maker = 0;              // 0 for all
    std::set<std::int64_t> marked = {};  // if there are any, these items alone
};

// Which items a filter lets through, to stand behind "where".
database::Sql condition_of(database::Connection& connection, const ItemFilter& filter);

struct ListedItem {
    std::int64_t code = 0;
    std::string name;
    std::string group;
    std::optional<double> price;  // retail, of a unit
    std::optional<double> cost;
    std::optional<double> stock;  // of all stores; nothing if no stock is kept
    std::optional<double> minimum;
    bool is_stopped = false;
    bool is_low() const { return stock && minimum && *minimum > 0 && *stock < *minimum; }
};

struct ItemList {
    std::size_t count = 0;  // of all that match
    std::vector<ListedItem> items;
};
// The first items that match, in the order of their names, or all of them for paper.
enum class ListLength { first_thousand, all };
ItemList list_items(database::Connection& connection, const ItemFilter& filter,
                    ListLength length = ListLength::first_thousand);

}  // namespace goods
