// The item search with every combination of its filters, and what the cashier may look up.
#include "sales/search.h"

#include "sales/counter.h"
#include "sales/items.h"

namespace {

using sales::SearchFilters;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::int64_t> codes(const std::vector<sales::FoundItem>& found) {
    std::vector<std::int64_t> list;
    for (const auto& item : found)
        list.push_back(item.code);
    return list;
}

TEST(Search, EveryCombinationIsAValidStatement) {
    Counter counter;
    counter.shop.sql("update items set fact = 3, itype = 2, stop = 0 where code = 400");
    auto& desk = counter.open();
    for (unsigned bits = 1; bits < 128; ++bits) {
        const auto on = [&](unsigned bit) { return (bits >> bit & 1U) != 0; };
        SearchFilters filters;
        if (on(0)) filters.name = on(6) ? "ياه" : "ميا";
        filters.name_contains = on(6);
        if (on(1)) filters.code = "400";
        if (on(2)) filters.price = "5";
        if (on(3)) filters.maker = "3";
        if (on(4)) filters.type = "2";
        filters.hide_stopped = on(5);
        SCOPED_TRACE(bits);
        const auto found = desk.lines().search(filters);
        ASSERT_TRUE(counter.services.log.lines.empty()) << counter.services.log.lines.front();
        if (filters.empty())
            EXPECT_THAT(found, IsEmpty());
        else
            EXPECT_THAT(codes(found), ElementsAre(400));
    }
}

TEST(Search, FiltersFindWhatTheyName) {
    struct Case {
        const char* name;
        SearchFilters filters;
        std::vector<std::int64_t> found;
    };
    const auto named = [](const char* text, bool contains, bool hide = false) {
        SearchFilters filters;
        filters.name = text;
        filters.name_contains = contains;
        filters.hide_stopped = hide;
        return filters;
    };
    const auto coded = [](const char* text) {
        SearchFilters filters;
        filters.code = text;
        return filters;
    };
    const auto priced = [](const char* text) {
        SearchFilters filters;
        filters.price = text;
        return filters;
    };
    const Case cases[] = {
        {"prefix", named("ق", false), {420, 460}},
        {"prefix without stopped", named("ق", false, true), {460}},
        {"content", named("دي", true), {430, 420}},
        {"prefix is no content", named("دي", false), {}},
        {"a quote", named("'", true), {}},
        {"code", coded("123"), {123}},
        {"code in Arabic digits", coded("١٢٣"), {123}},
        {"barcode", coded("6221000400036"), {400}},
        {"code that is none", coded("x' or 1=1 --"), {}},
        {"price", priced("٥"), {400}},
        {"price that is none", priced("cheap"), {}},
    };
    Counter counter;
    auto& desk = counter.open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(codes(desk.lines().search(c.filters)), c.found);
    }
}

TEST(Search, RowsShowStockOfAllStoresAndThreeUnits) {
    Counter counter;
    counter.shop.sql("insert into stk (icode,stcode,edate,quan) select 400,2,'3000/01/01',10.5");
    auto& desk = counter.open();
    SearchFilters filters;
    filters.code = "400";
    const auto found = desk.lines().search(filters);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].stock, "250.500");
    EXPECT_EQ(found[0].retail, "5.00");
    EXPECT_EQ(found[0].wholesale, "4.50");
    EXPECT_EQ(found[0].prices[1][0], "28.00");
    EXPECT_EQ(found[0].prices[2][1], "100.00");
}

TEST(ItemInfo, PricesAndProfitBehindTheirPermission) {
    Counter counter;
    auto& desk = counter.open();
    const auto info = desk.lines().item_info(400);
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->price11, "3.00");
    EXPECT_EQ(info->price12, "5.00");
    EXPECT_EQ(info->price13, "4.50");
    EXPECT_EQ(info->profit, "ربح متوقع ==> 2.00");
    EXPECT_FALSE(desk.lines().item_info(1).has_value());
    EXPECT_THAT(counter.said(), IsEmpty());
    counter.forbid({246});
    EXPECT_FALSE(desk.lines().item_info(400).has_value());
    EXPECT_THAT(counter.said(), ElementsAre("غير مصرح باستخدام هذا البند"));
}

TEST(StockDisplay, QuantityOfTheStoreAndAllExpiries) {
    Counter counter;
    counter.shop.sql("insert into stk (icode,stcode,edate,quan) select 100,1,null,1");
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("100"));
    EXPECT_EQ(desk.sale().stock.quantity, " الكمية بالمخزن : 8.000");
    EXPECT_THAT(desk.sale().stock.expiries,
                ElementsAre("==> 2026/12/01", "==> 2027/01/01", "==> 2027/06/01", "==> بدون تاريخ"));
    ASSERT_TRUE(counter.enter("300"));
    EXPECT_EQ(desk.sale().stock.quantity, " الكمية بالمخزن : صفر");
    desk.lines().select_row(0);
    EXPECT_EQ(desk.sale().stock.quantity, " الكمية بالمخزن : 8.000");
    ASSERT_TRUE(counter.enter("*"));
    EXPECT_EQ(desk.sale().stock.quantity, "");
}

}  // namespace
