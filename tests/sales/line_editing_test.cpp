// In-place editing: permissions, the ceiling at its edge, losses, and input that a line must not take.
#include "sales/line_editing.h"
#include "common/messages.h"
#include "sales/counter.h"
#include "sales/messages.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

// Ten pieces of tea at 10.00 (cost as given), gross 100.
sales::SalesDesk& ten_of_tea(Counter& counter, const char* cost = "1") {
    counter.shop.sql(std::string("update items set price12 = 10, price11 = ") + cost + " where code = 410");
    auto& desk = counter.open();
    EXPECT_TRUE(counter.enter("410"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::quantity, "10"));
    return desk;
}

TEST(LineEditing, CellsOpenByColumnAndPermission) {
    struct Case {
        int column;
        int permission;
    };
    for (const Case& c : {Case{column::quantity, 0}, Case{column::price, 251},
                          Case{column::discount_value, 271}, Case{column::discount_percent, 271}}) {
        SCOPED_TRACE(c.column);
        Counter counter;
        auto& desk = ten_of_tea(counter);
        EXPECT_TRUE(desk.lines().begin_edit(0, c.column));
        counter.session.permissions.assign(400, '0');
        EXPECT_EQ(desk.lines().begin_edit(0, c.column), c.permission == 0);
        if (c.permission == 0) continue;
        EXPECT_THAT(counter.said(), ElementsAre("غير مصرح باستخدام هذا البند"));
        counter.session.permissions[static_cast<std::size_t>(c.permission) - 1] = '1';
        EXPECT_TRUE(desk.lines().begin_edit(0, c.column));
    }
    Counter counter;
    auto& desk = ten_of_tea(counter);
    for (const int fixed : {column::number, column::code, column::name, column::total, column::balance})
        EXPECT_FALSE(desk.lines().begin_edit(0, fixed));
    EXPECT_FALSE(desk.lines().begin_edit(1, column::quantity)) << "there is no such line";
}

TEST(LineEditing, CeilingOfALineDiscountAtItsEdge) {
    struct Case {
        int column;
        const char* typed;
        float ceiling;
        bool taken;
        const char* value;
        const char* percent;
        const char* total;
    };
    const Case cases[] = {
        {column::discount_value, "10", 10, true, "10.00", "10.00", "90.00"},
        {column::discount_value, "10.01", 10, false, "0.00", "0.00", "100.00"},
        {column::discount_value, "١٠٫٠", 10, true, "10.00", "10.00", "90.00"},
        {column::discount_value, "", 10, true, "0.00", "0.00", "100.00"},
        {column::discount_value, "3.333", 10, true, "3.33", "3.33", "96.67"},
        {column::discount_percent, "10", 10, true, "10.00", "10.00", "90.00"},
        {column::discount_percent, "10.01", 10, false, "0.00", "0.00", "100.00"},
        {column::discount_percent, "101", 10, false, "0.00", "0.00", "100.00"},
        // 7.1 and 0.7 have no exact single-precision form.
        {column::discount_percent, "7.1", 7.1F, true, "7.10", "7.10", "92.90"},
        {column::discount_value, "7.11", 7.1F, false, "0.00", "0.00", "100.00"},
        {column::discount_value, "0.7", 0.7F, true, "0.70", "0.70", "99.30"},
        {column::discount_value, "0.01", 0, false, "0.00", "0.00", "100.00"},
        // A ceiling set by mistake above the whole amount.
        {column::discount_percent, "100.01", 500, false, "0.00", "0.00", "100.00"},
        {column::discount_value, "100.01", 500, false, "0.00", "0.00", "100.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.typed) + " in column " + std::to_string(c.column));
        Counter counter;
        auto& desk = ten_of_tea(counter);
        desk.lines().commit_edit(0, column::discount_value, "5");  // a refusal must remove it
        counter.said();
        counter.session.settings.max_dis = c.ceiling;
        EXPECT_EQ(desk.lines().commit_edit(0, c.column, c.typed), c.taken);
        EXPECT_EQ(counter.cell(0, column::discount_value), c.value);
        EXPECT_EQ(counter.cell(0, column::discount_percent), c.percent);
        EXPECT_EQ(counter.cell(0, column::total), c.total);
        EXPECT_EQ(desk.sale().figures.net, c.total);
        if (c.taken)
            EXPECT_THAT(counter.said(), IsEmpty());
        else
            EXPECT_THAT(counter.said(), ElementsAre(std::string(message::line_discount_refused)));
        EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::none);
    }
}

TEST(LineEditing, LossIsWarnedOfAndStays) {
    struct Case {
        const char* cost;
        bool warned;
    };
    for (const Case& c : {Case{"9.5", false}, Case{"9.51", true}}) {
        SCOPED_TRACE(c.cost);
        for (const int edited : {column::discount_value, column::discount_percent}) {
            Counter counter;
            auto& desk = ten_of_tea(counter, c.cost);
            EXPECT_TRUE(desk.lines().commit_edit(0, edited, "5"));
            EXPECT_EQ(counter.cell(0, column::total), "95.00");
            if (c.warned)
                EXPECT_THAT(counter.said(), ElementsAre(std::string(message::discount_loses)));
            else
                EXPECT_THAT(counter.said(), IsEmpty());
        }
    }
}

TEST(LineEditing, PriceAndQuantityRespectADiscountGiven) {
    Counter counter;
    auto& desk = ten_of_tea(counter);
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "9"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::price, "9")) << "9 of 90 is the ceiling itself";
    EXPECT_FALSE(desk.lines().commit_edit(0, column::price, "8.99"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::price_against_discount)));
    EXPECT_EQ(counter.cell(0, column::price), "9.00");
    EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "9.999"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_against_discount)));
    EXPECT_EQ(counter.cell(0, column::quantity), "10.000");
    EXPECT_EQ(desk.sale().figures.net, "81.00");
    EXPECT_TRUE(desk.lines().commit_edit(0, column::quantity, "20"));
    EXPECT_EQ(counter.cell(0, column::discount_percent), "5.00");
}

