// The way to the database: Transact-SQL text in, whole results out, on either engine.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/error.h"
#include "database/sql.h"
#include "database/value.h"

namespace database {

// Column names of a result; they compare without regard to case, as the server's do.
class Columns {
  public:
    explicit Columns(std::vector<std::string> names) : names_(std::move(names)) {}
    // Returns the position of a column, or -1 if the result has no column of that name.
    int find(std::string_view name) const;
    const std::vector<std::string>& names() const { return names_; }

  private:
    std::vector<std::string> names_;
};

// One row of a result. Reading a column that the result does not have throws Error 42S22.
class Row {
  public:
    Row(std::shared_ptr<const Columns> columns, std::vector<Value> cells)
        : columns_(std::move(columns)), cells_(std::move(cells)) {}

    const Value& value(std::string_view column) const;
    bool has(std::string_view column) const { return columns_->find(column) >= 0; }
    bool null(std::string_view column) const { return is_null(value(column)); }
    // These convert as in value.h: a null counts as 0, "" or 1900/01/01.
    double number(std::string_view column) const { return number_of(value(column)); }
    std::int64_t integer(std::string_view column) const { return integer_of(value(column)); }
    std::string text(std::string_view column) const { return text_of(value(column)); }
    common::Moment moment(std::string_view column) const { return moment_of(value(column)); }

    const std::vector<Value>& cells() const { return cells_; }
    // Moves the cells out of a row that is no longer needed.
    std::vector<Value> release() && { return std::move(cells_); }

  private:
    std::shared_ptr<const Columns> columns_;
    std::vector<Value> cells_;
};

// A result, read whole.
class Result {
  public:
    Result(std::shared_ptr<const Columns> columns, std::vector<Row> rows)
        : columns_(std::move(columns)), rows_(std::move(rows)) {}

    const std::vector<std::string>& columns() const { return columns_->names(); }
    const std::vector<Row>& rows() const { return rows_; }
    bool empty() const { return rows_.empty(); }
    std::size_t size() const { return rows_.size(); }
    const Row& front() const { return rows_.front(); }
    // Moves the rows out of a result that is no longer needed.
    std::vector<Row> release() && { return std::move(rows_); }
    auto begin() const { return rows_.begin(); }
    auto end() const { return rows_.end(); }

  private:
    std::shared_ptr<const Columns> columns_;
    std::vector<Row> rows_;
};

// A statement of a batch.
class Command {
  public:
    Command(const Sql& statement) : text_(statement.text()) {}  // a statement is a command without values
    // A statement with "?" in place of values.
    Command(Fragment statement, std::vector<Value> values)
        : text_(statement.text()), values_(std::move(values)) {}
    // The same; the text is joined from fragments.
    Command(const Sql& statement, std::vector<Value> values)
        : text_(statement.text()), values_(std::move(values)) {}

    // The statement fails with Error 40001 if it changes no row.
    Command that_must_change() && {
        must_change_ = true;
        return std::move(*this);
    }

    const std::string& text() const { return text_; }
    const std::vector<Value>& values() const { return values_; }
    bool must_change() const { return must_change_; }

  private:
    friend class Recordset;
    Command() = default;

    std::string text_;
    std::vector<Value> values_;
    bool must_change_ = false;
};

class Connection {
  public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    // Runs one statement and reads its result whole. A statement without a result gives an empty one.
    Result query(const Sql& statement) { return run(statement.text(), {}).result; }
    Result query(Fragment statement) { return query(Sql(statement)); }
    // The first column of the first row; null without a row.
    Value scalar(const Sql& statement);
    Value scalar(Fragment statement) { return scalar(Sql(statement)); }
    // Runs one statement and returns the number of rows it changed.
    std::int64_t execute(const Sql& statement) { return run(statement.text(), {}).changed; }
    std::int64_t execute(Fragment statement) { return execute(Sql(statement)); }
    // A statement with "?" in place of values; used by Recordset and by imports of many rows.
    std::int64_t execute(Fragment statement, const std::vector<Value>& values) {
        return run(statement.text(), values).changed;
    }

    // Makes all that was written before durable; called at the end of every action that wrote.
    virtual void make_durable() = 0;

    // Returns true for an embedded shop file, false for a server.
    virtual bool is_embedded() const = 0;
    // The columns of a table and its key; the key is empty if the table has none.
    struct Table {
        std::vector<std::string> columns;
        std::vector<std::string> types;  // as declared, "nvarchar(100)"
        std::vector<std::string> key;
    };
    virtual Table describe(std::string_view table) = 0;
    // The same, shared: a connection may keep it until the table changes.
    virtual std::shared_ptr<const Table> description(std::string_view table) {
        return std::make_shared<const Table>(describe(table));
    }
    // Reads the descriptions of several tables in one round trip. Throws Error 42S02 if one of them is
    // missing.
    virtual void describe_all(const std::vector<std::string>& tables) {
        for (const std::string& table : tables)
            description(table);
    }
    // The names of the shop's tables, without views, in alphabetical order.
    virtual std::vector<std::string> tables();

    struct Outcome {
        Result result;
        std::int64_t changed = 0;
    };
    // Runs one statement with its values. Throws Error. For Recordset and tests; everything else calls
    // query() or execute().
    virtual Outcome run(std::string_view statement, const std::vector<Value>& values) = 0;

    // Runs statements in their order, on a server in one round trip, and returns the outcome of each. Stops
    // at the first that fails: throws BatchError, after rolling back a transaction that the batch began and
    // that is still open. "begin transaction" and "commit transaction" may be among the statements.
    virtual std::vector<Outcome> run_all(const std::vector<Command>& commands);

    // Error 40001 about a command that changed no row.
    static Error unchanged(const Command& command);

  protected:
    // Rolls back a transaction that the first `done` commands began and did not end.
    void roll_back_begun(const std::vector<Command>& commands, std::size_t done) noexcept;
};

// Begins with the object and is rolled back with it unless commit() was called.
class Transaction {
  public:
    explicit Transaction(Connection& connection) : connection_(connection) {
        connection_.execute("begin transaction");
    }
    ~Transaction() {
        if (committed_) return;
        try {
            connection_.execute("rollback transaction");
        } catch (const Error&) {
            // A lost connection has rolled it back already.
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Commits together with the commands before it, in one round trip.
    void commit(std::vector<Command> commands = {}) {
        commands.push_back(Sql("commit transaction"));
        connection_.run_all(commands);
        committed_ = true;
    }

  private:
    Connection& connection_;
    bool committed_ = false;
};

}  // namespace database
