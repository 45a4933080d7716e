// Supervisors: who may allow an action, and how they identify themselves.
#include "signin/supervisors.h"

#include "signin/badges.h"
#include "signin/messages.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using signin::Action;
namespace message = signin::message;

class SupervisorsTest : public testing::Test {
  protected:
    SupervisorsTest() {
        shop.sql("insert into users (code,name,pass,perm) select 2,N'كاشير','2','0'");
        // Position 231 opens the drawer.
        shop.sql("insert into users (code,name,pass,perm) select 3,N'مشرف','333','" + std::string(230, '0') +
                 "1'");
        session.user_code = 2;
        EXPECT_TRUE(signin::give_badge(shop.connection(), services.clock, 3, "12345678"));
        EXPECT_TRUE(signin::give_badge(shop.connection(), services.clock, 2, "87654321"));
    }
    std::string confirm(Action action, std::optional<std::int64_t> chosen, std::string_view typed) {
        signin::Supervisors supervisors(shop.connection(), session, services.all(), action);
        services.prompts.messages.clear();
        const auto person = supervisors.confirm(chosen, typed);
        return person ? person->name : services.prompts.last();
    }

    test::Shop shop;
    test::RememberedServices services;
    signin::Session session;
};

TEST_F(SupervisorsTest, PasswordOrBadgeOfAUserWithTheRight) {
    const struct {
        Action action;
        std::optional<std::int64_t> chosen;
        const char* typed;
        std::string_view result;
    } cases[] = {
        {Action::open_drawer, 3, "333", "مشرف"},
        {Action::open_drawer, 3, "٣٣٣", "مشرف"},
        {Action::open_drawer, 3, "332", message::wrong_password},
        {Action::open_drawer, {}, "12345678", "مشرف"},
        {Action::open_drawer, 1, " ١٢٣٤٥٦٧٨", "مشرف"},  // whoever is chosen
        {Action::open_drawer, 3, "87654321", message::badge_without_right},
        {Action::open_drawer, {}, "12345679", message::no_such_badge},
        {Action::open_drawer, 2, "2", message::wrong_password},  // the cashier himself
        {Action::reprint, 3, "333", message::wrong_password},
        {Action::reprint, 3, "12345678", message::badge_without_right},
    };
    for (const auto& c : cases) {
        services.clock.ran += std::chrono::hours(1);
        EXPECT_EQ(confirm(c.action, c.chosen, c.typed), c.result) << c.typed;
    }
}

TEST_F(SupervisorsTest, NothingIsComparedDuringThePause) {
    for (int i = 0; i < 3; ++i)
        confirm(Action::open_drawer, 3, "1");
    EXPECT_THAT(confirm(Action::open_drawer, 3, "333"), testing::StartsWith(message::wait_before));
    EXPECT_THAT(confirm(Action::open_drawer, 3, "12345678"), testing::StartsWith(message::wait_before));
}

TEST_F(SupervisorsTest, ABadgeIsOnePersonsAndCanBeTaken) {
    auto& connection = shop.connection();
    EXPECT_FALSE(signin::give_badge(connection, services.clock, 2, "12345678"));
    EXPECT_EQ(signin::badge_owner(connection, "12345678"), 3);
    EXPECT_TRUE(signin::give_badge(connection, services.clock, 3, "11112222"));
    EXPECT_EQ(signin::badge_owner(connection, "12345678"), std::nullopt);
    EXPECT_EQ(shop.cell("select count(*) from till_badge where hash like '%11112222%'"), "0");
    EXPECT_TRUE(signin::take_badge(connection, 3));
    EXPECT_EQ(signin::badge_owner(connection, "11112222"), std::nullopt);
    EXPECT_EQ(signin::read_badge("1234567"), std::nullopt);
    EXPECT_EQ(signin::read_badge("1234567a"), std::nullopt);
}

}  // namespace
