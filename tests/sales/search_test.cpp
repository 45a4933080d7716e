// The item search with every combination of its filters, and what the cashier may look up.
#include "sales/search.h"

#include "sales/counter.h"
#include "sales/items.h"
#include "sales/messages.h"

namespace {

using sales::SearchFilters;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::int64_t> codes(const sales::FoundItems& found) {
    std::vector<std::int64_t> list;
    for (const auto& item : found.items)
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
            EXPECT_THAT(found.items, IsEmpty());
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
        {"digits of the other script", named("كولا ٢", false), {470}},
        {"digits as they are stored", named("٣ ل", true), {480}},
        {"Western digits of the other script", named("كولا 3", false), {480}},
        {"letters that are alike", named("إشطه فلاحي", false), {520}},
        {"marks typed and stored", named("محلي كَعـك", true), {530}},
        {"marks in a prefix", named("كعك م", false), {530}},
        {"words in any order", named("لتر كُولا", true), {470, 480}},
        {"one word missing", named("لتر عصير", true), {}},
        {"capitals", named("A_B", false), {500}},
        {"marks alone", named("ـَ ", true), {}},
        {"brackets", named("[a]b", false), {490}},
        {"a bracket inside", named("]b 5", true), {490}},
        {"a percent sign", named("50%", true), {490}},
        {"a lone percent sign", named("%", false), {}},
        {"an underscore", named("a_b", false), {500}},
        {"a lone underscore", named("_", true), {500}},
        {"code", coded("123"), {123}},
        {"code in Arabic digits", coded("١٢٣"), {123}},
        {"barcode", coded("6221000400036"), {400}},
        {"code that is none", coded("x' or 1=1 --"), {}},
        {"price", priced("٥"), {400}},
        {"price that is none", priced("cheap"), {}},
        {"price with a comma", priced("1,250"), {}},
    };
    Counter counter;
    counter.shop.sql("insert into items (code,name,num1) select 470,N'كولا 2 لتر',1");
    counter.shop.sql("insert into items (code,name,num1) select 480,N'كولا ٣ لتر',1");
    counter.shop.sql("insert into items (code,name,num1) select 490,N'[a]b 50%',1");
    counter.shop.sql("insert into items (code,name,num1) select 500,N'a_b',1");
    counter.shop.sql("insert into items (code,name,num1) select 510,N'axb 500',1");
    counter.shop.sql("insert into items (code,name,num1) select 520,N'أشطة فلاحى',1");
    counter.shop.sql("insert into items (code,name,num1) select 530,N'كعــك مُحـلَّى',1");
    auto& desk = counter.open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(codes(desk.lines().search(c.filters)), c.found);
    }
    EXPECT_EQ(sales::search_refusal(priced("1,250")), common::message::no_comma);
    EXPECT_EQ(sales::search_refusal(priced("cheap")), sales::message::wrong_price);
    EXPECT_EQ(sales::search_refusal(priced("1250")), "");
}

TEST(Search, RowsShowStockOfAllStoresAndThreeUnits) {
    Counter counter;
    counter.shop.sql("insert into stk (icode,stcode,edate,quan) select 400,2,'3000/01/01',10.5");
    auto& desk = counter.open();
    SearchFilters filters;
    filters.code = "400";
    const auto found = desk.lines().search(filters).items;
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].stock, 250.5);
    EXPECT_EQ(found[0].prices[0][0], 5);
    EXPECT_EQ(found[0].prices[0][1], 4.5);
    EXPECT_EQ(found[0].prices[1][0], 28);
    EXPECT_EQ(found[0].prices[2][1], 100);
}

