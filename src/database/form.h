// Forms and the tables of the database: loads, checks and stores the fields of a form by its table.
#pragma once

#include <optional>

#include "common/form.h"
#include "common/refusal.h"
#include "database/choices.h"
#include "database/recordset.h"

namespace database {

// A cell as the value of a field: amounts as "0.00", a null choice as none, 1 as a ticked box.
common::FieldValue field_value(const common::FieldDescription& field, const Row& row);
// The value of a field as the cell it is stored in: an empty code and no choice as null, a ticked box as 1.
Value cell_of(const common::FieldDescription& field, const common::FieldValue& value);

// Refuses a required field that is empty.
std::optional<common::Refusal> check_missing(const common::FieldDescription& field,
                                             const common::FieldValue& value);
// Refuses invalid codes, amounts and dates, and texts that are too long for their column.
std::optional<common::Refusal> check_format(const common::FieldDescription& field,
                                            const common::FieldValue& value, const TextLimits& limits);

// Checks all fields, first for what is missing; returns the first refusal in the order of the table.
template <typename Values>
std::optional<common::Refusal> check(common::FormTable<Values> table, const Values& values,
                                     const TextLimits& limits) {
    for (const auto& field : table) {
        if (auto refusal = check_missing(field.description, value_of(field, values))) return refusal;
    }
    for (const auto& field : table) {
        if (auto refusal = check_format(field.description, value_of(field, values), limits)) return refusal;
    }
    return std::nullopt;
}

// Reads the fields that have a column; the others keep their values.
template <typename Values>
void load(common::FormTable<Values> table, const Row& row, Values& values) {
    for (const auto& field : table) {
        if (!field.description.column.empty()) set_value(field, values, field_value(field.description, row));
    }
}

// Sets the columns of the fields that have one. The values must have been checked.
template <typename Values>
void store(common::FormTable<Values> table, const Values& values, Recordset& row) {
    for (const auto& field : table) {
        if (!field.description.column.empty())
            row.set(field.description.column, cell_of(field.description, value_of(field, values)));
    }
}

}  // namespace database
