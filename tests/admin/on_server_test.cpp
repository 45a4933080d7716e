// tallvex-admin on a server's shop, over the real driver.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"
#include "database/embedded/open.h"
#include "support/tds_bridge.h"

namespace {

using Outcome = test::Run;
using test::rows_of;
using test::Workbench;
using testing::HasSubstr;

class OnServer : public testing::Test {
  protected:
    OnServer() : bridge(files.path()) {}
    // The options that name the server.
    std::vector<std::string> onto(std::vector<std::string> command) const {
        for (const std::string& word : {std::string("--server"), "127.0.0.1," + std::to_string(bridge.port()),
                                        std::string("--database"), bridge.account().database,
                                        std::string("--encryption"), std::string("off")})
            command.push_back(word);
        return command;
    }
    std::string password() const { return bridge.account().password + "\n"; }

    test::TemporaryFolder files;
    test::TdsBridge bridge;
    Workbench bench;
};

TEST_F(OnServer, AShopMovesToTheServerAndBack) {
    bench.make_shop(true);
    Outcome run = bench.run(onto({"copy-shop", "onserver"}), password());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("every count agrees"));
    EXPECT_LT(bridge.received().size(), 1000U) << "3,900 rows";
    // The password is kept for the till.
    const auto onserver = bench.file("onserver");
    EXPECT_TRUE(std::filesystem::exists(onserver / "sa.pwd"));
    run = Workbench::run_in(onserver, {"check"});
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_THAT(run.out, HasSubstr("ok     connection: 127.0.0.1,"));

    run = Workbench::run_in(onserver, {"copy-shop", "back"});
    ASSERT_EQ(run.code, 0) << run.err;
    const auto here = bench.open();
    const auto back = admin::open_place(onserver / "back", admin::read_place(onserver / "back"));
    for (const std::string& table : here->tables())
        EXPECT_TRUE(rows_of(*here, table) == rows_of(*back, table)) << table;

    // A server name that is too long and a database that has a shop are refused.
    run =
        bench.run({"copy-shop", "long", "--server", std::string(60, 's'), "--database", "shop"}, password());
    EXPECT_EQ(run.code, 1);
    EXPECT_FALSE(std::filesystem::exists(bench.file("long")));
    run = bench.run(onto({"copy-shop", "again"}), password());
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("holds a shop already"));
    EXPECT_FALSE(std::filesystem::exists(bench.file("again") / "sa.pwd"));
}