TEST(LineEditing, BadInputLeavesTheLineAsItWas) {
    const std::string huge(309, '9');
    const std::pair<int, std::string_view> columns[] = {{column::quantity, message::wrong_quantity},
                                                        {column::price, message::wrong_price},
                                                        {column::discount_value, message::wrong_discount},
                                                        {column::discount_percent, message::wrong_discount}};
    const std::string everywhere[] = {"nan", "1e308", "inf", huge, "1.2.3", "٣س", "1;2", "'", "🍎"};
    Counter counter;
    auto& desk = ten_of_tea(counter);
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "5"));
    const auto before = desk.invoice().cells(0);
    const auto refused = [&](int edited, const std::string& typed, std::string_view said) {
        SCOPED_TRACE(typed + " in column " + std::to_string(edited));
        EXPECT_FALSE(desk.lines().commit_edit(0, edited, typed));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(said)));
        EXPECT_EQ(desk.invoice().cells(0), before);
    };
    for (const auto& [edited, said] : columns)
        for (const std::string& typed : everywhere)
            refused(edited, typed, said);
    for (const auto& [edited, said] : columns) {
        refused(edited, "-1", common::message::no_minus);
        refused(edited, "1,5", common::message::no_comma);
    }
    for (const char* typed : {"0", "", "1.000000000001", "0.0001", "10000000"})
        refused(column::quantity, typed, message::wrong_quantity);
    for (const char* typed : {"0", "", "100000000", "1.000000000001"})
        refused(column::price, typed, message::wrong_price);
    for (const int edited : {column::discount_value, column::discount_percent})
        refused(edited, "1.000000000001", message::wrong_discount);
}

TEST(LineEditing, GeneralItemIsTypedInAndNeverLoses) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("*"));
    EXPECT_EQ(desk.lines().escape_to_quantity(), 0u);
    EXPECT_FALSE(desk.lines().commit_edit(0, column::discount_value, "1")) << "a discount on nothing";
    EXPECT_FALSE(desk.lines().commit_edit(0, column::discount_percent, "1"));
    EXPECT_THAT(counter.said(), testing::Each(std::string(message::line_discount_refused)));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::price, "٢٫٥"));
    EXPECT_TRUE(desk.lines().quick_quantity("4"));
    EXPECT_FALSE(desk.lines().escape_to_quantity().has_value());
    EXPECT_TRUE(desk.lines().commit_edit(0, column::discount_percent, "10"));
    EXPECT_EQ(desk.sale().figures.net, "9.00");
    EXPECT_THAT(counter.said(), IsEmpty());
}

// Water: 5.00 a unit, 28.00 a pack of 6, 105.00 a carton of 24; 240 units are there.
TEST(LineEditing, TheNextUnitHasAPriceAndAStockOfItsOwn) {
    Counter counter;
    counter.forbid_below_stock();
    counter.forbid({251});
    auto& desk = counter.open();
    EXPECT_FALSE(desk.lines().next_unit());
    EXPECT_THAT(counter.said(), ElementsAre(message::no_line));
    ASSERT_TRUE(counter.enter("400"));
    const auto units = [&] {
        return counter.cell(0, column::unit_name) + " " + counter.cell(0, column::price) + " " +
               counter.cell(0, column::balance) + " " + counter.cell(0, column::unit_cost);
    };
    for (const char* next : {"عبوة 28.00 40.000 17", "كرتونة 105.00 10.000 65", "وحدة 5.00 240.000 3"}) {
        EXPECT_TRUE(desk.lines().next_unit());
        EXPECT_EQ(units(), next);
    }
    // 11 cartons are not there: from the pack the key leads to the unit.
    ASSERT_TRUE(desk.lines().quick_quantity("11"));
    ASSERT_TRUE(desk.lines().next_unit());
    EXPECT_TRUE(desk.lines().next_unit());
    EXPECT_EQ(units(), "وحدة 5.00 240.000 3");
    EXPECT_THAT(counter.said(), ElementsAre(message::quantity_not_allowed));
    // 45 packs are not there either: the line stays.
    ASSERT_TRUE(desk.lines().quick_quantity("45"));
    EXPECT_FALSE(desk.lines().next_unit());
    EXPECT_EQ(units(), "وحدة 5.00 240.000 3");
    EXPECT_THAT(counter.said(), ElementsAre(message::quantity_not_allowed));
    // The ceiling is 10 percent: 2.80 off a pack are too much for a unit.
    ASSERT_TRUE(desk.lines().quick_quantity("1"));
    ASSERT_TRUE(desk.lines().next_unit());
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "2.80"));
    EXPECT_TRUE(desk.lines().next_unit());
    EXPECT_EQ(counter.cell(0, column::total), "102.20");
    EXPECT_FALSE(desk.lines().next_unit());
    EXPECT_EQ(units(), "كرتونة 105.00 10.000 65");
    EXPECT_THAT(counter.said(), ElementsAre(message::price_against_discount));
    // The card's price needs no right.
    EXPECT_TRUE(counter.sell());
    EXPECT_THAT(counter.said(), IsEmpty());

    for (const auto& [code, refusal] : {std::pair("410", message::one_unit), {"*", message::fixed_unit}}) {
        counter.session.permissions.assign(400, '1');
        ASSERT_TRUE(counter.enter(code));
        EXPECT_FALSE(desk.lines().next_unit());
        EXPECT_THAT(counter.said(), ElementsAre(refusal));
    }
}

}  // namespace
