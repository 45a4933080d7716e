// The program starts on shops that tallvex-admin created, and users sign in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/shop.h"
#include "admin/workbench.h"
#include "database/embedded/open.h"
#include "shop/users.h"
#include "signin/sign_in.h"
#include "startup/connection_file.h"
#include "startup/start_up.h"

namespace {

using signin::SignInOutcome;
using test::Workbench;

// The result of starting the program in a folder and signing a user in.
struct Day {
    bool reached = false;
    SignInOutcome outcome = SignInOutcome::end_program;
    signin::Session session;
    test::RememberedServices services;
};

void start(const std::filesystem::path& folder, const std::string& cash_point, std::int64_t user,
           const std::string& password, Day& day) {
    startup::Environment environment;
    environment.command_line = cash_point;
    environment.program_folder = folder;
    environment.working_folder = folder;
    environment.computer_name = "TILL";
    environment.open = startup::open_connection;
    environment.get_ip = [](std::string_view) { return std::string(startup::no_address); };
    startup::StartUp start_up(environment, day.services.all());
    day.reached = start_up.run([&](database::Connection& connection, signin::Session& session) {
        day.outcome = signin::SignIn(connection, session, day.services.all()).confirm(user, password);
        day.session = session;
    });
}

TEST(Opening, ABareShopSignsItsAdministratorIn) {
    Workbench bench;
    bench.make_shop();
    Day day;
    start(bench.folder(), "1", 1, "1", day);
    ASSERT_TRUE(day.reached) << testing::PrintToString(day.services.prompts.messages);
    EXPECT_EQ(day.outcome, SignInOutcome::signed_in) << day.services.prompts.last();
    EXPECT_EQ(day.session.version, admin::shop_version());
    EXPECT_EQ(day.session.settings.aname, "المحل");
    EXPECT_EQ(day.session.store_code, 1);
    EXPECT_TRUE(day.session.has_permission(400));
    EXPECT_THAT(day.services.prompts.messages, testing::IsEmpty());
    Day other;
    start(bench.folder(), "2", 1, "1", other);  // no such drawer
    EXPECT_EQ(other.outcome, SignInOutcome::end_program);
}

TEST(Opening, TheDemoShopSignsEveryUserInAtBothDrawers) {
    Workbench bench;
    bench.make_shop(true);
    const struct {
        std::int64_t code;
        const char* password;
        std::string_view list;
    } users[] = {{1, "111", "reprint+item_info"},
                 {2, "222",
                  "named-open_drawer-edit_goods-receive_goods-count_stock-edit_lists-edit_users-see_reports-"
                  "see_cost"},
                 {3, "333", "all"}};
    for (const auto& user : users) {
        for (const char* cash_point : {"1", "2"}) {
            Day day;
            start(bench.folder(), cash_point, user.code, user.password, day);
            EXPECT_EQ(day.outcome, SignInOutcome::signed_in)
                << user.code << ": " << day.services.prompts.last();
            EXPECT_EQ(day.session.permissions, shop::permission_string(user.list)) << user.code;
            EXPECT_NE(day.session.drawer_name, "") << cash_point;
        }
        Day refused;
        start(bench.folder(), "1", user.code, "wrong", refused);
        EXPECT_EQ(refused.outcome, SignInOutcome::stay_on_password) << user.code;
    }
    const auto run = bench.run({"check"});
    EXPECT_EQ(run.code, 0) << run.out;
}

TEST(Opening, ACopiedShopOpensToo) {
    Workbench bench;
    bench.make_shop(true);
    ASSERT_EQ(bench.run({"copy-shop", "other"}).code, 0);
    Day day;
    start(bench.file("other"), "1", 3, "333", day);
    EXPECT_EQ(day.outcome, SignInOutcome::signed_in) << day.services.prompts.last();
}

}  // namespace
