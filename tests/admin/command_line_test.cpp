#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"

namespace {

using test::Workbench;
using testing::HasSubstr;

TEST(CommandLine, EveryCommandHelps) {
    Workbench bench;
    const std::vector<std::vector<std::string>> commands = {{},
                                                            {"new-shop"},
                                                            {"connect"},
                                                            {"sql"},
                                                            {"users"},
                                                            {"users", "add"},
                                                            {"users", "permissions"},
                                                            {"check"},
                                                            {"import-items"},
                                                            {"backup"},
                                                            {"restore"},
                                                            {"copy-shop"},
                                                            {"show-receipt"}};
    for (auto command : commands) {
        command.emplace_back("--help");
        const auto run = bench.run(command);
        EXPECT_EQ(run.code, 0) << command.front();
        EXPECT_THAT(run.out, HasSubstr("Usage:")) << command.front();
        EXPECT_EQ(run.err, "") << command.front();
    }
}

TEST(CommandLine, AWrongLineEndsWithTwo) {
    Workbench bench;
    const std::vector<std::vector<std::string>> lines = {
        {},
        {"sell"},
        {"new-shop"},
        {"new-shop", "a", "b"},
        {"new-shop", "a", "--demo", "--ask-password"},
        {"new-shop", "a", "--password", "in sight of every user of the machine"},
        {"new-shop", "a", "--user", "x", "--demo"},
        {"new-shop", "a", "--name", std::string(101, 'n')},
        {"sql"},
        {"sql", "select 1", "--xml"},
        {"connect"},
        {"connect", "--server", "PC1"},
        {"connect", "--show", "--server", "PC1"},
        {"users"},
        {"users", "add"},
        {"users", "remove", "1"},
        {"check", "--days", "many"},
        {"check", "--days", "-1"},
        {"import-items"},
        {"restore"},
        {"copy-shop"},
        {"show-receipt"},
    };
    for (const auto& line : lines) {
        const auto run = bench.run(line);
        EXPECT_EQ(run.code, 2) << testing::PrintToString(line);
        EXPECT_NE(run.err, "") << testing::PrintToString(line);
    }
    EXPECT_TRUE(std::filesystem::is_empty(bench.folder()));
    EXPECT_THAT(bench.run({"sell", "1"}).err, HasSubstr("sell"));
}

TEST(CommandLine, WithoutAShopEveryCommandSaysSo) {
    const std::vector<std::vector<std::string>> lines = {
        {"sql", "select 1"}, {"connect", "--show"},         {"users", "list"},
        {"check"},           {"import-items", "items.csv"}, {"backup"},
        {"restore", "x"},    {"copy-shop", "other"}};
    for (const auto& line : lines) {
        Workbench bench;
        bench.write("items.csv", "code,name,price12\n");
        const auto run = bench.run(line);
        EXPECT_EQ(run.code, 1) << line.front();
        EXPECT_THAT(run.err, HasSubstr("connection file")) << line.front();
    }
}

TEST(CommandLine, ABadShopFileIsNamed) {
    struct Break {
        const char* what;
        void (*apply)(Workbench& bench);
    };
    const Break breaks[] = {
        {"missing", [](Workbench& b) { std::filesystem::remove(b.file("shop.db")); }},
        {"garbage", [](Workbench& b) { b.write("shop.db", std::string(5000, 'x')); }},
        {"folder",
         [](Workbench& b) {
             std::filesystem::remove(b.file("shop.db"));
             std::filesystem::create_directory(b.file("shop.db"));
         }},
        {"truncated connection file", [](Workbench& b) { b.write("datacon24.stk", "abc"); }},
    };
    for (const Break& how : breaks) {
        Workbench bench;
        bench.make_shop();
        how.apply(bench);
        const auto run = bench.run({"sql", "select * from basic"});
        EXPECT_EQ(run.code, 1) << how.what;
        EXPECT_THAT(run.err, testing::StartsWith("tallvex-admin: ")) << how.what;
        EXPECT_EQ(run.out, "") << how.what;
    }
}

TEST(Connect, WritesTheFileAndReadsItBack) {
    Workbench bench;
    const auto run = bench.run(
        {"connect", "--server", "PC1\\SQLEXPRESS", "--database", "بقالة", "--address", "192.168.1.5"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              "server:   PC1\\SQLEXPRESS\ndatabase: بقالة\naddress:  192.168.1.5\n"
              "encryption: login: the password of sa is encrypted, else it is not sent; what follows is "
              "encrypted if the server says so\n");
    EXPECT_EQ(bench.run({"connect", "--show"}).out, run.out);
    EXPECT_EQ(std::filesystem::file_size(bench.file("datacon24.stk")), 200U);
    // A text that does not fit its field is refused and the file does not change.
    for (const auto& [option, value] :
         std::vector<std::pair<std::string, std::string>>{{"--server", std::string(60, 's')},
                                                          {"--database", std::string(60, 'd')},
                                                          {"--server", "大"},
                                                          {"--database", "shop;Data Source=other"},
                                                          {"--server", "PC1;"}}) {
        std::vector<std::string> line = {"connect", "--server", "A", "--database", "B"};
        line[option == "--server" ? 2 : 4] = value;
        EXPECT_EQ(bench.run(line).code, 1) << value;
    }
    EXPECT_EQ(bench.run({"connect", "--show"}).out, run.out);
}

TEST(Connect, MakesAFolderThatATillCanStartIn) {
    Workbench bench;
    const auto run =
        bench.run({"connect", "--server", "127.0.0.1", "--database", "shop", "--keep-password"}, "p;w=d\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, testing::Not(HasSubstr("p;w=d")));
    for (const char* name : {"datacon24.stk", "merlo-ver.txt", "Data.dat"})
        EXPECT_TRUE(std::filesystem::exists(bench.file(name))) << name;
    EXPECT_EQ(std::filesystem::status(bench.file("sa.pwd")).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const auto refused = bench.run({"connect", "--keep-password"}, "");
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("no password of "));
}

// In any other folder the password would go beside the program, for every user of it.
TEST(Connect, KeepsAPasswordOnlyForAShop) {
    Workbench bench;
    EXPECT_EQ(bench.run({"connect", "--keep-password"}, "p\n").code, 1);
    EXPECT_TRUE(std::filesystem::is_empty(bench.folder()));
}

}  // namespace
