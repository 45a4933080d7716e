#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"

namespace {

using test::Workbench;
using testing::HasSubstr;

class Users : public testing::Test {
  protected:
    void SetUp() override { bench.make_shop(); }
    Workbench bench;
};

TEST_F(Users, AreAddedListedAndAllowed) {
    auto run = bench.run({"users", "add", "ليلى 'أ'", "--set", "reprint,item_info"}, " pa'ss \r\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "user 2 (ليلى 'أ') may: reprint, item_info\n");
    EXPECT_EQ(bench.cell("select pass from users where code = 2"), "pa'ss");
    EXPECT_EQ(bench.cell("select len(perm) from users where code = 2"), "400");
    EXPECT_EQ(
        bench.run({"users", "permissions", "ليلى 'أ'", "--allow", "edit_price", "--deny", "reprint"}).out,
        "user 2 (ليلى 'أ') may: item_info, edit_price\n");
    EXPECT_EQ(bench.run({"users", "permissions", "2"}).out, "user 2 (ليلى 'أ') may: item_info, edit_price\n");
    EXPECT_EQ(bench.run({"users", "permissions", "2", "--set", "none"}).out,
              "user 2 (ليلى 'أ') may: nothing\n");
    run = bench.run({"users", "list"});
    EXPECT_EQ(run.out, "1  المدير\n    may: everything\n2  ليلى 'أ'\n    may: nothing\n");
    EXPECT_THAT(bench.run({"users", "actions"}).out, testing::AllOf(HasSubstr("reprint"), HasSubstr("221")));
}

TEST_F(Users, PasswordsComeFromTheInput) {
    ASSERT_EQ(bench.run({"users", "password", "1"}, "new one\nrest\n").code, 0);
    EXPECT_EQ(bench.cell("select pass from users where code = 1"), "new one");
    ASSERT_EQ(bench.run({"users", "password", "1", "--no-password"}).code, 0);
    EXPECT_EQ(bench.cell("select pass from users where code = 1"), "");
}

TEST_F(Users, RefusedLinesChangeNothing) {
    const std::string before = bench.run({"sql", "select * from users", "--csv"}).out;
    const struct {
        std::vector<std::string> line;
        std::string reason;
        std::string input = "x\n";
    } cases[] = {
        {{"users", "add", "المدير"}, "already"},
        {{"users", "add", "  "}, "needs a name"},
        {{"users", "add", "42"}, "taken for a code"},
        {{"users", "add", std::string(101, 'n')}, "at most 100"},
        {{"users", "add", "n"}, "at most 100", std::string(101, 'p')},
        {{"users", "add", "n"}, "no password of ", ""},
        {{"users", "password", "1"}, "no password of ", ""},
        {{"users", "password", "1"}, "the password is empty", "\n"},
        {{"users", "add", "n", "--set", "sell"}, "neither a guarded action"},
        {{"users", "password", "9"}, "no user"},
        {{"users", "password", "nobody"}, "no user"},
        {{"users", "permissions", "1", "--allow", "reprint,,item_info"}, "neither a guarded action"},
        {{"users", "permissions", "1' or '1' = '1", "--deny", "all"}, "no user"},
    };
    for (const auto& c : cases) {
        const auto run = bench.run(c.line, c.input);
        EXPECT_EQ(run.code, 1) << testing::PrintToString(c.line);
        EXPECT_THAT(run.err, HasSubstr(c.reason)) << testing::PrintToString(c.line);
    }
    EXPECT_EQ(bench.run({"sql", "select * from users", "--csv"}).out, before);
}

}  // namespace
