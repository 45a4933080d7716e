// Whether the stock allows a quantity: the one rule behind entry, more of a line, quantity edits and saving.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "signin/session.h"
#include "stock/line_source.h"

namespace sales {

using stock::stock_suffices;

// The sum of an item's stock in a store, in base units; 0 without a row.
double available_stock(database::Connection& connection, std::int64_t item, std::int64_t store);

// What the lines of an invoice take of an item from a store, in base units; `except` leaves out one line.
double held_by_lines(const Invoice& invoice, std::int64_t item, std::int64_t store,
                     const Line* except = nullptr);

enum class StockAnswer {
    enough,
    confirmed,  // below stock or from reserved stock, by a user who may and who said yes
    refused,
};

// Each takes a line, of the invoice or not yet of it, and the quantity that it is to hold, in its unit. The
// other lines of the invoice are counted as well.
class StockCheck {
  public:
    StockCheck(database::Connection& connection, const signin::Session& session, common::Prompts& prompts)
        : connection_(connection), session_(session), prompts_(prompts) {}

    // The limits of the line itself: what its receipt still allows to return, what is left of its craftsman's
    // `work` line, what the other store holds that supplies it. Returns false after showing why.
    bool line_allows(const Invoice& invoice, const Line& line, double quantity,
                     const std::optional<CraftsmanLine>& work);

    // The stock of the selling store. Short stock that reservations explain is asked about (permission 291
    // decides after a yes). Other short stock goes to the override question for who may sell below stock, and
    // to `refusal` for all others.
    StockAnswer selling_store_allows(const Invoice& invoice, const Line& line, double quantity,
                                     std::string_view refusal);

  private:
    StockAnswer ask_for_reserved();
    bool ask_override(const Line& line, double available, double needed);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
};

}  // namespace sales
