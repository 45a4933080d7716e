// Short stock, reservations and the right to sell below stock: one rule for entering, raising and editing.
#include "sales/stock_check.h"

#include "sales/counter.h"
#include "sales/messages.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using sales::KindOption;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(StockCheck, ComparesToThreeDecimals) {
    EXPECT_TRUE(sales::stock_suffices(5, 5));
    EXPECT_TRUE(sales::stock_suffices(0.3, 0.1 + 0.2));
    EXPECT_TRUE(sales::stock_suffices(static_cast<double>(100.45F), 100.45));
    EXPECT_FALSE(sales::stock_suffices(5, 5.001));
    EXPECT_FALSE(sales::stock_suffices(0, 0.001));
}

// Item 440 has one piece, 460 two; cartons of water are 24 of 240.
TEST(StockCheck, TheLastPieceSellsAndNotOneMore) {
    Counter counter;
    counter.forbid_below_stock();
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("440"));
    EXPECT_FALSE(counter.enter("440"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::cannot_sell_now)));
    EXPECT_THAT(counter.asked(), IsEmpty()) << "asked to raise what cannot be sold";

    ASSERT_TRUE(counter.enter("460"));
    EXPECT_TRUE(desk.lines().commit_edit(1, column::quantity, "2"));
    EXPECT_FALSE(desk.invoice().lines[1].below_stock) << "saving must check it again";
    EXPECT_FALSE(desk.lines().commit_edit(1, column::quantity, "2.001"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    EXPECT_EQ(counter.cell(1, column::quantity), "2.000");

    // Lines of one item in different units share its stock.
    ASSERT_TRUE(counter.enter("6221000400036"));
    EXPECT_TRUE(desk.lines().commit_edit(2, column::quantity, "9"));
    counter.answer({false});
    ASSERT_TRUE(counter.enter("400"));
    EXPECT_TRUE(desk.lines().commit_edit(3, column::quantity, "24"));
    EXPECT_FALSE(desk.lines().commit_edit(3, column::quantity, "25"));
    EXPECT_FALSE(desk.lines().commit_edit(2, column::quantity, "10"));
    EXPECT_TRUE(desk.lines().commit_edit(3, column::quantity, "1")) << "lowering needs no stock";
}

TEST(StockCheck, OverrideWantsPermissionAndAnExplicitYes) {
    struct Case {
        const char* name;
        int permission;  // the only one of the three that is held; 0 for none
        bool yes;
        bool entered;
    };
    for (const Case& c : {Case{"216 and yes", 216, true, true}, Case{"286 and yes", 286, true, true},
                          Case{"281 and yes", 281, true, true}, Case{"216 and no", 216, false, false},
                          Case{"nobody", 0, true, false}}) {
        SCOPED_TRACE(c.name);
        Counter counter;
        counter.forbid_below_stock();
        if (c.permission != 0) counter.session.permissions[static_cast<std::size_t>(c.permission) - 1] = '1';
        counter.shop.sql("update stk set quan = 3 where icode = 400");
        auto& desk = counter.open();
        counter.answer({c.yes});
        EXPECT_EQ(counter.enter("6221000400029"), c.entered);
        const auto asked = counter.asked();
        if (c.permission == 0) {
            EXPECT_THAT(asked, IsEmpty());
            EXPECT_THAT(counter.said(), ElementsAre(std::string(message::cannot_sell_now)));
            continue;
        }
        ASSERT_EQ(asked.size(), 1u);
        EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::critical);
        EXPECT_EQ(asked[0],
                  "الصنف : مياه\nالرصيد : 0.500 عبوة\nالمطلوب : 1.000 عبوة"  // 3 of a pack of 6
                  "\nالكمية بالمخزن لا تكفي ..\nهل تريد البيع بأقل من الرصيد ؟");
        EXPECT_THAT(counter.said(), IsEmpty());
        EXPECT_EQ(desk.invoice().lines.size(), c.entered ? 1u : 0u);
        for (const auto& line : desk.invoice().lines)
            EXPECT_TRUE(line.below_stock);
    }
}

TEST(StockCheck, ReservedStockIsAskedForAndNeedsItsPermission) {
    struct Case {
        const char* name;
        bool permitted;
        bool yes;
        bool entered;
        std::vector<std::string> said;
    };
    const Case cases[] = {
        {"yes with permission", true, true, true, {}},
        {"yes without", false, true, false, {std::string(message::may_not_sell_reserved)}},
        {"no", true, false, false, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Counter counter;
        counter.forbid_below_stock();
        if (!c.permitted) counter.forbid({291});
        counter.shop.sql("update stk set quan = 0 where icode = 450");
        auto& desk = counter.open();
        counter.answer({c.yes});
        EXPECT_EQ(counter.enter("450"), c.entered);
        EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::stock_reserved)));
        EXPECT_EQ(counter.said(), c.said);
        if (!c.entered) continue;
        // Beyond what is reserved, the stock is simply short.
        EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "6"));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    }
}

TEST(StockCheck, ReturnsAndServicesAskForNoStock) {
    Counter counter;
    counter.forbid_below_stock();
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("300"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::quantity, "1000"));
    counter.start_anew();
    ASSERT_TRUE(desk.header().SwitchKind(KindOption::return_));
    ASSERT_TRUE(counter.enter("440"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::quantity, "1000"));
    EXPECT_THAT(counter.said(), IsEmpty());
}

