#include "cash/cash_position.h"

#include <gtest/gtest.h>

#include "drawers.h"

namespace cash {
namespace {

using common::Amount;

constexpr common::Moment noon{{2026, 11, 21}, {12, 0, 0, 0}};
constexpr common::Moment morning{{2026, 11, 21}, {8, 0, 0, 0}};

class Position : public testing::Test {
  protected:
    CashPosition computed(const common::Moment& until = noon, const common::Moment& start = morning) {
        CashPosition position(drawers.shop.connection(), drawers.session, drawers.services.clock);
        position.compute(1, start, until);
        return position;
    }
    test::Drawers drawers;
};

struct Edge {
    const char* what;
    test::InvoiceRow row;
    double position;
    double card;
    double telephone;
};

test::InvoiceRow at(const std::string& date, const std::string& time, int stype = 0, int ctype = 0) {
    return {.date = date, .time = time, .ctype = ctype, .stype = stype, .ptot = "10", .safe = "0"};
}

TEST_F(Position, CountsStrictlyBeforeButThePeriodUpToItsEnd) {
    test::InvoiceRow other_store = at("2026/11/21", "09:00:00");
    other_store.store = 2;
    test::InvoiceRow no_drawer = at("2026/11/21", "09:00:00");
    no_drawer.drawer = 99;
    test::InvoiceRow null_amount = at("2026/11/21", "09:00:00");
    null_amount.ptot = "null";
    const Edge edges[] = {
        {"a second before", at("2026/11/21", "11:59:59"), 10, 0, 0},
        {"at the moment", at("2026/11/21", "12:00:00"), 0, 0, 0},
        {"no time: midnight", at("2026/11/21", ""), 10, 0, 0},
        {"midnight of the next day", at("2026/11/22", ""), 0, 0, 0},
        {"a card sale at the end", at("2026/11/21", "12:00:00", 1), 0, 10, 0},
        {"a card sale at the start", at("2026/11/21", "08:00:00", 1), 0, 0, 0},
        {"a card return", at("2026/11/21", "09:00:00", 1, 2), 0, -10, 0},
        {"a telephone order at the end", at("2026/11/21", "12:00:00", 4), 0, 0, 10},
        {"a telephone order before the start", at("2026/11/21", "07:00:00", 4), 0, 0, 0},
        {"another store", other_store, 0, 0, 0},
        {"an unknown drawer", no_drawer, 0, 0, 0},
        {"no amount", null_amount, 0, 0, 0},
    };
    for (const Edge& edge : edges) {
        drawers.shop.sql("delete from sales");
        drawers.invoice(edge.row);
        const DrawerPosition own = computed().own();
        EXPECT_EQ(own.position.value(), edge.position) << edge.what;
        EXPECT_EQ(own.card_sales.value(), edge.card) << edge.what;
        EXPECT_EQ(own.uncollected.value(), edge.telephone) << edge.what;
    }
}

// Each sum is rounded, not each row: three thirds of a hundredth are one.
TEST_F(Position, RoundsEverySum) {
    drawers.cash_sale("0.004");
    drawers.cash_sale("0.004");
    EXPECT_EQ(computed().own().position.text(), "0.01");
    for (int i = 0; i < 10; ++i)
        drawers.cash_sale("0.1");
    EXPECT_EQ(computed().own().position.text(), "1.01");
}

TEST_F(Position, MovesWhatIsAboveZero) {
    drawers.shop.sql(
        "update cash set name = N'درج ''القبو''; delete from sales' where stcode = 1 and code = 1");
    drawers.cash_sale("500.25");
    drawers.cash_sale("70", "09:30:00", 2);
    CashPosition position = computed();
    position.move(Amount(200), 1);
    EXPECT_EQ(drawers.transfers(), "1: 1/1 to 1/2 300.25\n");
    EXPECT_EQ(position.own().moved.value(), 300.25);
    const auto row = drawers.shop.connection().query("select * from cach_t").front();
    EXPECT_EQ(row.text("note1"), "تحويل من درج 'القبو'; delete from sales");
    EXPECT_EQ(row.moment("cdate"), (common::Moment{{2026, 11, 21}, {}}));
    EXPECT_EQ(common::time_text(row.moment("time_").time), "10:42:00");
    EXPECT_EQ(row.integer("user_c"), 1);
}

struct Unmoved {
    const char* what;
    const char* sale;
    std::int64_t drawer;
    double leave;
};
TEST_F(Position, MovesNothing) {
    const Unmoved cases[] = {{"zero", "0", 1, 0},
                             {"below zero", "-5", 1, 0},
                             {"the main drawer", "500", 2, 0},
                             {"all of it stays", "500", 1, 500},
                             {"more than all stays", "500", 1, 501}};
    for (const Unmoved& unmoved : cases) {
        drawers.shop.sql("delete from sales");
        drawers.cash_sale(unmoved.sale, "09:00:00", unmoved.drawer);
        CashPosition position = computed();
        position.move(Amount(unmoved.leave), unmoved.drawer);
        EXPECT_EQ(drawers.transfers(), "") << unmoved.what;
    }
}

TEST_F(Position, MovesEveryDrawerWhenNoneIsNamed) {
    drawers.shop.sql("update basic set mst = 2, mcash = 1");
    drawers.cash_sale("30");
    drawers.cash_sale("40", "09:30:00", 2);
    drawers.shop.sql(
        "insert into cach_t (cnum,cfr,cto,cash_nf,cash_nt,caml,cdate) select 17,2,2,1,1,1,'2026/01/01'");
    CashPosition position = computed();
    position.move({}, 0);
    EXPECT_EQ(drawers.transfers(), "17: 2/1 to 2/1 1.00\n18: 1/1 to 2/1 30.00\n19: 1/2 to 2/1 40.00\n");
}

// Last night's position is transferred today, so the books of the past day stay as they were.
TEST_F(Position, ATransferIsDatedWhenItIsMade) {
    drawers.invoice({.date = "2026/11/20", .time = "21:00:00", .ptot = "100"});
    for (int till = 0; till < 2; ++till) {
        CashPosition position = computed({{2026, 11, 20}, {22, 0, 0, 0}}, {{2026, 11, 20}, {8, 0, 0, 0}});
        position.move({}, 1);
    }
    EXPECT_EQ(drawers.transfers(), "1: 1/1 to 1/2 100.00\n");
    EXPECT_EQ(drawers.shop.cell("select cdate from cach_t"), "2026/11/21 00:00:00");
}

// A transfer carries the time of its writing, which the position at an earlier moment cannot see.
TEST_F(Position, TheSameCashIsNeverMovedTwice) {
    drawers.cash_sale("100");
    for (int till = 0; till < 2; ++till) {
        CashPosition position = computed({{2026, 11, 21}, {10, 0, 0, 0}});
        position.move({}, 1);
    }
    EXPECT_EQ(drawers.transfers(), "1: 1/1 to 1/2 100.00\n");
    // What was sold since then is moved at the next change.
    drawers.cash_sale("25", "10:50:00");
    CashPosition position = computed({{2026, 11, 21}, {11, 0, 0, 0}});
    position.move({}, 1);
    EXPECT_EQ(drawers.transfers(), "1: 1/1 to 1/2 100.00\n2: 1/1 to 1/2 25.00\n");
}

TEST_F(Position, AStoreWithoutDrawersHasNoPositions) {
    drawers.shop.sql("delete from cash");
    EXPECT_TRUE(computed().drawers().empty());
    EXPECT_TRUE(computed().own().position.is_zero());
}

TEST_F(Position, CalcCashEmptiesTheDrawersAndNamesTheEmptyOnes) {
    drawers.shop.sql("update basic set mst = 2, mcash = 1");
    drawers.cash_sale("300");
    drawers.open_shift(4);
    drawers.open_shift(9, "2026/11/21 09:30:00", 2);
    const auto positions = calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(),
                                     CalcCopy::shift_close, Amount(120));
    ASSERT_EQ(positions.size(), 2U);
    EXPECT_EQ(drawers.transfers(), "1: 1/1 to 2/1 180.00\n");
    ASSERT_EQ(drawers.services.prompts.messages.size(), 1U);
    EXPECT_EQ(drawers.services.prompts.last(),
              "تم بدء وردية جديدة .. رصيد الخزينه -- 0.00 -- صفر أو أقل لم يتم تحويل النقديه منها");
}

// 500 at the start of the newest shift, which is that of drawer 2; then an expense of 200 leaves 300.
TEST_F(Position, WhatIsToStayInTheDrawerStaysThoughItHoldsLessNow) {
    drawers.open_shift(4);
    drawers.open_shift(9, "2026/11/21 09:00:00", 2);
    drawers.cash_sale("500", "08:30:00");
    drawers.shop.sql(
        "insert into dailyexp (expdate,time_,value,stcode,cash_n) select '2026/11/21','10:00:00',200,1,1");
    const auto start = [this](Amount leave) {
        calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(), CalcCopy::shift_close,
                  leave);
        return drawers.transfers();
    };
    EXPECT_EQ(start(Amount(300)), "");
    EXPECT_EQ(start(Amount(120)), "1: 1/1 to 1/2 180.00\n");
    EXPECT_EQ(start(Amount(120)), "1: 1/1 to 1/2 180.00\n");
}

