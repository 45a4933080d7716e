// The upgrade list as data: 300 entries in their order, each a statement or a procedure.
#pragma once

#include <span>
#include <string_view>

#include "database/connection.h"

namespace database {

struct UpgradeEntry {
    using Procedure = void (*)(Connection&);
    consteval UpgradeEntry(int entry, const char* text) : number(entry), statement(text) {}
    consteval UpgradeEntry(int entry, Procedure run) : number(entry), procedure(run) {}

    int number;
    std::string_view statement;  // to the letter, also entry 115, which no server can run; or
    Procedure procedure = nullptr;
};

std::span<const UpgradeEntry> upgrade_entries_1_to_100();
std::span<const UpgradeEntry> upgrade_entries_101_to_200();
std::span<const UpgradeEntry> upgrade_entries_201_to_300();

// The three entries that are more than a statement. An operation in them that fails is skipped.
//
// Entry 177: one text column "p_" and the store's code in items for every store.
void add_store_columns(Connection& connection);
// Entry 224: copies every shift without a drawer to each drawer; the ones without stay.
void copy_shifts_to_drawers(Connection& connection);
// Entry 300: gives vouchers without pay_id the numbers after the highest.
void number_vouchers(Connection& connection);

}  // namespace database
