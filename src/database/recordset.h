// An updatable result set, row by row.
#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace database {

// Opened on "select * from table [where …] [order by …]" of one table. The rows are read when the first one
// is needed, so that opening a set only to add rows costs nothing. update() writes the changes of one row as
// one statement with parameters. It finds the row by all of its former values, and on the embedded engine
// also by its row number. If another till changed or deleted the row meanwhile, it throws Error 40001 and
// writes nothing.
class Recordset {
  public:
    Recordset(Connection& connection, const Sql& statement);
    Recordset(Connection& connection, Fragment statement) : Recordset(connection, Sql(statement)) {}

    bool empty();
    std::size_t size();
    bool at_end();
    // Moving away from a row whose changes were neither updated nor cancelled throws Error HY010.
    void move_first();
    void move_next();
    void move_to(std::size_t row);
    // The current row, counted from 0.
    std::size_t position() const { return position_; }

    // The current row's cells, or what was set since. Column names ignore case; an unknown one throws Error
    // 42S22.
    Value get(std::string_view column);
    bool null(std::string_view column) { return is_null(get(column)); }
    double number(std::string_view column) { return number_of(get(column)); }
    std::int64_t integer(std::string_view column) { return integer_of(get(column)); }
    std::string text(std::string_view column) { return text_of(get(column)); }
    common::Moment moment(std::string_view column) { return moment_of(get(column)); }

    // Begins a new row; its cells are null until set. update() inserts it.
    void add();
    // Sets a cell of the new row, or of the current one.
    void set(std::string_view column, Value value);
    template <std::integral T>
    void set(std::string_view column, T value) {
        set(column, Value(static_cast<std::int64_t>(value)));
    }
    void set(std::string_view column, double value) { set(column, Value(value)); }
    void set(std::string_view column, std::string_view value) { set(column, Value(std::string(value))); }
    void set(std::string_view column, const std::string& value) { set(column, Value(value)); }
    void set(std::string_view column, const char* value) { set(column, Value(std::string(value))); }
    void set(std::string_view column, const common::Date& value) {
        set(column, Value(common::Moment{value, {}}));
    }
    // Writes what was set. Without changes it does nothing.
    void update();
    // The statement that update() would run, for a batch. From then on the row counts as written.
    Command take_update();
    // Drops what was set and not updated.
    void cancel();

  private:
    struct Record {
        std::vector<Value> cells;
        Value id;  // the embedded engine's row number; null on a server
        // Cells that were set and not read back: the column may hold them rounded.
        std::vector<bool> written = {};
        bool is_written(std::size_t at) const { return at < written.size() && written[at]; }
    };
    void load();
    void leave_row();
    Record& current();
    static Command command_of(std::string text, std::vector<Value> values);
    Command insert_command();
    Command update_command();
    void count_as_written();
    void write_into(Record& record);
    const Connection::Table& shape();
    std::size_t column_at(std::string_view column);
    // The value that a column was set to, or null if it was not set.
    Value* pending(std::size_t column);

    Connection& connection_;
    Sql statement_;
    std::string table_;
    std::shared_ptr<const Connection::Table> shape_;
    bool loaded_ = false;
    std::vector<Record> rows_;
    std::size_t position_ = 0;
    bool adding_ = false;
    // The cells that were set and not written yet: their columns, their values, and for each column its place
    // among them, counted from 1.
    std::vector<std::size_t> pending_;
    std::vector<Value> values_;
    std::vector<std::size_t> places_;
    // The columns of the last row that was inserted, and the statement that did it.
    std::vector<std::size_t> inserted_;
    std::string insert_;
};

}  // namespace database
