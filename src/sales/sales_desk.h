// The sales screen without its window (object `Form31`): the invoice being rung up, and the parts that act on
// it. A window calls an action of a part and then repaints from sale().
#pragma once

#include "sales/checkout.h"
#include "sales/offers.h"
#include "sales/sale_header.h"
#include "sales/sale_lines.h"
#include "sales/saved_receipts.h"

namespace sales {

// Constructed before the parts that refer to it.
struct DeskStateHolder {
    DeskState own_state;
};

// Every action keeps the desk usable whatever happens below it: an error becomes a message and a log line,
// and the invoice stays as it was.
class SalesDesk : DeskStateHolder, DeskPart {
  public:
    SalesDesk(database::Connection& connection, signin::Session& session, common::Services services,
              printing::ReceiptPrinter& printer);
    SalesDesk(const SalesDesk&) = delete;
    SalesDesk& operator=(const SalesDesk&) = delete;

    // Fills the lists, sets the date, draws the number, loads the sale period, the shifts and the news, and
    // selects the default price level. Returns false after a message if the database failed.
    bool Open();
    // Every second. At midnight the invoice gets the new day.
    void tick();
    void reload_customers();  // after a neighbouring screen added one
    void reload_shifts();     // after the shift screen

    const Sale& sale() const { return sale_; }
    const Invoice& invoice() const { return invoice_; }
    const Lists& lists() const { return state_.lists; }
    const std::optional<LastReceipt>& last_receipt() const { return state_.last_receipt; }
    const std::vector<std::string>& news() const { return news_; }
    const std::vector<ShiftRow>& shifts() const { return shifts_; }
    // The open shift of this drawer; 0 between shifts.
    std::int64_t shift_number() const;
    // "hh:mm AM/PM" at opening, "hh:mm:ss AM/PM" from the first tick on.
    const std::string& clock_text() const { return clock_text_; }

    SaleHeader& header() { return header_; }
    SaleLines& lines() { return lines_; }
    Checkout& checkout() { return checkout_; }
    SavedReceipts& receipts() { return receipts_; }
    SaleOffers& offers() { return offers_; }

  private:
    SaleHeader header_{state_};
    SaleLines lines_{state_};
    Checkout checkout_{state_};
    SavedReceipts receipts_{state_};
    SaleOffers offers_{state_};

    std::vector<std::string> news_;
    std::vector<ShiftRow> shifts_;
    std::string clock_text_;
    common::Date last_tick_day_;
};

}  // namespace sales
