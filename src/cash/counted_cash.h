// The cash panel of the sales screen: a drawer's expected cash on a day, and the counted cash, from which a
// surplus or a shortage follows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cash/cash_position.h"
#include "common/amount.h"
#include "common/choice.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

class CountedCash {
  public:
    CountedCash(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // The workstation's store and drawer, today; computes the panel.
    void open();
    // Takes the workstation's own drawer in its own store, else the store's first drawer.
    void choose_store(std::int64_t store);
    void choose_drawer(std::int64_t drawer);
    void choose_day(const common::Date& day);
    // Computes the panel again: the position up to the end of the day.
    void refresh();

    // Records the counted cash: its difference to the expected cash becomes the day's one surplus or shortage
    // of the drawer, in place of an earlier one, and the panel shows it. If it is refused, nothing is
    // written. It is refused if the expected cash has changed since the panel showed it; the panel then shows
    // the new figure. The log tells who counted a drawer that is not the workstation's.
    std::optional<common::Refusal> confirm();

    std::string counted = "0.00";

    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    std::int64_t store() const { return store_; }
    std::int64_t drawer() const { return drawer_; }
    const common::Date& day() const { return day_; }

    // The position without the day's own surplus or shortage, so that a second count gives the same.
    common::Amount expected() const { return expected_; }
    // The day's recorded count; nothing before the first one.
    struct Count {
        common::Amount counted;
        common::Amount difference;  // surplus (above zero) or shortage (below), as recorded
        common::Amount expected() const { return counted - difference; }
        common::Amount moved_since;  // what came into the drawer (above zero) or left it until the day's end
        std::optional<common::Moment> at;
    };
    const std::optional<Count>& count() const { return count_; }
    // Returns true if the shop counts drawers blindly and this one is not counted yet on this day.
    bool hides_expected() const { return is_blind_ && !count_; }
    // The cash position, with the surplus or shortage.
    common::Amount position() const { return position_; }
    common::Amount card_sales() const { return card_sales_; }
    common::Amount uncollected() const { return uncollected_; }
    // Of the day.
    const InvoiceDiscounts& discounts() const { return discounts_; }

  private:
    Count read_count(const database::Row& row) const;
    void log_count(common::Amount amount) const;

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::int64_t store_ = 0;
    std::int64_t drawer_ = 0;
    common::Date day_;
    bool is_blind_ = false;
    common::Amount expected_;
    std::optional<Count> count_;
    common::Amount position_;
    common::Amount card_sales_;
    common::Amount uncollected_;
    InvoiceDiscounts discounts_;
};

}  // namespace cash
