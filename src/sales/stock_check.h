// Whether the stock allows a quantity: the one rule behind entry, duplicate lines, quantity edits and saving.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "signin/session.h"

namespace sales {

// The sum of an item's stock in a store, in base units; 0 without a row.
double available_stock(database::Connection& connection, std::int64_t item, std::int64_t store);

// True when the stock covers the need; equality suffices. Both in base units, compared to the three decimals
// that quantities have, so that the noise of single-precision columns and of sums decides nothing.
bool stock_suffices(double available, double needed);

// What the lines of an invoice take of an item from a store, in base units; `except` leaves out one line.
double held_by_lines(const Invoice& invoice, std::int64_t item, std::int64_t store,
                     const Line* except = nullptr);

struct StockNeed {
    std::int64_t item = 0;
    std::string name;
    std::int64_t store = 0;
    double factor = 1;  // base units in the unit that the cashier sees
    std::string unit_name;
    double base_quantity = 0;  // all that the invoice takes from the store with this entry, in base units
};

enum class StockAnswer {
    enough,
    confirmed,  // below stock or from reserved stock, by a user who may and who said yes
    refused,
};

class StockCheck {
  public:
    StockCheck(database::Connection& connection, const signin::Session& session, common::Prompts& prompts)
        : connection_(connection), session_(session), prompts_(prompts) {}

    // Judges a need. Short stock that reservations explain is asked about (permission 291 decides after a
    // yes); other short stock goes to the override question for who may sell below stock, and to `refusal`
    // for all others. Whatever is refused has been said.
    StockAnswer judge(const StockNeed& need, std::string_view refusal);

  private:
    StockAnswer ask_for_reserved();
    bool ask_override(const StockNeed& need, double available);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
};

}  // namespace sales