TEST_F(Position, CalcCashAsksBeforeItEmptiesTheDrawersOfOthers) {
    drawers.shop.sql("update basic set mst = 2, mcash = 1");
    drawers.shop.sql("insert into cash (stcode,code,[name],copen,salary1) select 1,3,N'درج 3',0,12.5");
    drawers.open_shift(4);
    drawers.open_shift(9, "2026/11/21 09:30:00", 2);
    drawers.cash_sale("30");
    drawers.cash_sale("40", "09:00:00", 2);
    for (const bool agreed : {false, true}) {
        drawers.services.prompts.answers = {agreed};
        calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(), CalcCopy::shift_close,
                  {});
        EXPECT_EQ(drawers.services.prompts.questions.back(),
                  "ستحول إلى الخزينة الرئيسية نقدية هذه الأدراج :\n"
                  "درج 2 : 40.00 .. ورديته مفتوحة\n"
                  "درج 3 : 12.50\n"
                  "هل تريد تحويلها ؟");
        EXPECT_EQ(drawers.transfers(), agreed
                                           ? "1: 1/1 to 2/1 30.00\n2: 1/2 to 2/1 40.00\n3: 1/3 to 2/1 12.50\n"
                                           : "1: 1/1 to 2/1 30.00\n");
    }
    calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(), CalcCopy::shift_close, {});
    EXPECT_EQ(drawers.services.prompts.questions.size(), 2U) << "nothing is left to move";
}

// shift2s counts up to the start of the shift with the store's highest number, shiftc up to the one that
// started last in any store, without its seconds.
TEST_F(Position, TheCopiesOfCalcCashCountToDifferentMoments) {
    drawers.open_shift(9, "2026/11/21 08:00:30", 2);
    drawers.open_shift(4, "2026/11/21 09:30:00", 1);
    drawers.shop.sql("insert into shift (stcode,cash_no,scode,s_date) select 2,1,1,'2026/11/21 10:00:30'");
    drawers.cash_sale("1", "08:00:29");
    drawers.cash_sale("10", "08:00:30");
    drawers.cash_sale("100", "09:59:59");
    drawers.cash_sale("1000", "10:00:10");
    const auto own = [this](CalcCopy copy) {
        return calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(), copy, {})
            .front()
            .position.value();
    };
    EXPECT_EQ(own(CalcCopy::shift_close), 1);
    EXPECT_EQ(own(CalcCopy::shift_start), 111);
}

}  // namespace
}  // namespace cash
