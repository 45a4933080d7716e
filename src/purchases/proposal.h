// What to order of each supplier, from what was sold in the last weeks.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"

namespace purchases {

struct ProposalFields {
    std::string weeks = "4";
    std::optional<std::int64_t> store;     // 0 for all
    std::optional<std::int64_t> supplier;  // 0 for all
};
common::FormTable<ProposalFields> proposal_form();

struct ProposedLine {
    std::int64_t item = 0;
    std::string name;
    std::int64_t supplier = 0;  // that of its last receipt; 0 if it was never taken in
    std::string supplier_name;
    double sold = 0;  // in base units, what came back taken off
    double stock = 0;
    double minimum = 0;
    int unit_level = 1;  // that of its last receipt
    double factor = 1;
    double quantity = 0;  // proposed, in whole units of that level
    double cost = 0;      // of one such unit on the item's card

    // What was sold and the minimum, less what is in stock.
    double needed() const { return sold + minimum - stock; }
};

class Proposal {
  public:
    Proposal(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    // Reads the lists; nothing is proposed yet.
    void open();
    // Proposes what is needed, by supplier and name.
    std::optional<common::Refusal> show();
    // Sets a quantity by hand; 0 takes the line off the order.
    std::optional<common::Refusal> set_quantity(std::size_t row, std::string_view typed);

    ProposalFields fields;

    const std::vector<ProposedLine>& lines() const { return lines_; }
    // All of them (0) first.
    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& suppliers() const { return suppliers_; }

  private:
    struct Source;  // of an item: its last receipt
    void add_line(const database::Row& item, double sold, double stock, const Source* source);

    database::Connection& connection_;
    common::Services services_;
    std::vector<ProposedLine> lines_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> suppliers_;
};

}  // namespace purchases