// What is taken from the list: the barcode or label as scanned, or the item in the unit chosen, which no
// barcode of the same digits replaces.
TEST(Search, TakesAnItemAsScannedOrInTheUnitChosen) {
    struct Case {
        const char* name;
        const char* code;
        int unit;  // 0: the one that the list proposes
        const char *item, *unit_name, *quantity, *price;
    };
    const Case cases[] = {
        {"by its code", "400", 0, "400", "وحدة", "1.000", "5.00"},
        {"a pack by its barcode", "6221000400029", 0, "400", "عبوة", "1.000", "28.00"},
        {"a carton instead", "6221000400029", 3, "400", "كرتونة", "1.000", "105.00"},
        {"a piece instead", "6221000400036", 1, "400", "وحدة", "1.000", "5.00"},
        {"a label with its weight", "2000123004500", 0, "123", "وحدة", "0.450", "100.00"},
        {"a barcode of these digits", "440", 0, "400", "عبوة", "1.000", "28.00"},
        {"the price of its item", "", 0, "440", "وحدة", "1.000", "13.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Counter counter;
        counter.shop.sql("insert into barcode (bar,code,scode) select '440',400,2");
        counter.shop.sql("update items set price12 = 13 where code = 440");
        auto& desk = counter.open();
        SearchFilters filters;
        filters.code = c.code;
        if (filters.code.empty()) filters.price = "13";
        const auto found = desk.lines().search(filters).items;
        ASSERT_EQ(found.size(), 1u);
        ASSERT_TRUE(desk.lines().EnterItem(found[0].entry(c.unit == 0 ? found[0].unit_level : c.unit)));
        EXPECT_EQ(counter.cell(0, sales::column::code), c.item);
        EXPECT_EQ(counter.cell(0, sales::column::unit_name), c.unit_name);
        EXPECT_EQ(counter.cell(0, sales::column::quantity), c.quantity);
        EXPECT_EQ(counter.cell(0, sales::column::price), c.price);
    }
    // A barcode of two items is refused as at the entry field.
    Counter counter;
    SearchFilters filters;
    filters.code = "7000";
    const auto found = counter.open().lines().search(filters).items;
    ASSERT_EQ(found.size(), 1u);
    EXPECT_FALSE(counter.desk.lines().EnterItem(found[0].entry(found[0].unit_level)));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::shared_barcode)));
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

std::vector<std::int64_t> matching(Counter& counter, std::string_view typed) {
    std::vector<std::int64_t> list;
    auto& lines = counter.desk.lines();
    for (const auto& match : lines.match(lines.match_query(sales::read_entry(typed))))
        list.push_back(match.code);
    return list;
}

TEST(Matches, BeginningsOfWordsComeFirstAndThenWhatSellsMost) {
    Counter counter;
    for (const char* item :
         {"501,N'جبنة بيضاء'", "502,N'بَيْض بلدي'", "503,N'لبن بالبيض'", "504,N'البيض المسلوق'"})
        counter.shop.sql(std::string("insert into items (code,name,num1,price12) select ") + item + ",1,5");
    auto& desk = counter.open();
    EXPECT_THAT(matching(counter, "بيض"), ElementsAre(502, 504, 501, 503)) << "by their names";
    desk.lines().popular()->add({{503, "لبن بالبيض", 9}, {501, "جبنة بيضاء", 5}}, 1);
    desk.lines().popular()->add({{504, "البيض المسلوق", 4}, {501, "جبنة بيضاء", 1}}, 1);
    EXPECT_THAT(matching(counter, "بيض"), ElementsAre(501, 504, 502, 503));
    EXPECT_THAT(matching(counter, "بيض جبنه"), ElementsAre(501));
    counter.shop.sql("update items set stop = 1 where code = 501");
    EXPECT_THAT(matching(counter, "بيض"), ElementsAre(504, 502, 503));
    for (const char* no_words : {"501", "*بيض", "W12", "بيض5", "' or '1'='1"})
        EXPECT_THAT(matching(counter, no_words), IsEmpty()) << no_words;
}

TEST(Matches, ShowWhatALineWouldCostAndTheStoreHolds) {
    Counter counter;
    auto& desk = counter.open();
    counter.shop.sql("insert into tmp_price (icode,p_per) select 400,10");
    desk.header().choose_price_level(sales::wholesale_level);
    const auto found = desk.lines().match(desk.lines().match_query(sales::read_entry("مياه")));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].prices[0], 4.05);  // 4.50 less a tenth
    EXPECT_EQ(found[0].prices[1], 23.4);
    EXPECT_EQ(found[0].prices[2], 90);
    EXPECT_EQ(found[0].stock, 240);
    const auto unit = desk.lines().match(desk.lines().match_query(sales::read_entry("شاي")));
    ASSERT_EQ(unit.size(), 1u);
    EXPECT_FALSE(unit[0].has_unit(2)) << "its card gives no pack";
}

}  // namespace
