// A report as rows of figures under headings, with what they add up to.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace reports {

enum class Format { count, amount, quantity, percent, text };
// A figure as it is shown; "" for one that is not a number.
std::string text_of(double figure, Format format);
// The percent; NaN if the whole is 0.
double percent_of(double part, double whole);
// The quotient, likewise.
double per(double part, double count);

struct Column {
    std::string heading;
    Format format = Format::amount;
};

// The key of a row for a store and something in it, a drawer or a day, and its parts again.
constexpr std::int64_t key_in_store(std::int64_t store, std::int64_t what) {
    return store * 1'000'000 + what;
}
constexpr std::int64_t store_of(std::int64_t key) {
    return key / 1'000'000;
}
constexpr std::int64_t in_store(std::int64_t key) {
    return key % 1'000'000;
}

struct TableRow {
    std::int64_t key = 0;  // what the rows behind it are found by
    std::string label;
    std::vector<double> figures = {};
    std::string note = {};  // a text in the last column, of a table that has one
    std::string mark = {};  // on the axis of the chart, if the label is too long for it
};

struct Table {
    std::string label_heading;
    std::vector<Column> columns;  // of the figures, and of the note
    std::vector<TableRow> rows;
    std::vector<double> totals;  // not a number where a total means nothing; empty without totals
    std::size_t charted = 0;     // the column of the chart
    bool is_in_time = false;     // the rows follow each other in time; otherwise the largest stand first
    std::vector<std::string> notes = {};

    std::vector<std::string> headings() const;
    // The label and the figures of a row, or of the totals.
    std::vector<std::string> cells(const TableRow& row) const;
    std::vector<std::string> total_cells() const;
    // The largest of the charted column first.
    void sort_by_figure();
    // Sums the columns of amounts, counts and quantities of all rows.
    void add_up();
};

}  // namespace reports
