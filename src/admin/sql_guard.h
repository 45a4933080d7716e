// What a shop keeper's statement does to the shop, read from its words before it runs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace admin {

struct StatementEffect {
    bool changes = false;             // rows or tables, as far as the words tell
    std::vector<std::string> tables;  // whose rows it inserts, updates or deletes, as they are written
    // What it would do that cannot be taken back row by row: "deletes every row of items", "drops the table
    // x". Empty for an ordinary statement.
    std::vector<std::string> dangers;
};

// Reads one statement or several. A text that is not Transact-SQL as the program knows it counts as
// dangerous.
StatementEffect effect_of(std::string_view statement);

}  // namespace admin
