// Reads and checks the lines of an items file before anything is written.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "common/date_time.h"
#include "database/choices.h"

namespace goods {

struct ItemLine {
    std::size_t line = 0;     // of the file
    bool is_update = false;   // of an item that the shop has; what is not given stays as it is
    std::uint64_t given = 0;  // a bit for each column of item_columns() that has something in this line
    bool has(std::string_view column) const;

    std::int64_t code = 0;
    std::string name;
    std::string maker;  // may be empty
    std::string group;  // may be empty
    std::string description;
    std::optional<double> minimum;
    bool service = false;        // sold without stock
    std::optional<double> pack;  // base units in a pack, in a carton
    std::optional<double> carton;
    std::array<std::array<double, 5>, 3> prices{};  // [unit, pack, carton][level 1 (cost) to 5]
    std::array<std::vector<std::string>, 3> barcodes;
    std::optional<double> stock;  // opening stock in base units
    std::optional<std::int64_t> store;
    common::Date expiry = common::no_expiry;
};

// One text for the log, one for the screen.
struct Words {
    std::string english;
    std::string arabic;
};

struct LineProblem {
    std::size_t line = 0;
    Words reason;
    std::string code = {};  // of the item, as the line gives them
    std::string name = {};
};

// What the shop already has, so that a file may not repeat it.
struct KnownGoods {
    bool may_update = false;  // a line with the code of an item of the shop changes it, else it is refused
    std::unordered_set<std::int64_t> codes;
    // The items of barcodes in lower case, without trailing blanks.
    std::unordered_map<std::string, std::int64_t> barcodes;
    std::unordered_map<std::string, std::int64_t> names;  // in lower case; the code of an item of that name
    std::unordered_set<std::int64_t> stores;
    database::TextLimits items;  // what the columns of these tables hold
    database::TextLimits makers;
    database::TextLimits groups;
    database::TextLimits barcode;
};

struct ItemFile {
    std::vector<ItemLine> lines;
    std::vector<LineProblem> problems;  // in the order of the lines
    // What is not refused but should be looked at: a price below the cost, a name that another item has.
    std::vector<LineProblem> notes;
    bool has_unknown_headings = false;
};

struct ItemColumn {
    std::string_view name;
    std::string_view meaning;
    // Other names for it: first the one that heads it in the office's lists, then those that other lists use.
    std::vector<std::string_view> arabic;
};
// The columns that an items file may have, in the order of the help; "code" is needed, for new items also
// "name" and "price12".
const std::vector<ItemColumn>& item_columns();

// Reads a whole file. Its first line names the columns in any order, each by one of its names (with or
// without ال, its letters as a search takes them: common/search.h); cells are separated by comma, semicolon
// or tab. A missing price of level 3 to 5 is the retail price (level 2); a missing price of the pack or the
// carton is the unit's price times the units in it. Reports the number of bytes read to `reached`.
ItemFile read_items(std::string_view csv, const KnownGoods& known,
                    const std::function<void(std::size_t)>& reached = {});

}  // namespace goods
