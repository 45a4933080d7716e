// The base schema of a new shop and the upgrade list that brings any shop up to date.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace database {

// Creates every table, key, index and view of a new shop in an empty database.
void create_base_schema(Connection& connection);

// Runs the 300 entries of the upgrade list in their order, then creates the tills' own tables (till_…).
// Failures are ignored, because most entries have been applied before; only a lost connection or a full disk
// ends the list (throws Error). The caller makes it durable.
void run_upgrade_list(Connection& connection);

// Tables and columns of a shop with their types, without the scratch tables that the list makes anew.
std::string schema_text(Connection& connection);

// Those of the tables that exist, with their columns, all in lower case. A server adds its other tables,
// because it answers in one round trip.
using ColumnsByTable = std::map<std::string, std::set<std::string>>;
ColumnsByTable columns_by_table(Connection& connection, const std::vector<std::string>& tables);

// A table of this version's schema that a shop does not have, or a column of it.
struct Missing {
    std::string table;
    std::string column;  // empty if the whole table is missing

    std::string name() const { return column.empty() ? table : table + "." + column; }
    // Returns true for a table without which nobody can sign in or sell.
    bool is_needed() const;
    // Returns true for a table of the tills' own, without which they work as well.
    bool is_optional() const { return table.starts_with("till_"); }
};
// Compares a shop with what a new one has, in the order of the tables' names.
std::vector<Missing> missing_parts(Connection& connection);

// The statements that make a new shop, in their order: base schema, upgrade list, tables of the tills.
void for_each_definition(const std::function<void(std::string_view)>& take);

// A failed entry of the list, reworded for a server that knows less of the language: columns are added one by
// one, and a column is altered without NULL. Empty if it cannot be reworded.
std::vector<std::string> simpler_statements(std::string_view statement);

// An entry of the list: a statement or a procedure.
struct UpgradeEntry {
    using Procedure = void (*)(Connection&);
    consteval UpgradeEntry(int entry, const char* text) : number(entry), statement(text) {}
    consteval UpgradeEntry(int entry, Procedure run) : number(entry), procedure(run) {}

    int number;
    std::string_view statement;  // to the letter, also entry 115, which no server can run; or
    Procedure procedure = nullptr;
};

// The 300 entries in their order.
std::span<const UpgradeEntry> upgrade_entries();

// The three entries that are more than a statement. An operation in them that fails is skipped.
//
// Entry 177: one text column "p_" and the store's code in items for every store.
void add_store_columns(Connection& connection);
// Entry 224: copies every shift without a drawer to each drawer; the ones without stay.
void copy_shifts_to_drawers(Connection& connection);
// Entry 300: gives vouchers without pay_id the numbers after the highest.
void number_vouchers(Connection& connection);

}  // namespace database