TEST(StockCheck, ALineFromAnotherStoreDrawsOnThatStore) {
    Counter counter;
    counter.forbid_below_stock();
    counter.shop.sql("insert into stk (icode,stcode,edate,quan) select 440,2,'3000/01/01',3");
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("440"));
    desk.lines().set_supplier(0, 2);
    EXPECT_TRUE(desk.lines().commit_edit(0, column::quantity, "3"));
    EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "4"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::transfer_store_short)));
    counter.answer({true});
    EXPECT_FALSE(counter.enter("440")) << "the raised line would need a fourth piece of store 2";
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::transfer_store_short)));
    counter.answer({false});
    EXPECT_TRUE(counter.enter("440")) << "the selling store's own piece is still there";
}

TEST(StockCheck, AnItemEnteredFromAnotherStoreNeedsThatStoreAlone) {
    Counter counter;
    counter.forbid_below_stock();
    counter.shop.sql("delete from stk where icode = 100 and stcode = 1");
    counter.shop.sql("update stk set quan = 2 where icode = 100 and stcode = 2");
    auto& desk = counter.open();
    EXPECT_FALSE(counter.enter("100"));
    counter.said();
    const auto item = desk.lines().source_item(sales::read_entry("100"));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->code, 100);
    EXPECT_FALSE(item->row);
    EXPECT_TRUE(counter.enter("100", 2));
    EXPECT_TRUE(counter.enter("100", 2)) << "the second piece, on a line of its own";
    EXPECT_FALSE(counter.enter("100", 2));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::transfer_store_short)));
    ASSERT_EQ(desk.invoice().lines.size(), 2u);
    EXPECT_EQ(desk.invoice().lines[1].source_store, 2);
    ASSERT_TRUE(desk.lines().source_item(sales::read_entry("")));
    EXPECT_EQ(desk.lines().source_item(sales::read_entry(""))->row, 1u);
    desk.lines().delete_line(1);
    counter.answer({true});
    EXPECT_TRUE(counter.enter("100", 2)) << "the second piece, on the line of the first";
    EXPECT_EQ(counter.cell(0, column::quantity), "2.000");

    // No store can supply an unknown code, a service, a general item or a return.
    for (const char* typed : {"98765", "300", "*x"}) {
        EXPECT_FALSE(desk.lines().source_item(sales::read_entry(typed))) << typed;
        EXPECT_EQ(counter.said().size(), 1u) << typed;
    }
    counter.start_anew();
    ASSERT_TRUE(desk.header().SwitchKind(sales::KindOption::return_));
    EXPECT_FALSE(desk.lines().source_item(sales::read_entry("100")));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::no_source_line)));
}

// Rice stands in the store in batches of 2027/01/01 and 2027/06/01.
TEST(StockCheck, GoodsPastTheirDateAreAskedAboutBeforeTheyAreSold) {
    struct Case {
        const char* name;
        const char* first_batch;  // what becomes of it
        common::Date day;
        bool asked;
    };
    for (const Case& c :
         {Case{"its last day", "", {2027, 1, 1}, false}, Case{"the day after", "", {2027, 1, 2}, true},
          Case{"it is sold out",
               "update stk set quan = 0 where icode = 100 and edate = "
               "'2027/01/01'",
               {2027, 1, 2},
               false},
          Case{"of another store",
               "update stk set stcode = 2 where icode = 100 and edate = "
               "'2027/01/01'",
               {2027, 1, 2},
               false},
          Case{"an empty date",
               "update stk set edate = '1900/01/01' where icode = 100 and "
               "edate = '2027/01/01'",
               {2027, 1, 2},
               false}}) {
        SCOPED_TRACE(c.name);
        Counter counter;
        if (*c.first_batch != '\0') counter.shop.sql(c.first_batch);
        counter.services.clock.moment.date = c.day;
        auto& desk = counter.open();
        EXPECT_EQ(counter.enter("100"), !c.asked) << "the answer is no";
        EXPECT_EQ(counter.asked().size(), c.asked ? 1u : 0u);
        if (!c.asked) continue;
        EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::exclamation)
            << "yes would be the default";
        counter.answer({true});
        ASSERT_TRUE(counter.enter("100"));
        EXPECT_THAT(counter.asked(), ElementsAre("الصنف : أرز\nمنه كمية انتهت صلاحيتها في 2027/01/01"
                                                 "\nراجع تاريخ العبوة .. هل تريد بيعه ؟"));
        // Once an invoice: neither the next piece nor the save asks again.
        counter.answer({true});
        ASSERT_TRUE(counter.enter("100"));
        EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::entered_before)));
        EXPECT_TRUE(counter.sell());
        EXPECT_THAT(counter.asked(), IsEmpty());
        counter.start_anew();
        ASSERT_TRUE(desk.header().SwitchKind(KindOption::return_));
        EXPECT_TRUE(counter.enter("100"));
        EXPECT_THAT(counter.asked(), IsEmpty()) << "a return brings them";
    }
}

TEST(StockCheck, AnOfferOfGoodsPastTheirDateIsAskedAboutAtItsSale) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("100"));
    ASSERT_TRUE(desk.offers().SaveOffer());
    counter.shop.sql("update stk set edate = '2026/11/01' where icode = 100 and edate = '2027/01/01'");
    ASSERT_TRUE(desk.invoice().lines.empty());
    ASSERT_TRUE(desk.offers().LoadOffer(1));
    counter.asked();
    EXPECT_FALSE(counter.sell());
    EXPECT_EQ(counter.asked().size(), 1u);
    counter.answer({true});
    EXPECT_TRUE(counter.sell());
}

}  // namespace
