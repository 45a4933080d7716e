// Reports, ages of debts and closed days on rows that were added up by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reports/ageing.h"
#include "reports/behind.h"
#include "reports/desk.h"
#include "reports/discount_share.h"
#include "reports/frozen_day.h"
#include "reports/report.h"
#include "support/services.h"
#include "support/shop.h"

namespace reports {
namespace {

using common::Amount;
using common::Date;

constexpr Date day{2026, 11, 20};
constexpr common::Moment now{{2026, 11, 21}, {10, 42, 0, 0}};

std::vector<std::int64_t> hundredths(const std::vector<Amount>& amounts) {
    std::vector<std::int64_t> numbers;
    for (const Amount amount : amounts)
        numbers.push_back(amount.hundredths());
    return numbers;
}

TEST(DiscountShare, GoesByValueAndAddsUp) {
    const auto of = [](std::int64_t discount, std::vector<std::int64_t> lines) {
        std::vector<Amount> values;
        for (const std::int64_t line : lines)
            values.push_back(Amount::of_hundredths(line));
        return hundredths(shares_of(Amount::of_hundredths(discount), values));
    };
    using Numbers = std::vector<std::int64_t>;
    EXPECT_EQ(of(1000, {10000, 10000, 10000}), (Numbers{333, 333, 334}));
    // 7.77 x 12.50 / 99.90 is 0.97, 7.77 x 80.05 / 99.90 is 6.23; 0.57 is left.
    EXPECT_EQ(of(777, {1250, 8005, 735}), (Numbers{97, 623, 57}));
    EXPECT_EQ(of(5, {0, 0}), (Numbers{0, 5}));
    EXPECT_EQ(of(0, {100}), (Numbers{0}));
}

class Reports : public testing::Test {
  protected:
    Reports() {
        session.user_code = 1;
        session.user_name = "مدير";
        services.clock.moment = now;
    }
    void sale(int number, const std::string& date, const std::string& ptot, const std::string& pdis = "0",
              int ctype = 0, int vcode = -1) {
        shop.sql(
            "insert into sales (pnum,ctype,vcode,stcode,[date],time_,stype,ptype,[user],ptot,pdis) select " +
            std::to_string(number) + "," + std::to_string(ctype) + "," + std::to_string(vcode) + ",1,'" +
            date + "','09:30:00',0,1,1," + ptot + "," + pdis);
    }
    Table table(KindId kind, const Date& first = day, const Date& last = day) {
        return table_of(shop.connection(), {kind, {first, last, 0}, now, true});
    }

