#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "admin/shop.h"
#include "admin/workbench.h"
#include "support/tds_bytes.h"

namespace {

namespace fs = std::filesystem;
using test::Workbench;
using testing::HasSubstr;

std::vector<std::string> names_in(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

TEST(NewShop, MakesAShopThatSignInAccepts) {
    Workbench bench;
    const auto run = bench.run({"new-shop", "shop", "--name", "بقالة 'النور'", "--tel", "0123", "--printer",
                                "com1", "--drawer", "com3", "--user", "سميرة", "--ask-password"},
                               "s3cret\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, testing::AllOf(HasSubstr("سميرة"), testing::Not(HasSubstr("s3cret"))));
    const fs::path folder = bench.file("shop");
    EXPECT_THAT(names_in(folder), testing::IsSupersetOf({"datacon24.stk", "merlo-ver.txt", "shop.db"}));
    for (const std::string& name : names_in(folder))
        EXPECT_EQ(name.find(".making"), std::string::npos) << name;
    const auto cell = [&](const std::string& query) {
        const auto answer = Workbench::run_in(folder, {"sql", query, "--csv"});
        EXPECT_EQ(answer.code, 0) << answer.err;
        const auto start = answer.out.find("\r\n") + 2;
        return answer.out.substr(start, answer.out.rfind("\r\n") - start);
    };
    EXPECT_EQ(cell("select aname from basic"), "بقالة 'النور'");
    EXPECT_EQ(cell("select [print] from basic"), "com1");
    EXPECT_EQ(cell("select cash from basic"), "com3");
    EXPECT_EQ(cell("select rtrim(cr_v) from basic"), admin::shop_version());
    EXPECT_EQ(cell("select pass from users where [name] = 'سميرة'"), "s3cret");
    EXPECT_EQ(cell("select len(perm) from users"), "400");
    EXPECT_EQ(cell("select count(*) from cash c inner join basic b on c.stcode = b.st_d"), "1");
    EXPECT_EQ(cell("select count(*) from worker"), "1");
    EXPECT_EQ(cell("select count(p_1) from items"), "0");  // the column of store 1 is there
}

TEST(NewShop, WithoutAPasswordItMakesOne) {
    Workbench bench;
    const auto first = bench.run({"new-shop", "a"});
    const auto second = bench.run({"new-shop", "b"});
    ASSERT_EQ(first.code, 0) << first.err;
    EXPECT_THAT(first.out, testing::ContainsRegex("password: [0-9]{6}\n"));
    EXPECT_NE(first.out.substr(first.out.rfind(' ')), second.out.substr(second.out.rfind(' ')));
}

TEST(NewShop, RefusesAFolderWithAShop) {
    Workbench bench;
    bench.make_shop();
    bench.sql("update basic set aname = 'كما كان'");
    EXPECT_EQ(bench.run({"new-shop", "."}).code, 1);
    fs::remove(bench.file("datacon24.stk"));
    const auto run = bench.run({"new-shop", ".", "--demo"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("there is a shop already"));
    EXPECT_FALSE(fs::exists(bench.file("datacon24.stk")));
    ASSERT_EQ(bench.run({"connect", "--server", "embedded", "--database", "shop.db"}).code, 0);
    EXPECT_EQ(bench.cell("select aname from basic"), "كما كان");
}

TEST(NewShop, AFailureLeavesNothingBehind) {
    Workbench bench;
    bench.write("file", "not a folder");
    EXPECT_EQ(bench.run({"new-shop", "file"}).code, 1);
    EXPECT_EQ(bench.run({"new-shop", "file/below"}).code, 1);
    EXPECT_EQ(bench.run({"new-shop", "shop", "--database", "no/such/folder.db"}).code, 1);
    EXPECT_FALSE(fs::exists(bench.file("shop")));
    // An address of this machine where nobody listens.
    const auto run = bench.run({"new-shop", "shop", "--server", "NOWHERE", "--address",
                                "127.0.0.1," + std::to_string(test::tds::unused_port()), "--database", "x"},
                               "p\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_FALSE(fs::exists(bench.file("shop")));
    EXPECT_EQ(bench.run({"new-shop", "shop"}).code, 0);
}

TEST(NewShop, AnInterruptedAttemptIsCleanedUp) {
    Workbench bench;
    bench.write("shop.db.making", "half a shop");
    // Killed after its files were written, before the database got its name.
    bench.write("datacon24.stk", std::string(200, 'x'));
    ASSERT_EQ(bench.run({"new-shop", "."}).code, 0);
    EXPECT_FALSE(fs::exists(bench.file("shop.db.making")));
    EXPECT_EQ(bench.cell("select count(*) from users"), "1");
    EXPECT_EQ(bench.run({"new-shop", "."}).code, 1);
}

}  // namespace
