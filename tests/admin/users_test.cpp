#include "shop/users.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "admin/workbench.h"
#include "signin/permissions.h"

namespace {

using shop::permission_string;
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

    // A badge is read like a password, or drawn.
    EXPECT_EQ(bench.run({"users", "badge", "1"}, "12 34\n").code, 1);
    EXPECT_EQ(bench.run({"users", "badge", "1"}, "12345678\n").code, 0);
    EXPECT_EQ(bench.cell("select count(*) from till_badge where user_code = 1"), "1");
    EXPECT_EQ(bench.run({"users", "badge", "1", "--new"}).out.find('\n'), 16U);
    EXPECT_EQ(bench.run({"users", "badge", "1", "--take"}).code, 0);
    EXPECT_EQ(bench.cell("select count(*) from till_badge"), "0");
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
        {{"users", "add", "a\x1b[2Jb"}, "control characters or marks of direction: a[2Jb\n"},
        {{"users", "add", "a\u202Eb"}, "control characters or marks of direction: ab\n"},
        {{"new-shop", "x", "--name", "a\u2067b"}, "control characters or marks of direction: ab\n"},
        {{"new-shop", "x", "--user", "a\nb"}, "control characters or marks of direction: ab\n"},
        {{"users", "add", "42"}, "taken for a code"},
        {{"users", "add", std::string(101, 'n')}, "the name is too long"},
        {{"users", "add", "n"}, "the password is too long", std::string(101, 'p')},
        {{"users", "add", "n"}, "no password of ", ""},
        {{"users", "password", "1"}, "no password of ", ""},
        {{"users", "password", "1"}, " is empty; give --no-password", "\n"},
        {{"users", "add", "n", "--set", "sell"}, "neither a guarded action"},
        {{"users", "badge", "1"}, "no badge of ", ""},
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

std::string allowed(std::string_view permissions) {
    std::string names;
    for (const std::string_view name : shop::allowed_actions(permissions)) {
        names += (names.empty() ? "" : " ") + std::string(name);
    }
    return names;
}

TEST(PermissionString, ReadsLists) {
    const std::string before = permission_string("reprint");
    const struct {
        std::string_view list;
        std::string_view allowed;
    } cases[] = {
        {"none", ""},
        {"", ""},
        {"reprint+item_info", "reprint item_info"},
        {" reprint + item_info ", "reprint item_info"},
        {"221", "reprint"},
        {"+edit_price", "reprint edit_price"},
        {"-reprint", ""},
        {"+edit_price-reprint", "edit_price"},
        {"all-reprint+none+item_info", "item_info"},
    };
    for (const auto& c : cases) {
        const std::string permissions = permission_string(c.list, before);
        EXPECT_EQ(permissions.size(), shop::permission_places) << c.list;
        EXPECT_EQ(allowed(permissions), c.allowed) << c.list;
    }
    EXPECT_EQ(permission_string("all"), std::string(400, '1'));
    EXPECT_EQ(std::ranges::count(permission_string("named"), '1'),
              static_cast<std::ptrdiff_t>(signin::guarded_actions().size()));
}

TEST(PermissionString, AcceptsShortAndOverlongStrings) {
    EXPECT_EQ(permission_string("+reprint", "11").substr(0, 3), "110");
    EXPECT_EQ(permission_string("+reprint", std::string(500, '1')).size(), 400U);
    EXPECT_EQ(allowed("111"), "");
}

TEST(PermissionString, RefusesUnknownWords) {
    for (const std::string_view list : {"sell", "reprint+", "0", "401", "reprint,item_info", "+"}) {
        EXPECT_THROW(permission_string(list), shop::UnknownAction) << list;
    }
}

}  // namespace
