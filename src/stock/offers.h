// Offers: invoices kept as quotations, cell for cell, to be loaded and sold later.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace stock {

inline constexpr std::size_t offer_cells = 25;
// The widest text that a cell holds, in characters; longer ones are cut, as the column allows no more.
inline constexpr std::size_t cell_width = 50;

using OfferLine = std::array<std::string, offer_cells>;

struct OfferHeader {
    std::int64_t customer = -1;  // custdata.ccode, -1 for a cash offer
    int ctype = 0;
    int stype = 0;
    std::int64_t user = 0;
    double discount = 0;       // of the whole invoice, in percent or value as the caller keeps it
    std::int64_t walk_in = 0;  // cust_cash.zcode, 0 for none
    common::Date date;
};

struct Offer {
    std::int64_t number = 0;
    OfferHeader header;
    std::vector<OfferLine> lines;
};

// Stores the lines under the next offer number and returns it. Without lines nothing is stored and the answer
// is 0.
std::int64_t save_offer(database::Connection& connection, const OfferHeader& header,
                        const std::vector<OfferLine>& lines);

// The offer of a number; none when there is no row of it.
std::optional<Offer> load_offer(database::Connection& connection, std::int64_t number);

// One line of the offers list.
struct OfferRow {
    std::int64_t number = 0;
    std::string customer;  // the account customer's name; "code - name" of a named cash customer; "نقدي  "
    common::Date date;
};

// What the list shows: every offer, or those whose number is `number`, whose customer's text contains
// `customer` (letters in any case), and whose date is `date`. Newest number first.
struct OfferFilter {
    std::optional<std::int64_t> number;
    std::string customer;
    std::optional<common::Date> date;
};
std::vector<OfferRow> list_offers(database::Connection& connection, const OfferFilter& filter = {});

}  // namespace stock
