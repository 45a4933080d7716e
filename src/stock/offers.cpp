#include "stock/offers.h"

#include <algorithm>

#include "common/search.h"
#include "common/text.h"
#include "database/recordset.h"

namespace stock {

using database::Connection;
using database::Recordset;
using database::Row;
using database::Sql;

namespace {

// The columns of the cells in the grid's order, in the letter case that the table's readers expect.
constexpr std::array<std::string_view, offer_cells> cell_columns = {
    "f0",  "f1",  "F2",  "f3",  "f4",  "f5",  "f6",  "f7",  "f8",  "f9",  "F10", "f11", "f12",
    "f13", "f14", "f15", "f16", "f17", "f18", "f19", "f20", "f21", "f22", "f23", "f24"};

// A cash offer without a named customer; the two blanks belong to the text.
constexpr std::string_view cash_offer = "نقدي  ";

std::string customer_of(const Row& row) {
    if (row.integer("vcode") != -1) return row.text("cname");
    if (row.integer("cust_c") == 0) return std::string(cash_offer);
    return std::to_string(row.integer("cust_c")) + " - " + row.text("zname");
}

}  // namespace

std::int64_t save_offer(Connection& connection, const OfferHeader& header,
                        const std::vector<OfferLine>& lines) {
    if (lines.empty()) return 0;
    const std::int64_t number =
        database::integer_of(connection.scalar("select max(ofr_num) as xof from offer")) + 1;
    Recordset offer(connection, "select * from offer");
    for (const OfferLine& line : lines) {
        offer.add();
        for (std::size_t cell = 0; cell < offer_cells; ++cell)
            offer.set(cell_columns[cell], common::cut_to_column(line[cell], cell_width));
        offer.set("vcode", header.customer);
        offer.set("ctype", header.ctype);
        offer.set("stype", header.stype);
        offer.set("ofr_num", number);
        offer.set("user_", header.user);
        offer.set("pdis", header.discount);
        if (header.walk_in != 0) offer.set("cust_c", header.walk_in);
        offer.set("Date", header.date);
        offer.update();
    }
    connection.make_durable();
    return number;
}

std::optional<Offer> load_offer(Connection& connection, std::int64_t number) {
    const auto rows = connection.query(Sql("SELECT * from offer where ofr_num =  ") + number);
    if (rows.empty()) return std::nullopt;
    const Row& first = rows.front();
    Offer offer;
    offer.number = number;
    offer.header = {first.integer("vcode"),
                    static_cast<int>(first.integer("ctype")),
                    static_cast<int>(first.integer("stype")),
                    first.integer("user_"),
                    first.number("pdis"),
                    first.integer("cust_c"),
                    first.moment("date").date};
    for (const Row& row : rows) {
        OfferLine line;
        for (std::size_t cell = 0; cell < offer_cells; ++cell)
            line[cell] = row.text(cell_columns[cell]);
        offer.lines.push_back(std::move(line));
    }
    return offer;
}

std::vector<OfferRow> list_offers(Connection& connection) {
    std::vector<OfferRow> offers;
    for (const Row& row : connection.query(
             "SELECT offer.date,offer.ofr_num, offer.vcode, offer.cust_c, cust_cash.zname, custdata.cname "
             "FROM "
             "offer LEFT OUTER JOIN custdata ON offer.vcode = custdata.ccode LEFT OUTER JOIN cust_cash ON "
             "offer.cust_c = cust_cash.zcode GROUP BY offer.date,offer.ofr_num, offer.vcode, offer.cust_c, "
             "cust_cash.zname, custdata.cname"))
        offers.push_back({row.integer("ofr_num"), customer_of(row), row.moment("date").date});
    for (OfferRow& offer : offers)
        offer.sought = common::folded(offer.customer);
    std::stable_sort(offers.begin(), offers.end(),
                     [](const OfferRow& a, const OfferRow& b) { return a.number > b.number; });
    return offers;
}

bool matches(const OfferRow& offer, const OfferFilter& filter) {
    if (filter.number && offer.number != *filter.number) return false;
    if (filter.date && offer.date != *filter.date) return false;
    return common::contains_words(offer.sought, filter.customer);
}

}  // namespace stock
