#include "database/sqlserver/odbc_statement.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <list>
#include <optional>
#include <utility>

#include "common/text.h"

namespace database {

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(kind, parent, &handle_)))
        throw Error("HY001", "The ODBC driver manager gave no handle.", "");
}

OdbcHandle::OdbcHandle(OdbcHandle&& other) noexcept
    : kind_(other.kind_), handle_(std::exchange(other.handle_, nullptr)) {}

OdbcHandle& OdbcHandle::operator=(OdbcHandle&& other) noexcept {
    if (this != &other) {
        free();
        kind_ = other.kind_;
        handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
}

void OdbcHandle::free() {
    const SQLHANDLE handle = std::exchange(handle_, nullptr);
    if (handle == nullptr) return;
    if (kind_ == SQL_HANDLE_DBC) SQLDisconnect(handle);  // else the manager keeps it
    SQLFreeHandle(kind_, handle);
}

namespace {

template <typename T>
SQLPOINTER number_pointer(T number) {
    return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(number));
}

class Statement {
  public:
    Statement(SQLHDBC connection, int seconds) : handle_(SQL_HANDLE_STMT, connection) {
        SQLSetStmtAttr(handle_.get(), SQL_ATTR_QUERY_TIMEOUT, number_pointer(seconds), 0);
    }
    SQLHSTMT get() const { return handle_.get(); }

    // Returns the answer; throws if it is neither a success nor "no data".
    SQLRETURN check(SQLRETURN answer) const {
        if (SQL_SUCCEEDED(answer) || answer == SQL_NO_DATA) return answer;
        throw OdbcFailure{diagnostics_of(SQL_HANDLE_STMT, handle_.get())};
    }

  private:
    OdbcHandle handle_;
};

// The memory of the bound values; it must live until the statement has run.
class Bindings {
  public:
    void bind(const Statement& statement, const std::vector<Value>& values) {
        SQLUSMALLINT position = 0;
        for (const Value& value : values) {
            Cell& cell = cells_.emplace_back();
            ++position;
            std::visit([&](const auto& content) { bind(statement, position, cell, content); }, value);
        }
    }

  private:
    struct Cell {
        SQLLEN indicator = 0;
        std::int64_t integer = 0;
        double number = 0;
        SQL_TIMESTAMP_STRUCT moment{};
        std::vector<SQLWCHAR> text;
    };

    void bind(const Statement& statement, SQLUSMALLINT position, Cell& cell, Null) {
        cell.indicator = SQL_NULL_DATA;
        cell.text = {0};
        bind_parameter(statement, position, SQL_C_WCHAR, SQL_WVARCHAR, 1, 0, cell.text.data(), 0, cell);
    }
    void bind(const Statement& statement, SQLUSMALLINT position, Cell& cell, std::int64_t content) {
        cell.integer = content;
        bind_parameter(statement, position, SQL_C_SBIGINT, SQL_BIGINT, 19, 0, &cell.integer, 0, cell);
    }
    void bind(const Statement& statement, SQLUSMALLINT position, Cell& cell, double content) {
        cell.number = content;
        bind_parameter(statement, position, SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, &cell.number, 0, cell);
    }
    void bind(const Statement& statement, SQLUSMALLINT position, Cell& cell, const std::string& content) {
        constexpr std::size_t longest_nvarchar = 4000;
        cell.text = to_wide(content);
        const std::size_t length = cell.text.size() - 1;
        const auto bytes = static_cast<SQLLEN>(length * sizeof(SQLWCHAR));
        cell.indicator = bytes;
        bind_parameter(statement, position, SQL_C_WCHAR,
                       length > longest_nvarchar ? SQL_WLONGVARCHAR : SQL_WVARCHAR,
                       std::max<SQLULEN>(length, 1), 0, cell.text.data(), bytes, cell);
    }
    void bind(const Statement& statement, SQLUSMALLINT position, Cell& cell, const common::Moment& content) {
        constexpr SQLUINTEGER nanoseconds = 1'000'000;
        cell.moment.year = static_cast<SQLSMALLINT>(content.date.year);
        cell.moment.month = static_cast<SQLUSMALLINT>(content.date.month);
        cell.moment.day = static_cast<SQLUSMALLINT>(content.date.day);
        cell.moment.hour = static_cast<SQLUSMALLINT>(content.time.hour);
        cell.moment.minute = static_cast<SQLUSMALLINT>(content.time.minute);
        cell.moment.second = static_cast<SQLUSMALLINT>(content.time.second);
        cell.moment.fraction = static_cast<SQLUINTEGER>(content.time.millisecond) * nanoseconds;
        bind_parameter(statement, position, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, &cell.moment, 0,
                       cell);
    }

    void bind_parameter(const Statement& statement, SQLUSMALLINT position, SQLSMALLINT c_type,
                        SQLSMALLINT type, SQLULEN size, SQLSMALLINT decimals, SQLPOINTER memory, SQLLEN bytes,
                        Cell& cell) {
        statement.check(SQLBindParameter(statement.get(), position, SQL_PARAM_INPUT, c_type, type, size,
                                         decimals, memory, bytes, &cell.indicator));
    }

    std::list<Cell> cells_;  // never moves
};

struct Column {
    std::string name;
    SQLSMALLINT type = 0;
    SQLSMALLINT decimals = 0;
    SQLULEN size = 0;
};

std::vector<Column> columns_of(const Statement& statement, SQLSMALLINT count) {
    std::vector<Column> columns;
    for (SQLUSMALLINT at = 1; at <= count; ++at) {
        std::array<SQLWCHAR, 256> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT nullable = 0;
        Column column;
        statement.check(SQLDescribeColW(statement.get(), at, name.data(),
                                        static_cast<SQLSMALLINT>(name.size()), &length, &column.type,
                                        &column.size, &column.decimals, &nullable));
        column.name = from_wide(name.data(), std::min(static_cast<std::size_t>(length), name.size() - 1));
        columns.push_back(std::move(column));
    }
    return columns;
}

Value text_cell(const Statement& statement, SQLUSMALLINT at) {
    std::array<SQLWCHAR, 2048> piece;
    std::vector<SQLWCHAR> text;
    while (true) {
        SQLLEN bytes = 0;
        const SQLRETURN answer =
            statement.check(SQLGetData(statement.get(), at, SQL_C_WCHAR, piece.data(), sizeof piece, &bytes));
        if (answer == SQL_NO_DATA) break;
        if (bytes == SQL_NULL_DATA) return Null{};
        const bool cut = bytes == SQL_NO_TOTAL || bytes >= static_cast<SQLLEN>(sizeof piece);
        const std::size_t units = cut ? piece.size() - 1 : static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR);
        text.insert(text.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(units));
        if (!cut) break;
    }
    return from_wide(text.data(), text.size());
}

