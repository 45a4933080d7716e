// The kinds of reports, and how one is made: in steps, so that a long one can show its progress and be ended.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "database/connection.h"
#include "reports/period.h"
#include "reports/table.h"

namespace reports {

enum class KindId {
    sales_by_day,
    sales_by_month,
    sales_by_hour,
    sales_by_item,
    sales_by_group,
    sales_by_cashier,
    sales_by_store,
    sales_by_payment,
    profit_by_day,
    profit_by_item,
    profit_by_group,
    discounts_and_returns,
    suppliers,
    ages_of_customers,
    ages_of_suppliers,
    stock_by_group,
    stock_by_store,
    cash,
    closed_days,
};

struct Kind {
    KindId id;
    std::string_view name;  // of the file in which it is kept
    std::string_view caption;
    bool has_period;  // otherwise it is about this moment
    bool tells_cost;  // only for who may see what goods cost
};
// In the order of the list to choose from.
std::span<const Kind> kinds();
const Kind& kind_of(KindId id);

// What a report covers, and for whom it is made.
struct Request {
    KindId kind = KindId::sales_by_day;
    Period period;
    common::Moment now;       // for figures of this moment
    bool shows_cost = false;  // the user may see what goods cost
};

class Maker;

// A report while it is being made.
class Report {
  public:
    Report(database::Connection& connection, const Request& request);
    ~Report();
    int steps() const;
    int done() const { return done_; }
    // Does the next step. Throws Error.
    void step();
    // After all steps.
    Table table();

  private:
    std::unique_ptr<Maker> maker_;
    int done_ = 0;
};

// The whole report at once.
Table table_of(database::Connection& connection, const Request& request);

}  // namespace reports
