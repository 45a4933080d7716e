// The upgrade list on shops that are up to date already, and on irregular ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "database/schema/schema.h"
#include "database/sqlserver/odbc_connection.h"
#include "database/sqlserver/open.h"
#include "database/tds_server.h"
#include "database/till_settings.h"
#include "support/shop.h"

namespace {

using database::Connection;
using database::Error;
using database::Sql;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

// Every table's columns with their types, and its rows in their order, as text.
std::map<std::string, std::string> content_of(Connection& connection) {
    std::map<std::string, std::string> content;
    for (const std::string& table : connection.tables()) {
        std::ostringstream text;
        const auto shape = connection.describe(table);
        for (std::size_t i = 0; i < shape.columns.size(); ++i)
            text << shape.columns[i] << ' ' << shape.types[i] << '|';
        for (const auto& row : connection.query(Sql::from_administrator("select * from [" + table + "]"))) {
            text << '\n';
            for (const auto& cell : row.cells())
                text << (database::is_null(cell) ? "null" : database::text_of(cell)) << '|';
        }
        content[table] = text.str();
    }
    return content;
}

std::vector<std::string> changed_tables(const std::map<std::string, std::string>& before,
                                        const std::map<std::string, std::string>& after) {
    std::vector<std::string> changed;
    for (const auto& [table, text] : before)
        if (after.at(table) != text) changed.push_back(table);
    return changed;
}

// The texts of a query's single column.
std::vector<std::string> column(test::Shop& shop, const std::string& query) {
    std::vector<std::string> cells;
    for (const auto& row : shop.connection().query(Sql::from_administrator(query)))
        cells.push_back(database::is_null(row.cells()[0]) ? "null" : database::text_of(row.cells()[0]));
    return cells;
}

TEST(Upgrade, AnUpToDateShopStaysAsItIs) {
    test::Shop shop;
    shop.sql("insert into items (code,name,num1,num2) values (101,'لبن',1,12)");
    shop.sql("insert into barcode (bar,code,scode) values ('622',101,1)");
    shop.sql("insert into shift (stcode,cash_no,scode,s_date) values (1,1,1,'2026/11/21 08:00:00')");
    shop.sql("insert into vencuspay (chkno,pay_id) values ('1',7)");
    shop.sql("insert into tmp_tran (tnum,icode,edate) values (1,101,'3000/01/01')");
    shop.sql("insert into sales (pnum,note,[date]) values (1,'ملاحظة','2026/11/21')");
    const auto before = content_of(shop.connection());
    database::run_upgrade_list(shop.connection());
    EXPECT_THAT(changed_tables(before, content_of(shop.connection())), ElementsAre());
}

TEST(Upgrade, EveryRunDoesItsStandingWork) {
    test::Shop shop;
    for (const char* statement :
         {"insert into tmp_acc (am1) values (5)", "insert into tmp_item (icode) values (5)",
          "insert into items (code,name,num1) values (101,'لبن',6)",
          "insert into items (code,name) values (102,'جبن')", "insert into items (code,name) values (103,'')",
          "insert into items (code) values (104)", "insert into barcode (bar,code) values ('kept',101)",
          "insert into barcode (bar,code) values ('gone',999)",
          "insert into barcode (bar,code) values ('empty',103)",
          "insert into barcode (bar,code) values ('null',104)",
          "insert into barcode (bar) values ('nothing')",
          "insert into inv_d (pnum,edate) values (1,'2027/01/31')",
          "insert into purdata (pnum,edate) values (1,'2027/01/31')",
          "insert into f_q (icode,edate) values (1,'2027/01/31')", "insert into modify (icode) values (1)",
          "insert into tmp_tran (tnum,edate) values (1,'2027/01/31')",
          "insert into stk (icode,stcode,quan,edate) values (101,1,3,'2027/01/31')",
          "insert into shift (scode,s_date) values (1,'2026/11/20 08:00:00')",
          "insert into vencuspay (chkno) values ('A12')"})
        shop.sql(statement);
    const auto before = content_of(shop.connection());
    database::run_upgrade_list(shop.connection());
    EXPECT_THAT(changed_tables(before, content_of(shop.connection())),
                UnorderedElementsAre("tmp_acc", "tmp_item", "items", "barcode", "inv_d", "purdata", "f_q",
                                     "modify", "tmp_tran", "shift", "vencuspay"));
    EXPECT_EQ(shop.number("select count(*) from tmp_acc") + shop.number("select count(*) from tmp_item"), 0);
    EXPECT_THAT(column(shop, "select num1 from items order by code"), ElementsAre("1", "1", "1", "1"));
    EXPECT_THAT(column(shop, "select bar from barcode"), ElementsAre("kept"));
    for (const char* table : {"inv_d", "purdata", "f_q", "modify", "tmp_tran"})
        EXPECT_THAT(column(shop, std::string("select edate from ") + table),
                    ElementsAre("3000/01/01 00:00:00"))
            << table;
    EXPECT_THAT(column(shop, "select edate from stk"), ElementsAre("2027/01/31 00:00:00"));
}

TEST(Upgrade, ShiftsWithoutADrawerAreCopiedToEachOnEveryRun) {
    test::Shop shop;  // with three drawers
    shop.sql(
        "insert into shift (stcode,scode,s_date,e_date,man_,dep,cur_bal) values "
        "(9,4,'2026/11/20 08:00:00','2026/11/20 16:00:00',1,50,99)");
    shop.sql("insert into shift (scode,s_date) values (5,'2026/11/21 08:00:00')");
    const std::string copies =
        "select convert(varchar,stcode) + ',' + convert(varchar,cash_no) + ',' + convert(varchar,scode) + "
        "',' + "
        "isnull(convert(varchar,dep),'-') + ',' + isnull(convert(varchar,cur_bal),'-') from shift "
        "where cash_no is not null order by stcode,cash_no,scode";
    database::run_upgrade_list(shop.connection());
    EXPECT_THAT(column(shop, copies),
                ElementsAre("1,1,4,50,-", "1,1,5,-,-", "1,2,4,50,-", "1,2,5,-,-", "2,1,4,50,-", "2,1,5,-,-"));
    EXPECT_EQ(shop.cell("select e_date from shift where cash_no = 2 and scode = 4"), "2026/11/20 16:00:00");
    EXPECT_EQ(shop.number("select count(*) from shift where man_ = 1 and cash_no is not null"), 3);
    database::run_upgrade_list(shop.connection());
    EXPECT_EQ(shop.number("select count(*) from shift where cash_no is not null"), 12);
    EXPECT_EQ(shop.number("select count(*) from shift where cash_no is null"), 2);
}

TEST(Upgrade, VouchersAreNumberedAfterTheHighest) {
    test::Shop shop;
    shop.sql("insert into vencuspay (chkno) values ('a')");
    shop.sql("insert into vencuspay (chkno) values ('b')");
    database::run_upgrade_list(shop.connection());
    EXPECT_THAT(column(shop, "select pay_id from vencuspay order by chkno"), ElementsAre("1", "2"));
    shop.sql("update vencuspay set pay_id = 40 where chkno = 'b'");
    for (int i = 0; i < 3; ++i)
        shop.sql("insert into vencuspay (chkno,note) values ('same','in everything')");
    database::run_upgrade_list(shop.connection());
    EXPECT_THAT(column(shop, "select pay_id from vencuspay order by pay_id"),
                ElementsAre("1", "40", "41", "42", "43"));
}

TEST(Upgrade, SettingsOfTheTillsAreKeptAndMayBeMissing) {
    test::Shop shop;
    Connection& connection = shop.connection();
    EXPECT_EQ(database::net_from(connection), std::nullopt);
    database::set_till_setting(connection, "net_from", "2026/11/22");
    database::set_till_setting(connection, "net_from", "2026/12/01");
    database::set_till_setting(connection, "o'name", "o'value");
    database::run_upgrade_list(connection);
    EXPECT_EQ(database::net_from(connection), (common::Date{2026, 12, 1}));
    EXPECT_EQ(database::till_setting(connection, "o'name"), "o'value");
    EXPECT_EQ(shop.number("select count(*) from till_setting"), 2);

    shop.sql("drop table till_setting");
    EXPECT_EQ(database::till_setting(connection, "net_from"), std::nullopt);
    EXPECT_THROW(database::set_till_setting(connection, "net_from", "2026/12/01"), Error);
    database::run_upgrade_list(connection);
    EXPECT_EQ(shop.number("select count(*) from till_setting"), 0);
}

TEST(Upgrade, MissingTablesStopNothing) {
    test::Shop shop;
    for (const char* table : {"cash", "stocks", "vencuspay", "basic", "barcode", "print", "news"})
        shop.sql(std::string("drop table [") + table + "]");
    shop.sql("insert into tmp_item (icode) values (5)");
    shop.sql("insert into items (code,name,num1) values (101,'x',6)");
    EXPECT_NO_THROW(database::run_upgrade_list(shop.connection()));
    EXPECT_EQ(shop.cell("select num1 from items"), "1");
    EXPECT_NO_THROW(shop.sql("select ncode from news"));
}

TEST(Upgrade, SendsItsEntriesInOrderAndOnlyALossEndsIt) {
    const auto never = test::tds::error(2714, 16, "There is already an object of that name.");
    const auto driver = [](const test::TdsServer& server) {
        return database::OdbcSettings{
            database::freetds_connection_string("User ID=sa;Initial Catalog=shop", "{FreeTDS}", "127.0.0.1",
                                                server.port()),
            "", 5, 5};
    };
    std::vector<std::string> expected;
    for (const auto& entry : database::upgrade_entries()) {
        const char* first = entry.number == 177   ? " select * from stocks"
                            : entry.number == 224 ? "select * from cash"
                                                  : "select max(pay_id) as xl from vencuspay ";
        expected.push_back(entry.procedure == nullptr ? std::string(entry.statement) : first);
    }
    ASSERT_EQ(expected.size(), 300U);

    test::TdsServer failing([&](const std::string&) { return never; });
    database::OdbcConnection refused(driver(failing));
    EXPECT_NO_THROW(database::run_upgrade_list(refused));
    std::vector<std::string> sent = failing.requests();
    ASSERT_GE(sent.size(), expected.size());
    sent.resize(expected.size());  // the tills' own tables follow
    EXPECT_EQ(sent, expected);

    test::TdsServer dying([&](const std::string& request) {
        return request == expected[57] ? test::TdsServer::hang_up : never;
    });
    database::OdbcConnection lost(driver(dying));
    EXPECT_THROW(database::run_upgrade_list(lost), Error);
    EXPECT_EQ(dying.requests().size(), 58U);
}

}  // namespace
