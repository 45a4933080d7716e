// On a real server, when the environment names one: what only it can answer.
#include <gtest/gtest.h>

#include "database/embedded/open.h"
#include "database/recordset.h"
#include "database/schema/schema.h"
#include "support/test_server.h"

namespace {

using database::Recordset;
using database::Value;

TEST(RealServer, MakesAShopAndBringsItUpToDate) {
    const auto server = test::test_server();
    if (!server) GTEST_SKIP() << test::no_test_server;
    const auto connection = test::open_emptied(*server);
    database::create_base_schema(*connection);
    connection->execute("insert into stocks (code,name) values (1,N'الفرع الرئيسي')");
    for (int run = 0; run < 2; ++run)
        database::run_upgrade_list(*connection);

    const auto items = connection->describe("items");
    for (const auto& [column, type] :
         {std::pair{"name", "nvarchar(100)"}, {"p_1", "nvarchar(20)"}, {"price14", "real"}}) {
        const auto at = std::find(items.columns.begin(), items.columns.end(), column);
        ASSERT_NE(at, items.columns.end()) << column;
        EXPECT_EQ(items.types[static_cast<std::size_t>(at - items.columns.begin())], type);
    }
    EXPECT_EQ(items.key, std::vector<std::string>{"code"});
}

TEST(RealServer, KeepsArabicDatesAndNumbers) {
    const auto server = test::test_server();
    if (!server) GTEST_SKIP() << test::no_test_server;
    const auto connection = test::open_emptied(*server);
    database::create_base_schema(*connection);
    Recordset stock(*connection, "select * from stk");
    stock.add();
    stock.set("icode", 101);
    stock.set("stcode", 1);
    stock.set("quan", 0.1 + 0.2);
    stock.set("edate", common::no_expiry);
    stock.update();
    Recordset items(*connection, "select * from items");
    items.add();
    items.set("code", 101);
    items.set("name", "لبن كامل الدسم 🥛");
    items.update();

    Recordset batch(*connection, "select * from stk where icode = 101 and edate = '3000/01/01'");
    ASSERT_EQ(batch.size(), 1U);
    EXPECT_EQ(batch.number("quan"), 0.1 + 0.2);
    batch.set("quan", 5.0);
    batch.update();
    EXPECT_EQ(database::number_of(connection->scalar("select sum(quan) from stk where icode = 101")), 5);
    EXPECT_EQ(database::text_of(connection->scalar("select name from items where code = 101")),
              "لبن كامل الدسم 🥛");
    EXPECT_EQ(connection->execute("update stk set quan = 1 where icode = 999"), 0);
}

}  // namespace