    test::Shop shop;
    test::RememberedServices services;
    signin::Session session;
};

TEST_F(Reports, WhatHeadersHoldBeyondTheirLinesStandsApart) {
    sale(1, "2026/11/20", "100", "10");
    shop.sql("insert into items (code,name,num1,price11) select 5,N'شاي',1,6");
    shop.sql(
        "insert into saledata (pnum,ctype,vcode,stcode,[date],time_,serial,icode,quan,price,disc,quan1) "
        "select 1,0,-1,1,'2026/11/20','09:30:00',1,5,8,10,0,8");
    // 80 of goods less the whole discount; 20 of the header have no line.
    const Table items = table(KindId::profit_by_item);
    ASSERT_EQ(items.rows.size(), 2u);
    EXPECT_EQ(items.cells(items.rows[0]),
              (std::vector<std::string>{"شاي", "70.00", "48.00", "22.00", "31.4%"}));
    EXPECT_EQ(items.rows[1].label, "فرق بين البونات وسطورها");
    EXPECT_EQ(items.total_cells(),
              (std::vector<std::string>{"الإجمالي", "90.00", "48.00", "42.00", "46.7%"}));
    const Behind rows =
        rows_behind(shop.connection(), {KindId::profit_by_item, {day, day, 0}, now, true}, items.rows[0]);
    ASSERT_EQ(rows.rows.size(), 1u);
    EXPECT_EQ(rows.rows[0].cells[8], "80.00");
    EXPECT_EQ(lines_of(shop.connection(), *rows.rows[0].document).sum, "الإجمالي 80.00");
}

TEST_F(Reports, TheRowsBehindAFigureAddUpToIt) {
    sale(1, "2026/11/20", "100", "10");
    sale(2, "2026/11/20", "40.5", "0", 2);
    sale(3, "2026/11/20", "60", "0", 1, 7);
    sale(4, "2026/11/21", "5");
    for (const Kind& kind : kinds()) {
        const Request request{kind.id, {day, {2026, 11, 21}, 0}, now, true};
        for (const TableRow& row : table_of(shop.connection(), request).rows)
            EXPECT_NO_THROW(rows_behind(shop.connection(), request, row)) << kind.name << " " << row.label;
    }
    const Table days = table(KindId::sales_by_day);
    // 160 less 10 less 40.50
    EXPECT_EQ(days.cells(days.rows.at(0)), (std::vector<std::string>{"2026/11/20 الجمعة", "2", "160.00",
                                                                     "10.00", "40.50", "109.50", "75.00"}));
    const Behind behind =
        rows_behind(shop.connection(), {KindId::sales_by_day, {day, day, 0}, now, true}, days.rows[0]);
    EXPECT_EQ(behind.rows.size(), 3u);
    EXPECT_EQ(behind.sum, "الصافي 109.50");
}

TEST_F(Reports, ProfitIsForWhoMaySeeCosts) {
    const auto tells_profit = [&](const std::string& permissions) {
        session.permissions = permissions;
        Desk desk(shop.connection(), session, services.clock);
        desk.open();
        return common::contains(desk.kinds(), static_cast<std::int64_t>(KindId::profit_by_item));
    };
    EXPECT_TRUE(tells_profit(std::string(400, '1')));
    EXPECT_FALSE(tells_profit(std::string(380, '1')));
}

TEST_F(Reports, TheOldestDebtIsPaidFirst) {
    shop.sql("insert into custdata (ccode,cname,copen,cacc) select 7,N'مطعم',30,170");
    sale(1, "2026/11/10", "100", "0", 0, 7);  // 11 days old
    sale(2, "2026/10/22", "50", "0", 0, 7);   // 30 days
    sale(3, "2026/10/21", "80", "0", 0, 7);   // 31 days: 20 of it are left
    const auto parties = aged_parties(shop.connection(), accounts::PartyKind::customer, now.date);
    ASSERT_EQ(parties.size(), 1u);
    EXPECT_EQ(parties[0].by_age, (std::array<double, age_count>{150, 20, 0, 0}));
    const auto debts = open_debts(shop.connection(), accounts::PartyKind::customer, 7, now.date);
    ASSERT_EQ(debts.size(), 3u);
    EXPECT_EQ(debts[2].open, 20);
    EXPECT_EQ(debts[2].age, 31);
    // The 30 that he owed before are paid. If he owed 300, 70 of it would belong to no invoice.
    shop.sql("update custdata set cacc = 300 where ccode = 7");
    EXPECT_EQ(aged_parties(shop.connection(), accounts::PartyKind::customer, now.date)[0].by_age,
              (std::array<double, age_count>{150, 80, 0, 70}));
    EXPECT_EQ(open_debts(shop.connection(), accounts::PartyKind::customer, 7, now.date).back().document,
              "رصيد سابق");
}

TEST_F(Reports, AClosedDayShowsWhatWasWrittenLater) {
    const auto close = [&](const Date& closed) {
        const auto refused = close_day(shop.connection(), session, services.clock, 1, closed);
        return refused ? refused->text : std::string();
    };
    sale(1, "2026/11/20", "100", "10");
    sale(2, "2026/11/20", "40");
    shop.sql(
        "insert into dailyexp (expdate,[value],stcode,cash_n,mcode,scode,time_) select "
        "'2026/11/20',5,1,1,1,1,'10:00:00'");
    EXPECT_FALSE(is_frozen(shop.connection(), 1, day));
    EXPECT_EQ(close(day), "");
    EXPECT_TRUE(is_frozen(shop.connection(), 1, day));
    EXPECT_FALSE(is_frozen(shop.connection(), 2, day));
    EXPECT_EQ(close(day), "هذا اليوم مقفل من قبل");
    EXPECT_EQ(find_closed_day(shop.connection(), 1, day)->net, Amount(130));
    EXPECT_TRUE(changed_since_closing(shop.connection(), 1, day).empty());

    // Another program writes into the day, changes a row of it and removes one.
    sale(3, "2026/11/20", "7");
    shop.sql("update sales set pdis = 12 where pnum = 1");
    shop.sql("delete from dailyexp");
    const auto changes = changed_since_closing(shop.connection(), 1, day);
    ASSERT_EQ(changes.size(), 3u);
    EXPECT_EQ(changes[0].change, RowChange::altered);
    EXPECT_EQ(changes[0].number, "1");
    EXPECT_EQ(changes[0].before, "الخصم 10");
    EXPECT_EQ(changes[0].now, "الخصم 12");
    EXPECT_EQ(changes[1].change, RowChange::added);
    EXPECT_EQ(changes[1].number, "3");
    EXPECT_EQ(changes[1].now, "الإجمالي 7، الخصم 0، الدفع 0، الخزينة 1، المستخدم 1");
    EXPECT_EQ(changes[2].change, RowChange::removed);
    EXPECT_EQ(changes[2].kind, "مصروف");
    const Table closed = table(KindId::closed_days);
    ASSERT_EQ(closed.rows.size(), 1u);
    // 100 - 12 + 40 + 7
    EXPECT_EQ(closed.cells(closed.rows[0])[1], "130.00");
    EXPECT_EQ(closed.cells(closed.rows[0])[2], "135.00");
    EXPECT_EQ(closed.cells(closed.rows[0])[3], "3");
}

TEST_F(Reports, ADayIsClosedWhenNothingOfItIsOpen) {
    const auto close = [&](const Date& closed) {
        const auto refused = close_day(shop.connection(), session, services.clock, 1, closed);
        return refused ? refused->text : std::string();
    };
    EXPECT_EQ(close({2026, 11, 22}), "هذا اليوم لم يأت بعد");
    shop.sql("insert into shift (stcode,cash_no,scode,s_date,man_) select 1,1,1,'2026/11/21 08:00:00',1");
    EXPECT_THAT(close(now.date), testing::StartsWith("أغلق الوردية المفتوحة أولا: "));
    EXPECT_EQ(close(day), "");
    shop.sql("update shift set e_date = '2026/11/21 10:00:00'");
    shop.sql("insert into till_save (id,stcode,cash_no,kind,title) select 9,1,1,'invoice',N'بون 5'");
    EXPECT_EQ(close(now.date), "لم يكتمل حفظ: بون 5");
    shop.sql("delete from till_save");
    EXPECT_EQ(close(now.date), "");
    EXPECT_EQ(shop.number("select count(*) from till_day"), 2);
}

}  // namespace
}  // namespace reports