// Reads a cell of a fixed width. Returns nothing for a null.
template <typename T>
std::optional<T> fixed_cell(const Statement& statement, SQLUSMALLINT at, SQLSMALLINT c_type) {
    T content{};
    SQLLEN bytes = 0;
    statement.check(SQLGetData(statement.get(), at, c_type, &content, sizeof content, &bytes));
    if (bytes == SQL_NULL_DATA) return {};
    return content;
}

Value moment_cell(const Statement& statement, SQLUSMALLINT at) {
    const auto read = fixed_cell<SQL_TIMESTAMP_STRUCT>(statement, at, SQL_C_TYPE_TIMESTAMP);
    if (!read) return Null{};
    const auto milliseconds = std::min((read->fraction + 500'000) / 1'000'000, 999U);
    return common::Moment{{read->year, read->month, read->day},
                          {read->hour, read->minute, read->second, static_cast<int>(milliseconds)}};
}

// The shortest number of seven digits: 4.6, not 4.599999904632568.
double as_written(float number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    double meant = number;
    std::from_chars(digits.data(), end, meant);
    return meant;
}

Value cell(const Statement& statement, SQLUSMALLINT at, const Column& column) {
    switch (column.type) {
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            if (column.decimals > 0 || column.size > 18) {
                const auto read = fixed_cell<double>(statement, at, SQL_C_DOUBLE);
                return read ? Value(*read) : Value();
            }
            [[fallthrough]];
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT: {
            const auto read = fixed_cell<std::int64_t>(statement, at, SQL_C_SBIGINT);
            return read ? Value(*read) : Value();
        }
        case SQL_REAL: {
            const auto read = fixed_cell<float>(statement, at, SQL_C_FLOAT);
            return read ? Value(as_written(*read)) : Value();
        }
        case SQL_FLOAT:
        case SQL_DOUBLE: {
            const auto read = fixed_cell<double>(statement, at, SQL_C_DOUBLE);
            return read ? Value(*read) : Value();
        }
        case SQL_TYPE_DATE:
        case SQL_TYPE_TIMESTAMP:
            return moment_cell(statement, at);
        default:
            return text_cell(statement, at);
    }
}

Result empty_result() {
    return {std::make_shared<const Columns>(std::vector<std::string>{}), {}};
}

Result read_result(const Statement& statement, SQLSMALLINT count) {
    const std::vector<Column> shape = columns_of(statement, count);
    std::vector<std::string> names;
    for (const Column& column : shape)
        names.push_back(column.name);
    const auto columns = std::make_shared<const Columns>(std::move(names));
    std::vector<Row> rows;
    while (statement.check(SQLFetch(statement.get())) != SQL_NO_DATA) {
        std::vector<Value> cells;
        cells.reserve(shape.size());
        for (std::size_t i = 0; i < shape.size(); ++i)
            cells.push_back(cell(statement, static_cast<SQLUSMALLINT>(i + 1), shape[i]));
        rows.emplace_back(columns, std::move(cells));
    }
    return {columns, std::move(rows)};
}

}  // namespace

Connection::Outcome run_odbc_statement(SQLHDBC connection, std::string_view text,
                                       const std::vector<Value>& values, int seconds) {
    const Statement statement(connection, seconds);
    Bindings bindings;
    bindings.bind(statement, values);
    std::vector<SQLWCHAR> wide = to_wide(text);
    // "No data" is a success: of an update that found no row, and of statements such as SET.
    SQLRETURN answer = statement.check(SQLExecDirectW(statement.get(), wide.data(), SQL_NTS));

    std::optional<Result> result;
    std::int64_t changed = 0;
    do {
        SQLSMALLINT count = 0;
        if (answer != SQL_NO_DATA) statement.check(SQLNumResultCols(statement.get(), &count));
        if (count > 0 && !result) {
            result = read_result(statement, count);
        } else if (count == 0 && answer != SQL_NO_DATA) {
            SQLLEN rows = 0;
            if (SQL_SUCCEEDED(SQLRowCount(statement.get(), &rows)) && rows > 0) changed += rows;
        }
        answer = statement.check(SQLMoreResults(statement.get()));
    } while (answer != SQL_NO_DATA);
    return {result ? std::move(*result) : empty_result(), changed};
}

void run_odbc_batch(SQLHDBC connection, std::string_view text, int seconds,
                    std::vector<Connection::Outcome>& outcomes) {
    const Statement statement(connection, seconds);
    std::vector<SQLWCHAR> wide = to_wide(text);
    std::optional<Result> result;  // of the running statement
    SQLRETURN answer = statement.check(SQLExecDirectW(statement.get(), wide.data(), SQL_NTS));
    do {
        SQLSMALLINT count = 0;
        if (answer != SQL_NO_DATA) statement.check(SQLNumResultCols(statement.get(), &count));
        if (count == 0) continue;
        Result read = read_result(statement, count);
        if (read.columns().front() != batch_rows) {
            result = std::move(read);
            continue;
        }
        const std::int64_t changed = result ? 0 : read.front().integer(batch_rows);
        outcomes.push_back({result ? std::move(*result) : empty_result(), changed});
        result.reset();
    } while ((answer = statement.check(SQLMoreResults(statement.get()))) != SQL_NO_DATA);
}

}  // namespace database
