// Offers at the sales desk: an invoice kept as a quotation, loaded back, sold and printed.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/report.h"
#include "sales/sale.h"
#include "sales/stock_check.h"

namespace sales {

// Checks the lines that came from an offer before their invoice is sold. An item that was repriced since then
// keeps the offer's price: that is what an offer is for.
class OfferLines {
  public:
    // Adds the reads; the object must still be there when they run.
    void ask(database::Reads& reads, const Invoice& invoice);
    // The message about the first line that can no longer be sold as offered: its item was stopped or
    // deleted, or the other store that was to supply it no longer holds enough. Nothing if all can.
    std::optional<std::string> refused(const Invoice& invoice) const;

  private:
    std::map<std::int64_t, bool> stopped_;  // of the items that the shop has
    Goods levels_;
};

// An offer as an A4 quotation, with its total in words (in figures only beyond what the words reach). Nothing
// if there is no offer of that number.
std::optional<printing::Report> quotation(database::Connection& connection, const signin::Session& session,
                                          std::int64_t number);

class SaleOffers : DeskPart {
  public:
    explicit SaleOffers(DeskState& state) : DeskPart(state) {}

    // Keeps the lines as a new offer and clears the screen. Returns the offer's number; 0 after showing why
    // it was refused.
    std::int64_t SaveOffer();
    // Replaces the invoice by an offer, as a new invoice with the next number. An unknown number gives a
    // message and changes nothing.
    bool LoadOffer(std::int64_t number);
};

}  // namespace sales
