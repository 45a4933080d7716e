#include "backup/copy_shop.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "common/text.h"
#include "database/bulk_insert.h"
#include "database/schema/schema.h"

namespace backup {

using database::BulkRows;
using database::ColumnsByTable;
using database::Connection;
using database::Sql;

namespace {

// A table with more rows is read in slices of about this many, each a range of values of one column, so that
// the tables of many years fit into memory.
constexpr std::int64_t rows_at_once = 50000;
constexpr std::string_view slicing_columns[] = {"date", "expdate", "cdate", "tdate", "icode", "code", "pnum"};

std::string bracketed(std::string_view name) {
    std::string quoted = "[";
    for (const char c : name)
        quoted.append(c == ']' ? 2 : 1, c);
    return quoted + "]";
}

// A statement about a table whose name comes from the database.
Sql on(const std::string& before, std::string_view table, const std::string& after = {}) {
    return Sql::from_administrator(before + bracketed(table) + after);
}

// The number of rows of each table.
std::vector<std::int64_t> counts_of(Connection& connection, const std::vector<std::string>& tables) {
    std::vector<database::Command> questions;
    for (const std::string& table : tables)
        questions.emplace_back(on("select count(*) from ", table));
    std::vector<std::int64_t> counts;
    for (const auto& answer : connection.run_all(questions))
        counts.push_back(database::integer_of(answer.result.front().cells().front()));
    return counts;
}

class TableCopy {
    using Write = std::function<void(const database::Result&)>;

  public:
    TableCopy(Connection& source, Connection& target, std::string table)
        : source_(source), target_(target), table_(std::move(table)) {}

    // Adds the table, or the columns of it that only the source has.
    void make_room(const ColumnsByTable& here, const ColumnsByTable& there) {
        const std::string name = common::lower_ascii(table_);
        const auto wanted = here.find(name);
        const auto found = there.find(name);
        if (wanted != here.end() && found != there.end() &&
            std::ranges::includes(found->second, wanted->second))
            return;
        const Connection::Table shape = source_.describe(table_);
        const auto definition = [&](std::size_t column) {
            return bracketed(shape.columns[column]) + " " + shape.types[column] + " null";
        };
        if (found == there.end()) {
            std::string list;
            for (std::size_t i = 0; i < shape.columns.size(); ++i)
                list += (i == 0 ? "" : ", ") + definition(i);
            target_.execute(on("create table ", table_, " (" + list + ")"));
            return;
        }
        for (std::size_t i = 0; i < shape.columns.size(); ++i) {
            if (!found->second.contains(common::lower_ascii(shape.columns[i])))
                target_.execute(on("alter table ", table_, " add " + definition(i)));
        }
    }

    // Copies all rows, or says which row the target refuses.
    void copy(std::int64_t rows, const std::function<void()>& each_row) {
        if (rows == 0) return;
        try {
            copy(rows, BulkRows::many, each_row);
        } catch (const database::Error& error) {
            if (error.kind() != database::Error::Kind::other) throw;
            copy(rows, BulkRows::one, [] {});
        }
    }

  private:
    void copy(std::int64_t rows, BulkRows at_once, const std::function<void()>& each_row) {
        const std::string column = rows > rows_at_once ? slicing_column() : std::string();
        std::optional<database::BulkInsert> target;
        std::int64_t number = 0;
        const Write write = [&](const database::Result& read) {
            if (!target) target.emplace(target_, insert_into(read.columns()), read.columns().size(), at_once);
            for (const auto& row : read) {
                ++number;
                try {
                    target->add(row.cells());
                } catch (const database::Error& error) {
                    if (at_once == BulkRows::many || error.kind() != database::Error::Kind::other) throw;
                    throw CopyFailed("row " + std::to_string(number) + " of the table " + table_ +
                                     " is refused there: " + error.what());
                }
                each_row();
            }
        };
        database::Transaction transaction(target_);
        if (column.empty()) {
            write(source_.query(on("select * from ", table_)));
        } else {
            copy_slices(bracketed(column), write);
        }
        if (target) target->finish();
        transaction.commit();
    }

    void copy_slices(const std::string& column, const Write& write) {
        write(source_.query(on("select * from ", table_, " where " + column + " is null")));
        const auto values =
            source_.query(on("select " + column + ",count(*) as n from ", table_,
                             " where " + column + " is not null group by " + column + " order by " + column));
        const std::string slice =
            on("select * from ", table_, " where " + column + " >= ? and " + column + " <= ?").text();
        for (std::size_t first = 0; first < values.size();) {
            std::size_t last = first;
            std::int64_t rows = values.rows()[first].integer("n");
            while (last + 1 < values.size() && rows + values.rows()[last + 1].integer("n") <= rows_at_once) {
                rows += values.rows()[++last].integer("n");
            }
            write(source_
                      .run(slice, {values.rows()[first].cells().front(), values.rows()[last].cells().front()})
                      .result);
            first = last + 1;
        }
    }

    std::string slicing_column() const {
        const Connection::Table shape = source_.describe(table_);
        for (const std::string_view wanted : slicing_columns) {
            const auto column = std::ranges::find_if(shape.columns, [&](const std::string& name) {
                return common::equal_ignoring_case(name, wanted);
            });
            if (column != shape.columns.end()) return *column;
        }
        return {};
    }

    Sql insert_into(const std::vector<std::string>& columns) const {
        std::string names;
        for (const std::string& name : columns)
            names += (names.empty() ? "" : ",") + bracketed(name);
        return on("insert into ", table_, " (" + names + ")");
    }

    Connection& source_;
    Connection& target_;
    std::string table_;
};

}  // namespace

CopiedShop copy_shop(Connection& source, Connection& target, const CopyProgress& tell) {
    CopiedShop outcome;
    database::create_base_schema(target);
    const std::vector<std::string> tables = source.tables();
    const std::vector<std::int64_t> counts = counts_of(source, tables);
    outcome.rows = std::accumulate(counts.begin(), counts.end(), std::int64_t{0});
    std::int64_t done = 0;
    const auto each_row = [&] { tell(++done, outcome.rows); };
    // The upgrade list runs before there are rows that it would change. The columns that it adds for each
    // store come with the source's columns.
    database::run_upgrade_list(target);
    const ColumnsByTable columns_here = database::columns_by_table(source, tables);
    const ColumnsByTable columns_there = database::columns_by_table(target, tables);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        TableCopy copy(source, target, tables[i]);
        copy.make_room(columns_here, columns_there);
        copy.copy(counts[i], each_row);
    }
    target.make_durable();
    const std::vector<std::int64_t> here = counts_of(source, tables);
    const std::vector<std::int64_t> there = counts_of(target, tables);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (here[i] != there[i]) {
            outcome.differences.push_back(tables[i] + ": " + std::to_string(here[i]) + " rows here, " +
                                          std::to_string(there[i]) + " there");
        }
    }
    outcome.tables = tables.size();
    return outcome;
}

}  // namespace backup
