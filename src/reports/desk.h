// The logic of the page of reports: what is chosen, the report made from it, and the report on paper.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "printing/report.h"
#include "reports/behind.h"
#include "reports/report.h"
#include "signin/session.h"

namespace reports {

struct DeskFields {
    std::optional<std::int64_t> kind;
    std::optional<std::int64_t> preset;
    common::Date start;
    common::Date end;
    std::optional<std::int64_t> store;
};
common::FormTable<DeskFields> desk_form();

class Desk {
  public:
    Desk(database::Connection& connection, const signin::Session& session, common::Clock& clock)
        : connection_(connection), session_(session), clock_(clock) {}

    // Reads the lists; at the first time sales by day of this month, in all stores.
    void open();
    // Sets the days of the preset chosen in the fields.
    void take_preset();
    // What the fields choose. Refused for a period that ends before it begins; days of an earlier choice
    // count as chosen freely if they were changed since.
    std::optional<common::Refusal> choose();
    const Request& request() const { return request_; }
    const Kind& kind() const { return kind_of(request_.kind); }

    // Makes the report, step by step: `go_on` is called before each step and ends the work by returning
    // false; the table shown then stays. Returns true if it was made.
    bool make(const std::function<bool(int done, int total)>& go_on);
    const Table& table() const { return table_; }
    Behind rows_behind(std::size_t row);

    // The period, or the moment, and the store, as they stand above the table.
    std::string period_text() const;
    printing::Report paper() const;

    DeskFields fields;
    const std::vector<common::Choice>& kinds() const { return kinds_; }
    const std::vector<common::Choice>& presets() const { return presets_; }
    const std::vector<common::Choice>& stores() const { return stores_; }  // all (0) first

  private:
    database::Connection& connection_;
    const signin::Session& session_;
    common::Clock& clock_;
    std::vector<common::Choice> kinds_;
    std::vector<common::Choice> presets_;
    std::vector<common::Choice> stores_;
    Request request_;  // of the table that is shown
    Request chosen_;
    Table table_;
};

// A list of rows as a paper.
printing::Report paper_of(const Behind& behind, const signin::Session& session);

}  // namespace reports
