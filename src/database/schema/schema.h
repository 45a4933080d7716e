// The base schema of a new shop and the upgrade list that brings any shop up to date.
#pragma once

#include <span>
#include <string>
#include <string_view>

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
