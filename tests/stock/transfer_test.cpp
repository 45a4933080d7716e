// Goods moved between stores for a sale.
#include "stock/transfer.h"

#include <random>

#include "stock/line_source.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using stock::TransferOrder;
using test::Shop;

void add_batch(Shop& shop, int item, std::int64_t store, const std::string& expiry, double quantity) {
    shop.sql("insert into stk (icode,stcode,edate,quan) select " + std::to_string(item) + "," +
             std::to_string(store) + ",'" + expiry + "'," + std::to_string(quantity));
}

// "expiry quantity" of a store's batches in order of expiry.
std::string batches(Shop& shop, const std::string& table, std::int64_t store) {
    std::string text;
    for (const auto& row : shop.connection().query(database::Sql::from_administrator(
             "select * from " + table + " where stcode = " + std::to_string(store) + " order by edate")))
        text +=
            common::date_text(row.moment("edate").date) + " " + database::text_of(row.value("quan")) + ";";
    return text;
}

TEST(Transfer, SplitsOverBatchesOldestFirst) {
    struct Case {
        std::vector<std::pair<const char*, double>> source;
        double quantity, factor;
        const char* recorded;
        const char* left;
        const char* arrived;
    };
    const Case cases[] = {
        {{{"2027/01/01", 5}, {"2026/12/01", 3}},
         4,
         1,
         "2026/12/01 3;2027/01/01 1;",
         "2026/12/01 0;2027/01/01 4;",
         "2026/12/01 3;2027/01/01 1;"},
        {{{"2026/12/01", 30}}, 2, 12, "2026/12/01 24;", "2026/12/01 6;", "2026/12/01 24;"},
        {{{"2026/12/01", 3}},
         5,
         1,
         "2026/12/01 3;3000/01/01 2;",
         "2026/12/01 0;3000/01/01 -2;",
         "2026/12/01 3;3000/01/01 2;"},
        {{{"2026/12/01", 3}},
         3.5,
         1,
         "2026/12/01 3;3000/01/01 0.5;",
         "2026/12/01 0;3000/01/01 -0.5;",
         "2026/12/01 3;3000/01/01 0.5;"},
        {{}, 1.5, 1, "3000/01/01 1.5;", "3000/01/01 -1.5;", "3000/01/01 1.5;"},
        {{{"2026/11/01", 0}, {"2026/12/01", -2}, {"2027/01/01", 5}},
         5,
         1,
         "2027/01/01 5;",
         "2026/11/01 0;2026/12/01 -2;2027/01/01 0;",
         "2027/01/01 5;"},
        // 0.8 - 0.1 - 0.7 is not quite 0 in binary.
        {{{"2026/12/01", 0.1}, {"2027/01/01", 0.7}},
         0.8,
         1,
         "2026/12/01 0.1;2027/01/01 0.7;",
         "2026/12/01 0;2027/01/01 0;",
         "2026/12/01 0.1;2027/01/01 0.7;"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.recorded);
        Shop shop;
        for (const auto& [expiry, quantity] : test.source)
            add_batch(shop, 100, 2, expiry, quantity);
        EXPECT_EQ(stock::transfer_for_line(shop.connection(),
                                           {100, test.quantity, test.factor, 2, 2, 1, {2026, 11, 21}})
                      .number,
                  1);
        EXPECT_EQ(batches(shop, "tmp_tran", 2), test.recorded);
        EXPECT_EQ(batches(shop, "stk", 2), test.left);
        EXPECT_EQ(batches(shop, "stk", 1), test.arrived);
        EXPECT_EQ(shop.number("select quan from transdata"), test.quantity * test.factor);
        EXPECT_EQ(shop.number("select quan1 from transdata"), test.quantity);
        EXPECT_EQ(shop.cell("select scode from transdata"), "2");
        EXPECT_EQ(shop.cell("select tfrom from sttran"), "2");
        EXPECT_EQ(shop.cell("select tto from sttran"), "1");
    }
}

TEST(Transfer, RandomTransfersLoseNothing) {
    std::mt19937 random(7);
    Shop shop;
    for (int batch = 0; batch < 12; ++batch)
        add_batch(shop, 100 + batch % 2, 1 + batch % 2, "2027/0" + std::to_string(1 + batch % 9) + "/01",
                  batch);
    const double before = shop.number("select sum(quan) from stk");
    for (int i = 1; i <= 60; ++i) {
        const int source = 1 + static_cast<int>(random() % 2);
        const int item = static_cast<int>(100 + random() % 2);
        const double asked = static_cast<double>(random() % 40) / 4.0;
        const auto held = [&] {
            return shop.number("select sum(quan) from stk where icode = " + std::to_string(item) +
                               " and stcode = " + std::to_string(3 - source));
        };
        const double held_before = held();
        EXPECT_EQ(stock::transfer_for_line(shop.connection(),
                                           {item, asked, 1, 1, source, 3 - source, {2026, 11, 21}})
                      .number,
                  i);
        ASSERT_DOUBLE_EQ(held() - held_before, asked);
        ASSERT_DOUBLE_EQ(shop.number("select sum(quan) from stk"), before);
    }
}

TEST(LineSource, SaysWhyAStoreCannotSupply) {
    Shop shop;
    // A single piece and a part of one count as well.
    add_batch(shop, 100, 2, "2026/12/01", 10.6);
    add_batch(shop, 100, 2, "2027/12/01", 1);
    add_batch(shop, 100, 2, "2028/12/01", 0.4);
    add_batch(shop, 100, 1, "2026/12/01", 99);
    shop.sql("insert into stocks (code,name) select 3,N'فارغ'");
    test::RememberedServices services;
    struct Case {
        double quantity;
        std::int64_t store;
        const char* expected;  // empty: supplied
    };
    for (const Case& test : {Case{1, 0, "اختار المخزن"}, Case{1, 1, "لا يمكن التحويل لنفس المخزن"},
                             Case{1, 3, "الصنف غير موجود بالمخزن المحول منه"},
                             Case{2.1, 2, "الكمية بالمخزن لا تكفي"}, Case{2, 2, ""}}) {
        SCOPED_TRACE(test.expected);
        services.prompts.messages.clear();
        stock::LineSource dialog(shop.connection(), services.prompts, 100, test.quantity, 6, 1);
        for (const stock::StoreHolding& store : dialog.stores())
            EXPECT_DOUBLE_EQ(store.quantity, store.store == 2 ? 12 : 0);
        EXPECT_EQ(dialog.confirm(test.store), *test.expected == '\0');
        EXPECT_EQ(services.prompts.last(), test.expected);
    }
}

TEST(LineSource, OffersTheUnitsOfTheItemsCard) {
    struct Case {
        const char* factors;
        std::vector<std::pair<int, double>> expected;
    };
    for (const Case& test : {Case{"1,6,24", {{3, 24}, {2, 6}, {1, 1}}}, Case{"1,null,0", {{1, 1}}},
                             Case{"null,12,null", {{2, 12}}}, Case{"null,null,null", {{1, 1}}}}) {
        SCOPED_TRACE(test.factors);
        Shop shop;
        shop.sql(std::string("insert into items (code,name,num1,NUM2,NUM3) select 100,N'أرز',") +
                 test.factors);
        test::RememberedServices services;
        const stock::LineSource dialog(shop.connection(), services.prompts, 100, 1, 1, 1);
        std::vector<std::pair<int, double>> seen;
        for (const auto& unit : dialog.units())
            seen.emplace_back(unit.code, unit.factor);
        EXPECT_EQ(seen, test.expected);
    }
}

}  // namespace
