#include "database/bulk_insert.h"

#include <algorithm>
#include <iterator>

namespace database {

namespace {

// A server's limits: rows after "values", and parameters. The call that carries the statement takes two of
// them.
constexpr std::size_t most_rows = 1000;
constexpr std::size_t most_parameters = 2100 - 2;

std::string statement_of(const std::string& head, std::size_t columns, std::size_t rows) {
    std::string row = "(?";
    for (std::size_t i = 1; i < columns; ++i)
        row += ",?";
    row += ")";
    std::string text = head + " values " + row;
    for (std::size_t i = 1; i < rows; ++i)
        text += "," + row;
    return text;
}

}  // namespace

// The embedded engine has no round trips, and keeps the statement for a single row prepared.
BulkInsert::BulkInsert(Connection& connection, const Sql& head, std::size_t columns, BulkRows rows)
    : connection_(connection),
      head_(head.text()),
      columns_(columns),
      most_rows_(rows == BulkRows::one || connection.is_embedded()
                     ? 1
                     : std::clamp<std::size_t>(most_parameters / columns, 1, most_rows)),
      full_statement_(statement_of(head_, columns, most_rows_)) {}

void BulkInsert::add(std::vector<Value> values) {
    if (values_.empty())
        values_ = std::move(values);
    else
        values_.insert(values_.end(), std::make_move_iterator(values.begin()),
                       std::make_move_iterator(values.end()));
    if (++rows_ == most_rows_) finish();
}

void BulkInsert::finish() {
    if (rows_ == 0) return;
    connection_.run(rows_ == most_rows_ ? full_statement_ : statement_of(head_, columns_, rows_), values_);
    rows_ = 0;
    values_.clear();
}

}  // namespace database
