// The lists of the shop that are kept in the office: stores, drawers, staff, banks and so on. Each is
// described once; one editor (list_editor.h) and one page keep them all.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "common/form.h"
#include "common/refusal.h"
#include "database/sql.h"

namespace database {
class Connection;
}

namespace shop {

// Where a row of a list may be in use. The code is appended to the statement; if the parent is part of the
// key, `and_parent` and the parent's code follow.
struct Reference {
    std::string_view words;
    database::Fragment find;
    database::Fragment and_parent = "";
};

// A row as the editor holds it: its code, that of its parent (0 without one) and the values of the fields.
struct ListRow {
    std::int64_t code = 0;
    std::int64_t parent = 0;
    std::vector<common::FieldValue> values;
    bool operator==(const ListRow&) const = default;
};

struct ListDescription {
    std::string_view name;     // of its entry on the page
    std::string_view caption;  // "banks"
    std::string_view one;      // "a bank"
    std::string_view table;
    std::string_view key;                              // the column of the code
    database::Fragment all;                            // every row, in the order shown
    database::Fragment row;                            // one row; the code follows
    database::Fragment highest;                        // the highest code
    database::Fragment erase;                          // deletes a row; the code follows
    std::span<const common::FieldDescription> fields;  // the name first
    std::span<const Reference> references;
    // The list that a row belongs to; its column here is the second field.
    std::string_view parent = {};
    std::string_view parent_column = {};
    // Set if codes are counted within the parent: what names the parent in `row`, `highest` and `erase`.
    database::Fragment and_parent = "";
    database::Fragment where_parent = "";
    bool is_counted_in_parent() const { return !and_parent.text().empty(); }
    // A further check of a row against the others.
    std::optional<common::Refusal> (*check)(const ListRow& row, const std::vector<ListRow>& others) = nullptr;
    // Called in the same transaction after a row was added.
    void (*added)(database::Connection& connection) = nullptr;
};

std::span<const ListDescription> lists();
const ListDescription& list_named(std::string_view name);

}  // namespace shop
