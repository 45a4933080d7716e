#include "reports/table.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/amount.h"
#include "common/numbers.h"

namespace reports {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> texts_of(const std::vector<double>& figures, const std::vector<Column>& columns) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < columns.size(); ++i)
        texts.push_back(i < figures.size() ? text_of(figures[i], columns[i].format) : std::string());
    return texts;
}

}  // namespace

std::string text_of(double figure, Format format) {
    if (std::isnan(figure)) return {};
    switch (format) {
        case Format::count:
            return common::format_decimals(figure, 0);
        case Format::amount:
            return common::Amount(figure).text();
        case Format::quantity:
            return common::format_quantity(figure);
        case Format::percent:
            return common::format_decimals(figure, 1) + "%";
        case Format::text:
            break;
    }
    return {};
}

double per(double part, double count) {
    return count == 0 ? none : part / count;
}

double percent_of(double part, double whole) {
    return per(part * 100, whole);
}

std::vector<std::string> Table::headings() const {
    std::vector<std::string> all = {label_heading};
    for (const Column& column : columns)
        all.push_back(column.heading);
    return all;
}

std::vector<std::string> Table::cells(const TableRow& row) const {
    std::vector<std::string> all = texts_of(row.figures, columns);
    if (!columns.empty() && columns.back().format == Format::text) all.back() = row.note;
    all.insert(all.begin(), row.label);
    return all;
}

std::vector<std::string> Table::total_cells() const {
    std::vector<std::string> all = texts_of(totals, columns);
    all.insert(all.begin(), "الإجمالي");  // the total
    return all;
}

void Table::sort_by_figure() {
    std::ranges::stable_sort(rows, [this](const TableRow& one, const TableRow& other) {
        return one.figures[charted] > other.figures[charted];
    });
}

void Table::add_up() {
    totals.assign(columns.size(), 0);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].format == Format::percent || columns[i].format == Format::text) {
            totals[i] = none;
            continue;
        }
        for (const TableRow& row : rows)
            if (i < row.figures.size() && !std::isnan(row.figures[i])) totals[i] += row.figures[i];
    }
}

}  // namespace reports
