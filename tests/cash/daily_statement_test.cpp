#include "cash/daily_statement.h"

#include <gtest/gtest.h>

#include "common/messages.h"
#include "database/till_settings.h"
#include "drawers.h"
#include "signin/permissions.h"

namespace cash {
namespace {

class Statement : public testing::Test {
  protected:
    DailyStatement opened() {
        DailyStatement statement(drawers.shop.connection(), drawers.session, drawers.services.all());
        EXPECT_TRUE(statement.open());
        return statement;
    }
    // One of everything on drawer 1, today.
    void busy_day() {
        struct Sale {
            int ctype, stype, vcode;
            const char* ptot;
            const char* disboun;
        };
        int number = 0;
        for (const Sale& sale :
             {Sale{0, 0, -1, "100", "null"}, Sale{1, 0, -1, "7", "null"}, Sale{0, 1, -1, "40", "null"},
              Sale{0, 2, -1, "20", "3"}, Sale{0, 3, -1, "15", "4"}, Sale{0, 4, -1, "11", "null"},
              Sale{2, 0, -1, "9", "1.5"}, Sale{3, 0, -1, "6", "null"}, Sale{0, 0, 7, "200", "null"},
              Sale{2, 0, 7, "30", "null"}}) {
            drawers.invoice({.number = ++number,
                             .ctype = sale.ctype,
                             .stype = sale.stype,
                             .vcode = sale.vcode,
                             .ptot = sale.ptot,
                             .disboun = sale.disboun,
                             .safe = "0"});
        }
        for (const char* statement :
             {"insert into custdata (ccode,cname) select 7,N'مطعم الأمل'",
              "insert into bankdata (bcode,bname) select 3,N'البنك الأهلي'",
              "insert into mainx (code,name) select 1,N'كهرباء'",
              "insert into vencuspay (chkno,ptype,ztype,vcode,[date],[type],quan,stcode,cash_n,time_) select "
              "'12',2,2,7,'2026/11/21',1,50,1,1,'09:10:00'",
              "insert into vencuspay (chkno,ptype,ztype,vcode,[date],[type],quan,stcode,cash_n,time_) select "
              "'13',1,2,7,'2026/11/21',1,8,1,1,'09:11:00'",
              "insert into vencuspay (chkno,ptype,ztype,vcode,[date],[type],quan,stcode,cash_n,time_) select "
              "'14',2,2,7,'2026/11/21',0,999,1,1,'09:12:00'",
              "insert into btran (ser,bcode,[date],quan,[type],type1,stcode,cash_n,time_) select "
              "1,3,'2026/11/21',5,1,1,1,1,'09:13:00'",
              "insert into btran (ser,bcode,[date],quan,[type],type1,stcode,cash_n,time_) select "
              "2,3,'2026/11/21',6,0,1,1,1,'09:14:00'",
              "insert into cach_t (cnum,cfr,cash_nf,cto,cash_nt,cdate,time_,caml,note1) select "
              "1,1,1,1,2,'2026/11/21','09:15:00',17,N'تحويل من درج 1'",
              "insert into cach_t (cnum,cfr,cash_nf,cto,cash_nt,cdate,time_,caml) select "
              "2,2,1,1,1,'2026/11/21','09:16:00',19",
              "insert into in_out (ser,stcode,cash_n,[date],time_,type1,aml,note) select "
              "1,1,1,'2026/11/21','09:17:00',0,2,N'صاحب المحل'",
              "insert into in_out (ser,stcode,cash_n,[date],time_,type1,aml) select "
              "2,1,1,'2026/11/21','09:18:00',1,23",
              "insert into dailyexp (stcode,cash_n,expdate,time_,[value],mcode,notes) select "
              "1,1,'2026/11/21','09:19:00',12.25,1,N'عداد'",
              "insert into mor_les (stcode,ptype,[date],time_,aml) select 1,1,'2026/11/21','09:20:00',-30"})
            drawers.shop.sql(statement);
    }
    test::Drawers drawers;
};

TEST_F(Statement, EveryFigureUnderItsHeading) {
    busy_day();
    drawers.shop.sql("update cash set copen = 500 where stcode = 1 and code = 1");
    const DailyStatement statement = opened();
    const std::pair<const char*, const char*> expected[] = {
        {"مبيعات آجلة", "200.00"},   {"مرتجعات آجلة", "30.00"},     {"مبيعات نقدية", "193.00"},
        {"مبيعات إئتمان", "40.00"},  {"اكراميـــــات", "3.00"},     {"بـــونــــات", "4.00"},
        {"تليفون لم يحصل", "11.00"}, {"مرتجع نقدي", "16.00"},       {"زيادة جردية", "0.00"},
        {"صافي نقــــدي", "119.00"}, {"مقبوضــــات", "50.00"},      {"تحويل الي الخزينة", "19.00"},
        {"تحويل من بنك", "6.00"},    {"ايداع شخصي", "23.00"},       {"اجمال ايداعات", "217.00"},
        {"مدفوعــــات", "8.00"},     {"تحويل من الخزينة", "17.00"}, {"تحويل الي بنك", "5.00"},
        {"مصروفــــــات", "12.25"},  {"مسحوبات شخصيه", "2.00"},     {"عجز جـــــردي", "30.00"},
        {"اجمالي مصروفات", "74.25"}, {"الصـــــافي", "142.75"},     {"رصيد سابق", "500.00"},
        {"رصيد حــالي", "642.75"}};
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(figure_headings[i], expected[i].first);
        EXPECT_EQ(statement.figures()[static_cast<Figure>(i)].text(), expected[i].second)
            << expected[i].first;
    }
    EXPECT_TRUE(drawers.services.prompts.messages.empty());
}

TEST_F(Statement, ADayWithoutMovementsKeepsTheBalance) {
    busy_day();
    DailyStatement statement = opened();
    statement.date = {2026, 11, 25};
    ASSERT_TRUE(statement.show());
    for (std::size_t i = 0; i < 23; ++i)
        EXPECT_TRUE(statement.figures().values[i].is_zero()) << figure_headings[i];
    EXPECT_EQ(statement.figures()[Figure::previous_balance].text(), "142.75");
    EXPECT_EQ(statement.figures()[Figure::current_balance].text(), "142.75");
}

TEST_F(Statement, MidnightBelongsToTheDayBefore) {
    drawers.cash_sale("10", "00:00:00");
    drawers.cash_sale("20", "");
    drawers.cash_sale("40", "00:00:01");
    drawers.cash_sale("80", "23:59:59");
    const DailyStatement statement = opened();
    EXPECT_EQ(statement.figures()[Figure::previous_balance].text(), "30.00");
    EXPECT_EQ(statement.figures()[Figure::cash_sales].text(), "120.00");
    EXPECT_EQ(statement.figures()[Figure::current_balance].text(), "150.00");
}

// The same party as in the journal, the receiver of tips and a vendor's account among them.
TEST_F(Statement, TheRowsBehindAFigureNameTheirParty) {
    busy_day();
    for (const char* statement :
         {"insert into boundata (ccode,cname) select 5,N'حسن'", "update sales set link = 5 where pnum = 4",
          "insert into vendata (vcode,vname) select 8,N'مورد الخضار'",
          "update sales set vcode = 8 where pnum = 10"})
        drawers.shop.sql(statement);
    DailyStatement statement = opened();
    struct Case {
        Figure figure;
        const char* number;
        const char* moment;
        const char* party;
        double amount;
    };
    const Case cases[] = {
        {Figure::account_sales, "9", "2026/11/21 09:00 AM", "مطعم الأمل", 200},
        {Figure::account_returns, "10", "2026/11/21 09:00 AM", "مورد الخضار", 30},
        {Figure::tips, "4", "2026/11/21 09:00 AM", "حسن", 3},
        {Figure::receipts, "12", "2026/11/21 09:10 AM", "مطعم الأمل", 50},
        {Figure::payments, "13", "2026/11/21 09:11 AM", "مطعم الأمل", 8},
        {Figure::to_bank, "1", "2026/11/21 09:13 AM", "البنك الأهلي", 5},
        {Figure::transfers_out, "1", "2026/11/21 09:15 AM", "تحويل من درج 1", 17},
        {Figure::withdrawals, "1", "2026/11/21 09:17 AM", "صاحب المحل", 2},
        {Figure::expenses, "", "2026/11/21 09:19 AM", "كهرباء - عداد", 12.25},
        {Figure::shortage, "", "2026/11/21 09:20 AM", "", 30},
    };
    for (const Case& expected : cases) {
        const FigureRows rows = statement.rows_behind(expected.figure);
        const auto heading = figure_headings[static_cast<std::size_t>(expected.figure)];
        ASSERT_EQ(rows.rows.size(), 1U) << heading;
        EXPECT_EQ(rows.rows[0].kind, heading);
        EXPECT_EQ(rows.rows[0].number, expected.number) << heading;
        EXPECT_EQ(rows.rows[0].moment, expected.moment) << heading;
        EXPECT_EQ(rows.rows[0].party, expected.party) << heading;
        EXPECT_EQ(rows.rows[0].amount, expected.amount) << heading;
    }
    EXPECT_TRUE(statement.rows_behind(Figure::surplus).rows.empty());
    EXPECT_EQ(statement.rows_behind(Figure::total_outgoings).rows.size(), 6U);
    // The buyer of the goods comes before the receiver of the tips.
    drawers.shop.sql("insert into cust_cash (zcode,zname) select 6,N'سعاد'");
    drawers.shop.sql("update sales set cust_c = 6 where pnum = 4");
    EXPECT_EQ(statement.rows_behind(Figure::tips).rows.at(0).party, "سعاد");
}

TEST_F(Statement, AllDrawersAddUp) {
    busy_day();
    drawers.cash_sale("1000", "09:00:00", 2);
    drawers.invoice({.store = 2, .ptot = "5000"});
    DailyStatement statement = opened();
    EXPECT_EQ(statement.figures()[Figure::cash_sales].text(), "193.00");
    statement.choose_drawer(0);
    ASSERT_TRUE(statement.show());
    EXPECT_EQ(statement.figures()[Figure::cash_sales].text(), "1193.00");
    EXPECT_EQ(statement.rows_behind(Figure::cash_sales).rows.size(), 7U);
    statement.choose_store(0);
    ASSERT_TRUE(statement.show());
    EXPECT_EQ(statement.figures()[Figure::cash_sales].text(), "6193.00");
    // Between the shop's own drawers nothing is won or lost.
    EXPECT_EQ(statement.figures()[Figure::transfers_in].text(),
              statement.figures()[Figure::transfers_out].text());
    EXPECT_EQ(statement.stores().front().name, "الكل");
    EXPECT_EQ(statement.journal().size(), 12U);
}

TEST_F(Statement, OpensOnlyWithThePermission) {
    drawers.session.permissions[255] = '0';
    DailyStatement statement(drawers.shop.connection(), drawers.session, drawers.services.all());
    EXPECT_FALSE(statement.open());
    EXPECT_EQ(drawers.services.prompts.last(), signin::denied);
}

TEST_F(Statement, SaysWhenADrawerIsMissing) {
    DailyStatement statement = opened();
    drawers.cash_sale("10", "09:00:00", 1);
    drawers.cash_sale("10", "09:00:00", 77);
    ASSERT_TRUE(statement.show());
    EXPECT_EQ(drawers.services.prompts.last(), "توجد حركات على خزائن غير معرفة لم تدخل في الكشف .. عددها 1");
    // Out to an unknown drawer, and in from one.
    for (const char* ends : {"1,1,1,66", "1,66,1,1"})
        drawers.shop.sql("insert into cach_t (cfr,cash_nf,cto,cash_nt,cnum,cdate,caml) select " +
                         std::string(ends) + ",1,'2026/11/21',5");
    ASSERT_TRUE(statement.show());
    EXPECT_EQ(drawers.services.prompts.last(), "توجد حركات على خزائن غير معرفة لم تدخل في الكشف .. عددها 3");
    // An unknown store, a row without a store, and an unknown drawer of a store: reported whatever is chosen.
    drawers.invoice({.store = 7, .ptot = "10"});
    drawers.shop.sql("update sales set stcode = null where stcode = 7");
    drawers.invoice({.store = 7, .ptot = "10"});
    drawers.invoice({.store = -1, .ptot = "10"});
    drawers.shop.sql("insert into cash (stcode,code,[name]) select 7,1,N'درج'");
    for (const std::int64_t store : {1, 0}) {
        statement.choose_store(store);
        ASSERT_TRUE(statement.show());
        EXPECT_EQ(drawers.services.prompts.last(),
                  "توجد حركات على خزائن غير معرفة لم تدخل في الكشف .. عددها 6");
    }
    // A code between those of many stores, of which only the even ones exist.
    drawers.shop.sql("begin transaction");
    for (int store = 100; store < 2500; store += 2)
        drawers.shop.sql("insert into stocks (code) values (" + std::to_string(store) + ")");
    drawers.shop.sql("commit transaction");
    for (const int store : {101, 1300, 2497})
        drawers.invoice({.store = store, .ptot = "10"});
    DailyStatement of_many_stores = opened();
    ASSERT_TRUE(of_many_stores.show());
    EXPECT_EQ(drawers.services.prompts.last(), "توجد حركات على خزائن غير معرفة لم تدخل في الكشف .. عددها 8");
    statement.choose_store(1);
    ASSERT_TRUE(statement.show());
    drawers.shop.sql("delete from cash where stcode = 1 and code = 1");
    EXPECT_FALSE(statement.show());
    EXPECT_EQ(drawers.services.prompts.last(), common::message::no_such_drawer);
    EXPECT_EQ(statement.figures()[Figure::cash_sales].text(), "10.00");  // what was shown stays
}

TEST_F(Statement, JournalListsAndFilters) {
    busy_day();
    for (const char* statement :
         {"insert into cust_cash (zcode,zname) select 4,N'منى'",
          "insert into cust_cash (zcode,zname) select 4,N'منى 2'",
          "insert into boundata (ccode,cname) select 5,N'حسن'",
          "insert into link (ccode,cname) select 5,N'مندوب'",
          "update sales set cust_c = 4, [user] = 1, wcode = 1, note = N'ملاحظة' where pnum = 1",
          "update sales set link = 5 where pnum = 4 or pnum = 6", "update sales set link = 99 where pnum = 5",
          "update sales set time_ = null where pnum = 10"})
        drawers.shop.sql(statement);
    DailyStatement statement = opened();
    const auto& journal = statement.journal();
    ASSERT_EQ(journal.size(), 10U);
    EXPECT_EQ(journal[0].cells(), (std::array<std::string, 9>{"1", "مبيعات نقدية", "100.00", "سعاد", "منى",
                                                              "09:00 AM", "2026/11/21", "ملاحظة", "مدير"}));
    EXPECT_EQ(journal[3].party, "حسن");
    EXPECT_EQ(journal[3].link, "حسن");
    EXPECT_EQ(journal[4].link, "");
    EXPECT_EQ(journal[5].link, "مندوب");
    EXPECT_EQ(journal[6].kind, "مرتجعات نقدية");
    EXPECT_EQ(journal[8].kind, "مبيعات آجلة");
    EXPECT_EQ(journal[8].party, "مطعم الأمل");
    EXPECT_EQ(journal[9].kind, "مرتجعات آجلة");
    EXPECT_EQ(journal[9].time, "");
    const std::pair<JournalFilter, std::size_t> sizes[] = {{JournalFilter::cash_sales, 6},
                                                           {JournalFilter::account_sales, 1},
                                                           {JournalFilter::cash_returns, 2},
                                                           {JournalFilter::account_returns, 1},
                                                           {JournalFilter::all, 10}};
    for (const auto& [filter, size] : sizes) {
        statement.choose_filter(filter);
        EXPECT_EQ(statement.journal().size(), size);
    }
}

TEST_F(Statement, DaySummary) {
    busy_day();
    const DailyStatement statement = opened();
    // Cash sales of kind 0 without card or coupon; returns with their coupons; a shortage.
    EXPECT_EQ(statement.summary().cells(), (std::array<std::string, summary_count>{
                                               "10", "360.00", "200.00", "40.00", "120.00", "30.00", "16.50",
                                               "3.00", "0.00", "30.00", "70.50", "0.00", "0.00"}));
}

// 2.00 on every invoice of the day. The statement counts kind 1 as a sale and as a return and leaves kind 3
// out; the summary knows plain sales of kind 0 and returns of kinds 2 and 3.
TEST_F(Statement, DiscountsAreFiguresOfTheirOwn) {
    busy_day();
    drawers.shop.sql("update sales set pdis = 2");
    database::set_till_setting(drawers.shop.connection(), database::setting::net_from, "2026/11/21");
    DailyStatement statement = opened();
    const std::pair<Figure, const char*> expected[] = {
        {Figure::cash_sales, "193.00"},       {Figure::discounts, "6.00"},   // plain, kind 1, coupons
        {Figure::returned_discounts, "4.00"}, {Figure::net_cash, "117.00"},  // 119 - 6 + 4
        {Figure::total_deposits, "215.00"},   {Figure::net, "140.75"},
        {Figure::current_balance, "140.75"}};
    for (const auto& [figure, text] : expected)
        EXPECT_EQ(statement.figures()[figure].text(), text)
            << figure_headings[static_cast<std::size_t>(figure)];
    const auto& summary = statement.summary().columns;
    EXPECT_EQ(
        summary[4].text() + " " + summary[11].text() + " " + summary[12].text() + " " + summary[10].text(),
        "120.00 2.00 4.00 72.50");

    const FigureRows rows = statement.rows_behind(Figure::discounts);
    ASSERT_EQ(rows.rows.size(), 3U);
    EXPECT_EQ(rows.rows[0].kind + " " + rows.rows[0].number, "خصومات البونات 1");
    EXPECT_EQ(statement.rows_behind(Figure::net_cash).sum.text(), "117.00");

    const DayReport report = statement.print_report();
    ASSERT_EQ(report.totals.size(), 8U);
    EXPECT_EQ(report.totals[0], (std::pair<std::string, std::string>{"خصومات البونات", "6.00"}));
    EXPECT_EQ(report.totals[1], (std::pair<std::string, std::string>{"خصومات المرتجع", "4.00"}));
    EXPECT_EQ(report.totals[2].second, "117.00");

    statement.date = {2026, 11, 25};
    ASSERT_TRUE(statement.show());
    EXPECT_EQ(statement.figures()[Figure::previous_balance].text(), "140.75");
}

TEST_F(Statement, ThePrintedReportIsWrittenForTheUser) {
    busy_day();
    drawers.shop.sql("insert into [print] (f1,[user]) select 'old',N'مدير'");
    drawers.shop.sql("insert into [print] (f1,[user]) select 'kept',N'غيره'");
    DailyStatement statement = opened();
    const DayReport report = statement.print_report();
    EXPECT_EQ(report.title, "تقرير الكاشير عن يوم 2026/11/21");
    EXPECT_EQ(report.store, "الفرع الرئيسي");
    EXPECT_EQ(report.rows.size(), 10U);
    EXPECT_EQ(report.rows[8],
              (std::vector<std::string>{"9", "مبيعات آجلة", "200.00", "مطعم الأمل", "", "درج 1"}));
    ASSERT_EQ(report.totals.size(), 6U);
    EXPECT_EQ(report.totals[0], (std::pair<std::string, std::string>{"صافي نقــــدي", "119.00"}));
    EXPECT_EQ(report.totals[5].second, "142.75");
    EXPECT_EQ(drawers.shop.number("select count(*) from [print] where [user] = N'مدير'"), 10);
    EXPECT_EQ(drawers.shop.cell("select f4 from [print] where f1 = '9'"), "مطعم الأمل");
    EXPECT_EQ(drawers.shop.number("select count(*) from [print] where f1 = 'kept'"), 1);

    // The paper says which invoices it lists, and from which drawer each is.
    EXPECT_EQ(report.filter, "الكل");
    drawers.invoice({.number = 11, .drawer = 99});
    drawers.invoice({.number = 12, .store = 2});
    statement.choose_store(0);
    ASSERT_TRUE(statement.show());
    statement.choose_filter(JournalFilter::cash_sales);
    const DayReport all = statement.print_report();
    EXPECT_EQ(all.filter, "مبيعات نقدية");
    ASSERT_EQ(all.rows.size(), 8U);
    EXPECT_EQ(all.rows[5].back() + ", " + all.rows[6].back() + ", " + all.rows[7].back(),
              "الفرع الرئيسي / درج 1, 99, المخزن الثاني / درج 1");
}

}  // namespace
}  // namespace cash
