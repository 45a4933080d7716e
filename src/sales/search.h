// The item search: one grouped query with the filters that are filled.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "sales/entry.h"
#include "sales/lists.h"

namespace sales {

// Filters as typed; an empty one does not filter. Code, price, maker and type must be numbers (Arabic-Indic
// digits included); the code may be a barcode instead.
struct SearchFilters {
    std::string name;
    bool name_contains = false;  // its words anywhere in the name; otherwise the name begins with it
    std::string code;
    std::string price;
    std::string maker;
    std::string type;
    bool hide_stopped = false;

    bool has_name() const;  // and not only blanks and marks
    bool empty() const {
        return !has_name() && code.empty() && price.empty() && maker.empty() && type.empty();
    }
};

struct FoundItem {
    std::int64_t code = 0;
    std::string name;
    std::int64_t type = 0;
    std::string group;  // the item type's name
    double stock = 0;   // of all stores together
    bool stopped = false;
    // Retail and wholesale of the unit, the pack and the carton: "وحدة", "عبوة", "كرتونة".
    double prices[3][2] = {};
    bool units[3] = {};   // which of them the item's card gives base units for
    std::string scanned;  // the barcode or scale label that found it, as typed; empty otherwise
    int unit_level = 1;   // the unit of that barcode

    // The entry of this item in a unit: what was scanned, if it stands for that unit.
    Entry entry(int unit) const;
};

// Why no item can match, in words for the cashier: a price or code is not a number. Empty if there is no such
// reason.
std::string_view search_refusal(const SearchFilters& filters);

struct FoundItems {
    std::size_t count = 0;         // of all matches
    std::vector<FoundItem> items;  // the first of them, in the order of their names
};
// Nobody reads a longer list.
inline constexpr std::size_t longest_found = 200;

// Finds nothing without any filter but the stopped one.
FoundItems search_items(database::Connection& connection, const Lists& lists, const SearchFilters& filters);

}  // namespace sales
