// `EnterItem`: one entry of the item-code field becomes a new line, or more of a line that is there.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/item_lookup.h"
#include "sales/scan.h"
#include "sales/screen_lists.h"
#include "sales/stock_check.h"
#include "signin/session.h"

namespace sales {

class ItemEntry {
  public:
    ItemEntry(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
              const Lists& lists)
        : connection_(connection), prompts_(prompts), lists_(lists), stock_(connection, session, prompts) {}

    // The goods come from another store: its stock decides, and they get a line of their own.
    void supply_from(std::int64_t store) { supplier_ = store; }

    // Returns the row that was added or raised; nothing after saying why the entry was refused.
    std::optional<std::size_t> enter(Invoice& invoice, std::string_view text);

  private:
    std::optional<std::size_t> refuse(std::string_view text);
    bool parties_present(const Invoice& invoice);
    std::optional<std::size_t> add_general_item(Invoice& invoice, const std::string& name);
    std::optional<std::size_t> enter_craftsman_line(Invoice& invoice, const Entry& entry, double quantity);
    std::optional<std::size_t> enter_found(Invoice& invoice, const Item& item, double quantity,
                                           const CraftsmanLine* work);
    std::optional<std::size_t> raise_line(Invoice& invoice, Line& line, const Item& item, double quantity,
                                          bool below_stock, const CraftsmanLine* work);

    database::Connection& connection_;
    common::Prompts& prompts_;
    const Lists& lists_;
    StockCheck stock_;
    std::int64_t supplier_ = 0;  // 0: the selling store
};

}  // namespace sales
