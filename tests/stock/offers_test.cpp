// Offers stored, listed and loaded.
#include "stock/offers.h"

#include "common/search.h"
#include "support/shop.h"

namespace {

using stock::OfferHeader;
using stock::OfferLine;
using test::Shop;

OfferLine line_with(const std::string& name) {
    OfferLine line;
    for (std::size_t cell = 0; cell < line.size(); ++cell)
        line[cell] = std::to_string(cell);
    line[2] = name;
    return line;
}

TEST(Offers, ComeBackCellForCell) {
    Shop shop;
    EXPECT_EQ(stock::save_offer(shop.connection(), {}, {}), 0) << "without lines";
    EXPECT_FALSE(stock::load_offer(shop.connection(), 1));
    const OfferHeader header{7, 0, 1, 3, 12.5, 0, {2026, 11, 21}};
    const std::vector<OfferLine> lines = {line_with("أرز 'ممتاز'"), line_with("x\"; drop table offer --"),
                                          line_with(std::string(50, 'w')), line_with("")};
    EXPECT_EQ(stock::save_offer(shop.connection(), header, lines), 1);
    EXPECT_EQ(stock::save_offer(shop.connection(), header, {line_with("ثان")}), 2);
    const auto offer = stock::load_offer(shop.connection(), 1);
    ASSERT_TRUE(offer);
    EXPECT_EQ(offer->lines, lines);
    EXPECT_EQ(offer->header.customer, 7);
    EXPECT_EQ(offer->header.stype, 1);
    EXPECT_DOUBLE_EQ(offer->header.discount, 12.5);
    EXPECT_EQ(offer->header.date, header.date);
}

TEST(Offers, LongNamesAreCutAndFiveHundredLinesAreKept) {
    Shop shop;
    std::vector<OfferLine> lines(500, line_with("م"));
    std::string longer;
    for (int i = 0; i < 200; ++i)
        longer += "ع";
    lines[499][2] = longer;
    EXPECT_EQ(stock::save_offer(shop.connection(), {}, lines), 1);
    const auto offer = stock::load_offer(shop.connection(), 1);
    ASSERT_EQ(offer->lines.size(), 500u);
    EXPECT_EQ(offer->lines[499][2], longer.substr(0, 100));
}

TEST(Offers, ListNamesItsCustomersAndFilters) {
    Shop shop;
    shop.sql("insert into custdata (ccode,cname) select 7,N'Hotel النيل'");
    shop.sql("insert into cust_cash (zcode,zname) select 4,N'منى'");
    shop.sql("insert into cust_cash (zcode,zname) select 5,null");
    const auto save = [&](std::int64_t customer, std::int64_t walk_in, int day) {
        stock::save_offer(shop.connection(), {customer, 0, 0, 1, 0, walk_in, {2026, 11, day}},
                          {line_with("a"), line_with("b")});
    };
    save(7, 0, 1);
    save(-1, 4, 2);
    save(-1, 5, 2);
    save(-1, 0, 3);
    const auto names = [&](const stock::OfferFilter& filter) {
        std::string text;
        for (const auto& row : stock::list_offers(shop.connection()))
            if (stock::matches(row, filter)) text += std::to_string(row.number) + "=" + row.customer + "|";
        return text;
    };
    EXPECT_EQ(names({}), "4=نقدي  |3=5 - |2=4 - منى|1=Hotel النيل|");
    EXPECT_EQ(names({.number = {}, .customer = common::search_words("النيل hotel"), .date = {}}),
              "1=Hotel النيل|");
    EXPECT_EQ(names({.number = 4, .customer = {}, .date = {}}), "4=نقدي  |");
    EXPECT_EQ(names({.number = {}, .customer = {}, .date = common::Date{2026, 11, 2}}), "3=5 - |2=4 - منى|");
}

}  // namespace
