// Offers at the sales desk: an invoice kept as a quotation, loaded back, sold and printed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/report.h"
#include "sales/sale.h"

namespace sales {

// The message about the first line loaded from an offer that can no longer be sold as offered: its item was
// stopped or deleted, or the other store that was to supply it no longer holds enough. Nothing if all can.
// An item that was repriced since keeps the offer's price, which is what an offer is for.
std::optional<std::string> offer_line_refused(database::Connection& connection, const Invoice& invoice);

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