TEST_F(OnServer, AShopIsCreatedAndUsed) {
    Outcome run = bench.run(onto({"new-shop", "shop", "--name", "بقالة النور"}), password());
    ASSERT_EQ(run.code, 0) << run.err;
    const auto shop = bench.file("shop");
    bench.write("shop/items.csv", "code,name,maker,price12,barcode,stock\n1,لبن 'أ',ندوان,5.25,622,10\n");
    run = Workbench::run_in(shop, {"import-items", "items.csv"});
    EXPECT_EQ(run.code, 0) << run.err;
    run = Workbench::run_in(shop, {"users", "add", "ليلى", "--set", "reprint"}, "سر\n");
    EXPECT_EQ(run.code, 0) << run.err;
    run = Workbench::run_in(shop, {"sql", "select pass from users where [name] = N'ليلى'", "--csv"});
    EXPECT_EQ(run.out, "pass\r\nسر\r\n");
    run = Workbench::run_in(shop, {"check"});
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    // Many lines go in few statements, and one that the server refuses is named all the same.
    std::string csv = "code,name,maker,price12,barcode,stock\n";
    for (int i = 100; i < 1100; ++i)
        csv +=
            std::to_string(i) + ",صنف " + std::to_string(i) + ",ندوان,2.5,C-" + std::to_string(i) + ",10\n";
    bench.write("shop/items.csv", csv);
    const std::size_t before = bridge.received().size();
    run = Workbench::run_in(shop, {"import-items", "items.csv"});
    EXPECT_EQ(run.out, "1000 items, 1000 barcodes and 1000 rows of stock imported\n") << run.err;
    EXPECT_LT(bridge.received().size() - before, 50U);
    Workbench::run_in(shop, {"sql", "create unique index one_name on items ([name])"});
    bench.write("shop/items.csv", "code,name,price12\n2,ماء,5\n3,لبن 'أ',5\n4,عسل,5\n");
    run = Workbench::run_in(shop, {"import-items", "items.csv"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("items.csv:3: the database says: "));
    // A file with a bad line imports nothing.
    bench.write("shop/items.csv", "code,name,price12\n2,أ,5\n2,ب,5\n");
    EXPECT_EQ(Workbench::run_in(shop, {"import-items", "items.csv"}).code, 1);
    EXPECT_EQ(Workbench::run_in(shop, {"sql", "select count(*) as n from items", "--csv"}).out,
              "n\r\n1001\r\n");
}

// An open-source server that knows less of the language.
TEST_F(OnServer, AServerThatKnowsLessHasTheWholeShop) {
    bridge.know_less();
    const auto run = bench.run(onto({"new-shop", "shop", "--demo"}), password());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(Workbench::run_in(bench.file("shop"), {"check"}).out, HasSubstr("ok     schema: "));
    std::vector<std::string> connect = onto({"connect", "--keep-password"});
    connect[5] = "nowhere";
    ASSERT_EQ(bench.run(connect, password()).code, 0);
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("does not exist; create the database on the server, or"));
}

TEST_F(OnServer, AShopThatTheServerDidNotCreateWholeIsNone) {
    database::open_embedded(bridge.file())->execute("create table country (a int null)");
    const auto run = bench.run(onto({"new-shop", "shop"}), password());
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, testing::AllOf(HasSubstr("a login that may create and alter tables"),
                                        HasSubstr("\n  country.ccode\n  country.cname\n")));
    EXPECT_FALSE(std::filesystem::exists(bench.file("shop")));
}

TEST_F(OnServer, ThePasswordOfALogInIsNotSentInClear) {
    // The test server answers "encryption not supported".
    std::vector<std::string> connect = onto({"connect", "--keep-password"});
    for (const char* word : {"login", "require"}) {
        connect.back() = word;
        ASSERT_EQ(bench.run(connect, password()).code, 0);
        EXPECT_THAT(bench.run({"connect", "--show"}).out,
                    HasSubstr(std::string("encryption: ") + word + ": "));
        const Outcome run = bench.run({"check"});
        EXPECT_EQ(run.code, 1);
        EXPECT_THAT(run.out,
                    testing::ContainsRegex("WRONG  connection: .*so the password was not sent; let the"));
        EXPECT_EQ(
            bench
                .run({"new-shop", "shop", "--server", connect[3], "--database", "shop", "--encryption", word},
                     password())
                .code,
            1);
    }
    EXPECT_EQ(bridge.logins(), 0);
    // The option alone changes nothing else in the connection file.
    EXPECT_THAT(
        bench.run({"connect", "--encryption", "login"}).out,
        HasSubstr("server:   " + connect[3] + "\ndatabase: shop\naddress:  Not Found\nencryption: login: "));
    EXPECT_EQ(bench.run({"connect", "--server", "PC1", "--database", "shop", "--encryption", "on"}).code, 2);
    ASSERT_EQ(bench.run(onto({"new-shop", "shop"}), password()).code, 0);
    EXPECT_THAT(Workbench::run_in(bench.file("shop"), {"check"}).out, HasSubstr("note   encryption: off: "));
}

TEST_F(OnServer, AWrongPasswordIsReportedAndLeavesNothing) {
    const Outcome run = bench.run(onto({"new-shop", "shop"}), "wrong\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("ogin"));
    EXPECT_FALSE(std::filesystem::exists(bench.file("shop")));
}

}  // namespace
