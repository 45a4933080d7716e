// The till's journal as a shop keeper reads it: the events of a period, the newest first, and their totals by
// kind and user.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audit/entry.h"
#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"

namespace audit {

struct ReviewFields {
    common::Date start;
    common::Date end;
    std::optional<std::int64_t> user;
    std::optional<std::int64_t> kind;  // its place in kinds(), counted from 1
};
common::FormTable<ReviewFields> review_form();

// Moment, user, event, what, amount, item, invoice, approver, drawer.
extern const std::array<std::string_view, 9> event_headings;
// Event, user, number, amount.
extern const std::array<std::string_view, 4> total_headings;

struct ReviewRow {
    std::int64_t till = 0;
    Entry entry;
    // In the order of the headings.
    std::array<std::string, 9> cells() const;
};

struct KindTotal {
    std::string kind;
    Person user;
    std::int64_t number = 0;
    std::optional<common::Amount> amount;  // nothing if none of the events has one
    std::array<std::string, 4> cells() const;
};

class Review {
  public:
    // More rows are not shown; the totals count them.
    static constexpr int most_rows = 20'000;

    explicit Review(database::Connection& connection) : connection_(connection) {}

    // Reads the users; the period is that day.
    void open(const common::Date& today);
    std::optional<common::Refusal> show();

    ReviewFields fields;

    // Everybody (0) and every kind (0) first.
    const std::vector<common::Choice>& users() const { return users_; }
    const std::vector<common::Choice>& kinds() const { return kinds_; }
    const std::vector<ReviewRow>& rows() const { return rows_; }
    const std::vector<KindTotal>& totals() const { return totals_; }
    // The number of chosen events, shown or not.
    std::int64_t count() const { return count_; }

  private:
    database::Connection& connection_;
    std::vector<common::Choice> users_;
    std::vector<common::Choice> kinds_;
    std::vector<ReviewRow> rows_;
    std::vector<KindTotal> totals_;
    std::int64_t count_ = 0;
};

}  // namespace audit
