#include "cash/counted_cash.h"

#include <gtest/gtest.h>

#include "cash/expenses.h"
#include "cash/messages.h"
#include "common/messages.h"
#include "drawers.h"

namespace cash {
namespace {

using common::Amount;

class Counting : public testing::Test {
  protected:
    CountedCash opened() {
        CountedCash panel(drawers.shop.connection(), drawers.session, drawers.services.all());
        panel.open();
        return panel;
    }
    test::Drawers drawers;
};

TEST_F(Counting, ASecondCountReplacesTheFirst) {
    drawers.cash_sale("470");
    CountedCash panel = opened();
    EXPECT_EQ(panel.expected().value(), 470);
    EXPECT_FALSE(panel.count());
    for (const auto& [counted, difference] : {std::pair{"500", 30.0}, {"500.00", 30.0}, {"440.5", -29.5}}) {
        panel.counted = counted;
        EXPECT_FALSE(panel.confirm());
        EXPECT_EQ(panel.count()->difference, Amount(difference));
        EXPECT_EQ(panel.expected().value(), 470);
        EXPECT_EQ(panel.position().value(), 470 + difference);
        EXPECT_EQ(drawers.shop.number("select count(*) from mor_les"), 1);
        EXPECT_EQ(drawers.shop.number("select aml from mor_les"), difference);
    }
    EXPECT_EQ(opened().count()->difference, Amount(-29.5));
    EXPECT_EQ(drawers.shop.cell("select time_ from mor_les"), "2026/11/21 10:42:00");
}

TEST_F(Counting, EachDayStoreAndDrawerHasItsOwnRow) {
    CountedCash panel = opened();
    panel.counted = "5";
    panel.confirm();
    panel.choose_drawer(2);
    panel.confirm();
    panel.choose_store(2);
    EXPECT_EQ(panel.drawer(), 1);
    panel.confirm();
    // Counted on the day after, the count covers that whole day, including sales at a later time than now.
    drawers.invoice({.store = 2, .date = "2026/11/20", .time = "18:00:00", .ptot = "100"});
    panel.choose_day({2026, 11, 20});
    panel.counted = "102";
    panel.confirm();
    EXPECT_EQ(panel.count()->counted.value(), 102);
    EXPECT_EQ(panel.count()->moved_since.value(), 0);
    EXPECT_EQ(panel.count()->at, drawers.services.clock.moment);
    EXPECT_EQ(drawers.shop.number("select count(*) from mor_les"), 4);
    panel.choose_day({2026, 11, 21});
    EXPECT_EQ(panel.expected().value(), 102);  // yesterday's surplus is in the drawer
    EXPECT_EQ(panel.position().value(), 107);
    // The rows of other programs may have no time, or one with any date.
    drawers.shop.sql("update mor_les set time_ = null");
    EXPECT_EQ(opened().count()->counted.value(), 5);
    drawers.shop.sql("update mor_les set time_ = '1899/12/30 10:00:00'");
    drawers.cash_sale("30", "10:30:00");
    EXPECT_EQ(opened().count()->counted.value(), 5);
    EXPECT_EQ(opened().count()->moved_since.value(), 30);
}

// The whole day counts, its last second included; what comes at midnight is the next day's.
TEST_F(Counting, CountsToTheEndOfTheDay) {
    drawers.cash_sale("10", "23:59:59");
    test::InvoiceRow next;
    next.date = "2026/11/22";
    next.time = "";
    next.ptot = "1000";
    drawers.invoice(next);
    next.stype = 1;
    drawers.invoice(next);
    next.stype = 4;
    next.safe = "0";
    drawers.invoice(next);
    const CountedCash panel = opened();
    EXPECT_EQ(panel.expected().value(), 10);
    EXPECT_EQ(panel.card_sales().value(), 0);
    EXPECT_EQ(panel.uncollected().value(), 0);
}

TEST_F(Counting, RefusalsWriteNothing) {
    struct Case {
        const char* counted;
        common::Date day;
        const char* sql;
        std::string_view message;
    };
    const Case cases[] = {
        {"مائة", {2026, 11, 21}, "", common::message::wrong_amount},
        {"-1", {2026, 11, 21}, "", common::message::no_minus},
        {"1,250", {2026, 11, 21}, "", common::message::no_comma},
        {"1e300", {2026, 11, 21}, "", common::message::wrong_amount},
        {"12.345", {2026, 11, 21}, "", common::message::too_fine},
        {"5", {2026, 11, 22}, "", message::future_day},
        {"5", {2026, 11, 21}, "delete from cash", common::message::no_such_drawer},
    };
    for (const Case& refused : cases) {
        CountedCash panel = opened();
        panel.choose_day(refused.day);
        if (*refused.sql != 0) drawers.shop.sql(refused.sql);
        panel.counted = refused.counted;
        const auto refusal = panel.confirm();
        ASSERT_TRUE(refusal) << refused.message;
        EXPECT_EQ(refusal->field, "cash_counted");
        EXPECT_EQ(refusal->text, refused.message);
    }
    EXPECT_EQ(drawers.shop.number("select count(*) from mor_les"), 0);
}

class Spending : public testing::Test {
  protected:
    Spending() {
        for (const char* statement : {"insert into mainx (code,name) select 1,N'كهرباء'",
                                      "insert into mainx (code,name) select 2,N'نقل'",
                                      "insert into subx (code,name,mcode) select 1,N'فاتورة',1",
                                      "insert into subx (code,name,mcode) select 5,N'سيارة',2"})
            drawers.shop.sql(statement);
        screen.open();
    }
    void fill() {
        screen.choose_main_heading(2);
        screen.expense.sub_heading = 5;
        screen.expense.value = "12.50";
        screen.expense.notes = "أجرة 'النقل'; delete from dailyexp --";
    }
    test::Drawers drawers;
    Expenses screen{drawers.shop.connection(), drawers.session, drawers.services.all()};
};

TEST_F(Spending, WritesAnExpenseAndAsksForAnother) {
    fill();
    drawers.services.prompts.answers = {true, false};
    EXPECT_FALSE(screen.save());
    EXPECT_FALSE(screen.is_done());
    EXPECT_EQ(screen.expense.value, "0.00");
    EXPECT_EQ(screen.expense.sub_heading, 5);
    screen.expense.value = "٧٫٢٥";
    EXPECT_FALSE(screen.save());
    EXPECT_TRUE(screen.is_done());
    const auto rows = drawers.shop.connection().query("select * from dailyexp order by value");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows.front().number("value"), 7.25);
    const auto& row = rows.rows().back();
    EXPECT_EQ(row.number("value"), 12.5);
    EXPECT_EQ(row.text("notes"), "أجرة 'النقل'; delete from dailyexp --");
    EXPECT_EQ(row.moment("expdate"), (common::Moment{{2026, 11, 21}, {}}));
    EXPECT_EQ(common::time_text(row.moment("time_").time), "10:42:00");
    EXPECT_EQ(row.text("stcode") + row.text("cash_n") + row.text("mcode") + row.text("scode"), "1125");
}

TEST_F(Spending, ChoicesAboveEmptyTheOnesBelow) {
    fill();
    screen.choose_main_heading(1);
    EXPECT_FALSE(screen.expense.sub_heading);
    ASSERT_EQ(screen.sub_headings().size(), 1U);
    EXPECT_EQ(screen.sub_headings().front().name, "فاتورة");
    screen.choose_main_heading({});
    EXPECT_TRUE(screen.sub_headings().empty());
    EXPECT_EQ(screen.expense.drawer, 1);
    screen.choose_store(2);
    EXPECT_FALSE(screen.expense.drawer);
    EXPECT_EQ(screen.drawers().size(), 1U);
}

TEST_F(Spending, RefusalsWriteNothing) {
    struct Case {
        void (*spoil)(Expenses&);
        std::string_view field;
        std::string_view message;
    };
    const Case cases[] = {
        {[](Expenses& s) { s.expense.drawer.reset(); }, "expense_drawer", "ادخل الخزينة"},
        {[](Expenses& s) { s.open(); }, "expense_main", "ادخل المصروف الرئيسي"},
        {[](Expenses& s) { s.expense.sub_heading.reset(); }, "expense_sub", "ادخل المصروف الفرعي"},
        {[](Expenses& s) { s.expense.value = "0.00"; }, "expense_value", "ادخل القيمة"},
        {[](Expenses& s) { s.expense.value = ""; }, "expense_value", "ادخل القيمة"},
        {[](Expenses& s) { s.expense.value = "12.345"; }, "expense_value", common::message::too_fine},
        {[](Expenses& s) { s.expense.value = "عشرة"; }, "expense_value", common::message::wrong_amount},
        {[](Expenses& s) { s.expense.value = "-3"; }, "expense_value", common::message::no_minus},
        {[](Expenses& s) { s.expense.drawer = 77; }, "expense_drawer", common::message::no_such_drawer},
    };
    for (const Case& refused : cases) {
        screen.open();
        fill();
        refused.spoil(screen);
        const auto refusal = screen.save();
        ASSERT_TRUE(refusal) << refused.message;
        EXPECT_EQ(refusal->field, refused.field) << refused.message;
        EXPECT_EQ(refusal->text, refused.message);
    }
    EXPECT_EQ(drawers.shop.number("select count(*) from dailyexp"), 0);
    EXPECT_TRUE(drawers.services.prompts.questions.empty());
}

}  // namespace
}  // namespace cash
