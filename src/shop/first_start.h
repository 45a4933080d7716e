// The first start of the office, where there is no shop yet: what it asks for, step by step, and the shop
// that is made of the answers. Nothing is written before make().
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/date_time.h"
#include "common/form.h"
#include "common/refusal.h"
#include "goods/item_import.h"
#include "printing/receipt.h"
#include "shop/new_shop.h"

namespace shop {

struct FirstStartFields {
    std::string name;
    std::string second_name;
    std::string telephone;

    std::string store = "الفرع الرئيسي";
    std::string drawer_1 = "درج 1", drawer_2, drawer_3;  // one without a name does not exist
    std::string opening_1 = "0.00", opening_2 = "0.00", opening_3 = "0.00";

    std::string denominations;
    std::string drawer_port;  // empty: no drawer that opens by itself

    std::string owner, owner_password, owner_again;
    std::string cashier_1, cashier_2, cashier_3;
    std::string password_1, password_2, password_3;

    std::string items_file;  // empty: no items yet
};

enum class FirstStep { shop, drawers, printer, users, items, summary };
inline constexpr std::array first_steps = {FirstStep::shop,  FirstStep::drawers, FirstStep::printer,
                                           FirstStep::users, FirstStep::items,   FirstStep::summary};

struct FirstStepText {
    std::string_view title;
    std::string_view explanation;
};
FirstStepText text_of(FirstStep step);
// The fields of a step; none for the summary.
common::FormTable<FirstStartFields> form_of(FirstStep step);

class FirstStart {
  public:
    explicit FirstStart(std::filesystem::path folder);

    FirstStartFields fields;
    printing::PrinterChoice printer;

    const std::filesystem::path& folder() const { return folder_; }
    // Refuses a step in which something is missing or impossible.
    std::optional<common::Refusal> check(FirstStep step) const;
    // Reads the items file and tries it on a temporary shop. Refused with the lines at fault.
    std::optional<common::Refusal> read_items(const common::Moment& now);
    // What the file that was read would add, and the lines at fault.
    const goods::ImportPlan& items_plan() const { return items_plan_; }
    // What the shop will be, as captions and values.
    std::vector<std::pair<std::string, std::string>> summary() const;
    // Makes the shop; all of it or nothing. Throws Refused.
    void make(const common::Moment& now);

  private:
    std::optional<common::Refusal> check_drawers() const;
    std::optional<common::Refusal> check_users() const;
    std::vector<NewDrawer> drawers() const;
    std::vector<Person> cashiers() const;
    std::string port_of_drawer() const;

    std::filesystem::path folder_;
    std::string items_;  // the file's text
    goods::ImportPlan items_plan_;
    std::size_t item_count_ = 0;
};

}  // namespace shop
