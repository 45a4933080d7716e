// A daily expense paid from a drawer: its fields, and the logic of the screen Form41ca.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

struct Expense {
    std::optional<std::int64_t> store;
    std::optional<std::int64_t> drawer;
    std::optional<std::int64_t> main_heading;
    std::optional<std::int64_t> sub_heading;
    std::string value = "0.00";
    common::Date date;
    std::string notes;
};
common::FormTable<Expense> expense_form();

class Expenses {
  public:
    static constexpr std::string_view title = "اضافة مصروف يومي";  // add a daily expense

    Expenses(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // Reads the lists; an expense of the workstation's store and drawer, today, "0.00".
    void open();
    // Reads the store's drawers; none of them is chosen. Choosing the same store again changes nothing.
    void choose_store(std::optional<std::int64_t> store);
    // Likewise the sub headings of a main heading.
    void choose_main_heading(std::optional<std::int64_t> heading);

    // Writes the expense and asks whether another follows; if so the value is "0.00" again, otherwise
    // is_done() becomes true. Writes nothing if it is refused.
    std::optional<common::Refusal> save();
    bool is_done() const { return done_; }

    Expense expense;

    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    const std::vector<common::Choice>& main_headings() const { return main_headings_; }
    const std::vector<common::Choice>& sub_headings() const { return sub_headings_; }

  private:
    std::optional<common::Refusal> check() const;
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::vector<common::Choice> main_headings_;
    std::vector<common::Choice> sub_headings_;
    std::optional<std::int64_t> drawers_of_;       // the store that drawers_ belongs to
    std::optional<std::int64_t> sub_headings_of_;  // the main heading that sub_headings_ belongs to
    bool done_ = false;
};

}  // namespace cash
