// Between the invoice on the sales screen and the offers kept in the shop.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/report.h"
#include "sales/invoice.h"
#include "signin/session.h"
#include "stock/offers.h"

namespace sales {

stock::OfferHeader offer_header(const Invoice& invoice, std::int64_t user);
// The 25 cells of each line, as the grid shows them.
std::vector<stock::OfferLine> offer_lines(const Invoice& invoice);

// The offer as an invoice without number, store and price level, its lines marked. Customers are named from
// the shop's rows; one that was deleted since keeps its code, which saving then refuses.
Invoice invoice_of(database::Connection& connection, const stock::Offer& offer);

// The message about the first line loaded from an offer whose item may no longer be sold; none when all may.
// An item that was repriced since keeps the offer's price: that is what an offer is for.
std::optional<std::string> offer_line_refused(database::Connection& connection, const Invoice& invoice);

// An offer as an A4 quotation, with its total in words (in figures only beyond what the words reach). Nothing
// when there is no offer of that number.
std::optional<printing::Report> quotation(database::Connection& connection, const signin::Session& session,
                                          std::int64_t number);

}  // namespace sales
