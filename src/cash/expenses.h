// The logic of Form41ca: a daily expense paid from a drawer.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cash/lists.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

class Expenses {
  public:
    static constexpr std::string_view title = "اضافة مصروف يومي";  // add a daily expense

    Expenses(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // The lists, the workstation's store and drawer, today, value "0.00".
    void open();
    void choose_store(std::int64_t store);  // reloads the drawers, of which none is chosen
    void choose_drawer(std::optional<std::int64_t> drawer) { drawer_ = drawer; }
    void choose_main_heading(std::int64_t heading);  // reloads the sub headings, of which none is chosen
    void choose_sub_heading(std::optional<std::int64_t> heading) { sub_heading_ = heading; }

    // Writes the expense and asks whether another follows; if so the value is "0.00" again. True when it was
    // written; is_done() then says whether the screen closes.
    bool save();
    bool is_done() const { return done_; }

    common::Date date;
    std::string value = "0.00";
    std::string notes;

    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    const std::vector<common::Choice>& main_headings() const { return main_headings_; }
    const std::vector<common::Choice>& sub_headings() const { return sub_headings_; }
    std::int64_t store() const { return store_; }
    const std::optional<std::int64_t>& drawer() const { return drawer_; }
    const std::optional<std::int64_t>& main_heading() const { return main_heading_; }
    const std::optional<std::int64_t>& sub_heading() const { return sub_heading_; }

  private:
    bool refuse(std::string_view text);
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::vector<common::Choice> main_headings_;
    std::vector<common::Choice> sub_headings_;
    std::int64_t store_ = 0;
    std::optional<std::int64_t> drawer_;
    std::optional<std::int64_t> main_heading_;
    std::optional<std::int64_t> sub_heading_;
    bool done_ = false;
};

}  // namespace cash
