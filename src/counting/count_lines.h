// What was counted, line by line as it was scanned, on one or several machines at the same time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/services.h"
#include "counting/counts.h"

namespace counting {

enum class LineKind {
    adds,      // more of the item, on another shelf
    replaces,  // counted again: what was counted before does not count
    missing    // written by the booking for goods that nobody counted
};
std::string_view name_of(LineKind kind);

// What the user counted.
struct Counted {
    std::int64_t item = 0;
    int unit_level = 1;
    std::string quantity = "1";               // in that unit, as it was typed
    std::optional<common::Date> expiry = {};  // of a count by date; nothing means goods without a date
    bool replaces = false;
};

// A row of till_count_line.
struct CountLine {
    std::int64_t number = 0;
    std::int64_t item = 0;
    std::string name;
    std::optional<common::Date> expiry;  // nothing in a count of whole items
    double quantity = 0;                 // base units
    int unit_level = 1;
    double factor = 1;
    double stock = 0;  // what the shop's books held at the moment of the line
    double cost = 0;   // of a base unit, at that moment
    LineKind kind = LineKind::adds;
    common::Moment moment;
    std::string user;
    std::string computer;
    bool is_removed = false;
};

// Adds a line to an open count. The same statement reads the stock and writes the line. Returns why not, if
// it was refused.
std::optional<common::Refusal> add_line(database::Connection& connection, const signin::Session& session,
                                        common::Clock& clock, const Count& count, const Counted& counted);

// A line that was counted by mistake no longer counts; it stays in sight.
std::optional<common::Refusal> remove_line(database::Connection& connection, const signin::Session& session,
                                           const Count& count, std::int64_t line);

// The lines of a count in their order; only the last ones if a number is given.
std::vector<CountLine> read_lines(database::Connection& connection, const Count& count,
                                  std::optional<int> last = {});

}  // namespace counting
