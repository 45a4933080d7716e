// The rows that make a day of a store, from every table that its figures come from, in a form that can be
// kept and compared.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace reports {

// `key` tells which row of its table it is, `content` what it says; both are cells with "|" between them.
struct DayRow {
    int table = 0;
    std::string key;
    std::string content;
    auto operator<=>(const DayRow&) const = default;
};

// In the order of the tables, of keys within a table. The lines of a document are one row: how many they
// are, and the sums of their quantities, values and item codes.
std::vector<DayRow> read_day_rows(database::Connection& connection, std::int64_t store,
                                  const common::Date& day);

// As a text of a few dozen bytes for each row, and back. Throws std::exception for another text.
std::string text_of(const std::vector<DayRow>& rows);
std::vector<DayRow> day_rows_of(std::string_view text);

enum class RowChange { added, removed, altered };

// A row that is not as it was.
struct ChangedRow {
    RowChange change{};
    std::string kind;    // what rows of its table are called
    std::string number;  // of the document
    std::string before;  // what it said, with captions; empty for an added one
    std::string now;     // likewise; empty for a removed one
};

// What differs, in the order of the tables. Both lists must be sorted.
std::vector<ChangedRow> changes_between(const std::vector<DayRow>& before, const std::vector<DayRow>& now);

}  // namespace reports
