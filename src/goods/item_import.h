// Imports the items of a CSV file: adds new ones, and changes those that the shop has if that is wanted; all
// of them or none.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "goods/item_lines.h"
#include "goods/prices.h"
#include "signin/session.h"

namespace goods {

// Reports the progress of an import: bytes read, then lines written. The lines start again if they have to be
// written one by one.
enum class ImportStage { reading, writing };
using ImportProgress = std::function<void(ImportStage stage, std::size_t done, std::size_t total)>;

// What a line of the file does to the shop.
struct PlannedLine {
    ItemLine item;
    std::string name;  // of the item, also if the line does not give it
    std::string changes;  // to an item that the shop has: "قطاعي وحدة: من 10.00 إلى 12.00"; for people
    bool changes_anything() const { return !item.is_update || !changes.empty(); }
};

struct ImportPlan {
    std::vector<PlannedLine> lines;
    std::vector<LineProblem> problems;  // if there are any, nothing can be imported
    std::vector<LineProblem> notes;     // to be looked at; they stop nothing
    std::size_t added = 0;
    std::size_t changed = 0;
    bool has_unknown_headings = false;
};
// Reads a CSV text (item_lines.h) and says what importing it would do; writes nothing.
ImportPlan plan_import(database::Connection& connection, std::string_view csv, bool may_update,
                       const ImportProgress& progress = {});

struct ImportOutcome {
    std::size_t items = 0;    // added
    std::size_t changed = 0;  // of those that the shop had
    std::size_t barcodes = 0;
    std::size_t batches = 0;            // rows of opening stock
    std::vector<LineProblem> problems;  // if there are any, nothing was written
};

// Writes items, makers, groups, barcodes, opening stock and price changes in one transaction, if the plan has
// no problems. Meanwhile somebody may have changed an item of the plan: that is a problem of its line.
ImportOutcome write_import(database::Connection& connection, const signin::Session& session,
                           const ImportPlan& plan, const common::Moment& now,
                           const ImportProgress& progress = {});

}  // namespace goods
