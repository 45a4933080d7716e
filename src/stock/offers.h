// Offers: invoices stored as quotations, cell by cell, to be loaded and sold later.
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
// The width of a cell's column in characters; longer texts are cut.
inline constexpr std::size_t cell_width = 50;

using OfferLine = std::array<std::string, offer_cells>;

struct OfferHeader {
    std::int64_t customer = -1;  // custdata.ccode, -1 for a cash offer
    int ctype = 0;
    int stype = 0;
    std::int64_t user = 0;
    double discount = 0;       // of the whole invoice, a value
    std::int64_t walk_in = 0;  // cust_cash.zcode, 0 for none
    common::Date date;
};

struct Offer {
    std::int64_t number = 0;
    OfferHeader header;
    std::vector<OfferLine> lines;
};

// Stores the lines under the next offer number and returns it; 0 without lines.
std::int64_t save_offer(database::Connection& connection, const OfferHeader& header,
                        const std::vector<OfferLine>& lines);

// The offer of a number, if there is one.
std::optional<Offer> load_offer(database::Connection& connection, std::int64_t number);

// One line of the offers list.
struct OfferRow {
    std::int64_t number = 0;
    std::string customer;  // the account customer's name; "code - name" of a named cash customer; "نقدي  "
    common::Date date;
    std::string sought = {};  // the customer as a search looks in it (common/search.h)
};

// All offers, the newest number first.
std::vector<OfferRow> list_offers(database::Connection& connection);

// Which offers to look for: by number, by date, and by words (common::search_words) in the customer's name.
// An empty field does not filter.
struct OfferFilter {
    std::optional<std::int64_t> number;
    std::vector<std::string> customer;
    std::optional<common::Date> date;
};
bool matches(const OfferRow& offer, const OfferFilter& filter);

}  // namespace stock
