// Many rows for one table in few statements: on a server each statement is a round trip.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "database/connection.h"
#include "database/sql.h"

namespace database {

// How many rows a statement may take. With one, an error tells which row was refused.
enum class BulkRows { many, one };

class BulkInsert {
  public:
    // `head` is the statement up to the rows: "insert into barcode (bar,code,scode)".
    BulkInsert(Connection& connection, const Sql& head, std::size_t columns, BulkRows rows);

    // Adds a row of as many values as there are columns. It is written with the rows before it as soon as
    // they fill a statement, else by finish(). Throws Error.
    void add(std::vector<Value> values);
    void finish();

  private:
    Connection& connection_;
    std::string head_;
    std::size_t columns_;
    std::size_t most_rows_;
    std::size_t rows_ = 0;  // that wait
    std::vector<Value> values_;
    std::string full_statement_;  // of most_rows_
};

}  // namespace database
