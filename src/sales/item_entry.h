// `EnterItem`: one entry of the item-code field becomes a new line, or more of a line that is there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/entry.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "sales/lists.h"
#include "sales/stock_check.h"
#include "signin/session.h"

namespace sales {

class ItemEntry {
  public:
    ItemEntry(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
              const Lists& lists)
        : connection_(connection), prompts_(prompts), lists_(lists), stock_(connection, session, prompts) {}

    // The goods come from another store if `supplier` is not 0: its stock decides, and they get a line of
    // their own. Returns the row that was added or raised; nothing after showing why the entry was refused.
    std::optional<std::size_t> enter(Invoice& invoice, const Entry& entry, std::int64_t supplier);

  private:
    std::optional<std::size_t> refuse(std::string_view text);
    bool parties_present(const Invoice& invoice);
    std::optional<std::size_t> add_general_item(Invoice& invoice, const std::string& name);
    std::optional<std::size_t> enter_found(Invoice& invoice, const Item& item, double quantity,
                                           std::int64_t supplier,
                                           const std::optional<CraftsmanLine>& work = {});
    Line new_line(const Item& item, double price, double quantity,
                  const std::optional<CraftsmanLine>& work) const;

    database::Connection& connection_;
    common::Prompts& prompts_;
    const Lists& lists_;
    StockCheck stock_;
};

}  // namespace sales
