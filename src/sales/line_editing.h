// In-place editing of a line's quantity, price and discount, with its ceilings, refusals and warnings.
#pragma once

#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/stock_check.h"
#include "signin/session.h"

namespace sales {

class LineEditing {
  public:
    LineEditing(database::Connection& connection, const signin::Session& session, common::Prompts& prompts)
        : connection_(connection),
          session_(session),
          prompts_(prompts),
          stock_(connection, session, prompts) {}

    // True when the cell may be opened; else the reason has been said. Only columns 4 to 7 open.
    bool may_open(const Line& line, int column);

    // Commits what was typed into a cell of columns 4 to 7. False when it was refused, which has been said: a
    // refused discount leaves "0.00", a refused quantity or price leaves the line as it was, and so does a
    // text that is no number.
    bool commit(Invoice& invoice, std::size_t row, int column, std::string_view text);

  private:
    bool refuse(std::string_view text);
    bool commit_quantity(Invoice& invoice, Line& line, std::string_view text);
    bool commit_price(Line& line, std::string_view text);
    bool commit_discount(Line& line, std::string_view text, bool as_percent);
    bool stock_allows(const Invoice& invoice, Line& line, double quantity);
    bool craftsman_allows(const Invoice& invoice, const Line& line, double quantity);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    StockCheck stock_;
};

}  // namespace sales
