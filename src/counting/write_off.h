// Damaged, expired and used goods that leave the stock without a sale: reports of such goods in `bad_data`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "common/amount.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace counting {

// A batch of an item in a store.
struct Batch {
    common::Date expiry;  // common::no_expiry for goods without a date
    double held = 0;      // base units
};
// Those with stock, the oldest first.
std::vector<Batch> read_batches(database::Connection& connection, std::int64_t store, std::int64_t item);

// What is to be written off, as it was typed.
struct WrittenOff {
    std::int64_t item = 0;
    int unit_level = 1;
    std::string quantity = "1";          // in that unit
    std::optional<common::Date> expiry;  // the batch; nothing for the oldest
    std::string reason;
};

struct WriteOffLine {
    std::int64_t item = 0;
    std::string name;
    double quantity = 0;                 // base units; below 0 where the goods came back
    std::optional<common::Date> expiry;  // nothing for the oldest
    std::string reason;
    double cost = 0;  // of a base unit, then
    common::Amount value() const { return common::Amount(quantity * cost); }
};

// Checks and completes a line; the lines before it take from the same stock.
std::variant<WriteOffLine, common::Refusal> write_off_line(database::Connection& connection,
                                                           std::int64_t store, const WrittenOff& typed,
                                                           const std::vector<WriteOffLine>& before);

// Takes the goods from the store's stock and writes the report, in one transaction. Returns the report's
// number, or why it was refused; nothing is changed then.
std::variant<std::int64_t, common::Refusal> write_off(database::Connection& connection,
                                                      const signin::Session& session, common::Clock& clock,
                                                      std::int64_t store,
                                                      const std::vector<WriteOffLine>& lines);

// A line of a report that was saved.
struct WriteOffRow {
    std::int64_t number = 0;  // of the report
    common::Moment moment;
    std::int64_t store = 0;
    std::string store_name;
    WriteOffLine line;
};
// Of the days from `from` to `to`, in all stores unless one is given; the newest report first.
std::vector<WriteOffRow> read_write_offs(database::Connection& connection, const common::Date& from,
                                         const common::Date& to, std::optional<std::int64_t> store = {});
common::Amount value_of(const std::vector<WriteOffRow>& rows);

// Writes a counter entry to a whole report: its goods go back into their batches. Once only.
std::variant<std::int64_t, common::Refusal> reverse_write_off(database::Connection& connection,
                                                              const signin::Session& session,
                                                              common::Clock& clock, std::int64_t number);

}  // namespace counting
