#include "signin/sign_in.h"

#include <memory>

#include "database/error.h"
#include "signin/messages.h"
#include "signin/permissions.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using signin::SignInOutcome;
namespace message = signin::message;

class SignInTest : public testing::Test {
  protected:
    SignInTest() {
        shop.sql("insert into users (code,name,pass,perm) select 2,N'كاشير','s3 cret','0101'");
        shop.sql("insert into users (code,name,pass,perm) select 3,N'بلا سر',null,null");
        shop.sql("insert into users (code,name,pass,perm) select 4,N'عربي',N' كلمة ','1'");
        shop.sql("insert into users (code,name,pass,perm) select 5,N'أرقام',N'١٢٣','1'");
        session.cash_point = 1;
    }
    // Long after the last attempt.
    SignInOutcome confirm(std::optional<std::int64_t> code, std::string_view password) {
        services.clock.ran += std::chrono::hours(1);
        return confirm_now(code, password);
    }
    SignInOutcome confirm_now(std::optional<std::int64_t> code, std::string_view password) {
        return signin::SignIn(shop.connection(), session, services.all()).confirm(code, password);
    }

    test::Shop shop;
    test::RememberedServices services;
    signin::Session session;
};

TEST_F(SignInTest, TheListShowsEveryUser) {
    const signin::SignIn screen(shop.connection(), session, services.all());
    ASSERT_EQ(screen.users().size(), 5U);
    EXPECT_EQ(screen.users()[1].code, 2);
    EXPECT_EQ(screen.users()[1].name, "كاشير");
}

TEST_F(SignInTest, EveryAttemptHasItsOutcome) {
    using enum SignInOutcome;
    const struct {
        std::optional<std::int64_t> code;
        const char* password;
        SignInOutcome outcome;
        std::string_view said;
    } cases[] = {
        {{}, "1", stay_on_list, message::enter_user},
        {99, "1", stay_on_list, message::no_such_user},
        {-1, "", stay_on_list, message::no_such_user},
        {1, "2", stay_on_password, message::wrong_password},
        {1, "", stay_on_password, message::wrong_password},
        {2, "S3 CRET", stay_on_password, message::wrong_password},
        {2, "s3cret", stay_on_password, message::wrong_password},
        {2, "' or '1'='1", stay_on_password, message::wrong_password},
        {2, "s3 cret\t", stay_on_password, message::wrong_password},
        {3, "x", stay_on_password, message::wrong_password},
        {1, "1", signed_in, ""},
        {2, "  s3 cret ", signed_in, ""},
        {3, "", signed_in, ""},
        {3, "   ", signed_in, ""},
        {4, "كلمة", signed_in, ""},
        // The keyboard decides the script of digits.
        {1, "١", signed_in, ""},
        {5, "123", signed_in, ""},
        {5, "١٢3", signed_in, ""},
        {5, "124", stay_on_password, message::wrong_password},
    };
    for (const auto& c : cases) {
        services.prompts.messages.clear();
        EXPECT_EQ(confirm(c.code, c.password), c.outcome) << c.password;
        EXPECT_EQ(services.prompts.last(), c.said) << c.password;
    }
}

// Two wrong passwords cost nothing; then the pause doubles up to five minutes. It is the user's, whichever
// screen asks.
TEST_F(SignInTest, WrongPasswordsCostAGrowingPause) {
    using std::chrono::milliseconds;
    const auto change = [&](std::string_view from) {
        session.user_code = 1;
        return signin::change_password(shop.connection(), session, services.all(), from, "3");
    };
    confirm_now(1, "2");
    EXPECT_FALSE(change("2"));
    for (const int seconds : {2, 4, 8, 16, 32, 64, 128, 256, 300, 300}) {
        confirm_now(1, "2");
        EXPECT_EQ(services.prompts.last(), message::wrong_password) << seconds;
        services.clock.ran += milliseconds(seconds * 1000 - 1);
        EXPECT_EQ(confirm_now(1, "1"), SignInOutcome::stay_on_password) << seconds;
        EXPECT_EQ(services.prompts.last(), "محاولات خاطئة كثيرة. انتظر 0:01 ثم حاول مرة أخرى");
        EXPECT_FALSE(change("1"));
        EXPECT_EQ(confirm_now(2, "s3 cret"), SignInOutcome::signed_in) << "another user";
        services.clock.ran += milliseconds(1);
    }
    EXPECT_EQ(confirm_now(1, "1"), SignInOutcome::signed_in);
    confirm_now(1, "2");
    EXPECT_EQ(confirm_now(1, "1"), SignInOutcome::signed_in) << "counted anew";
}

TEST_F(SignInTest, AWrongPasswordLeavesTheUserSetUntilTheNextAttempt) {
    confirm(2, "wrong");
    EXPECT_EQ(session.user_code, 2);
    EXPECT_EQ(session.user_name, "كاشير");
    EXPECT_EQ(session.permissions, "0101");
    EXPECT_EQ(session.store_code, 0);  // nothing further was loaded
    EXPECT_EQ(session.settings.aname, "");
    confirm({}, "");
    EXPECT_EQ(session.user_code, 2);
    confirm(99, "");
    EXPECT_EQ(session.user_code, 2);
    confirm(1, "1");
    EXPECT_EQ(session.user_name, "مدير");
}

TEST_F(SignInTest, PermissionsCountCharacters) {
    shop.sql("update users set perm = N'ش1😀01' where code = 4");
    ASSERT_EQ(confirm(4, "كلمة"), SignInOutcome::signed_in);
    std::string allowed;
    for (int position = 1; position <= 8; ++position)
        allowed += session.has_permission(position) ? '1' : '0';
    EXPECT_EQ(allowed, "01001000");
}

TEST_F(SignInTest, LoadsTheSettingsTheStoreAndTheDrawer) {
    shop.sql(
        "update basic set warn = 3, [type] = 2, max_dis = 12.5, cash_m = 1, cash_dis = 0.1, cash_dis_1 = 4, "
        "cust_reg = 5, sear_lang = 1, logo = 'shop.png'");
    ASSERT_EQ(confirm(1, "1"), SignInOutcome::signed_in);
    const signin::Settings& s = session.settings;
    EXPECT_EQ(s.aname, "بقالة النور");
    EXPECT_EQ(s.ename, "Al Noor");
    EXPECT_EQ(s.tel, "0123");
    EXPECT_EQ(s.print, "win");
    EXPECT_EQ(s.cash, "com1");
    EXPECT_EQ(s.warn, 3);
    EXPECT_EQ(s.type, 2);
    EXPECT_EQ(s.max_dis, 12.5F);
    EXPECT_EQ(s.cash_m, 1);
    EXPECT_EQ(s.cash_dis, 0.1F);
    EXPECT_EQ(s.cash_dis_1, 4);
    EXPECT_EQ(s.cust_reg, 5);
    EXPECT_EQ(s.sear_lang, 1);
    EXPECT_EQ(s.logo, "shop.png");
    EXPECT_EQ(session.store_code, 1);
    EXPECT_EQ(session.store_name, "الفرع الرئيسي");
    EXPECT_EQ(session.drawer_name, "درج 1");
}

TEST_F(SignInTest, NullSettingsAreEmpty) {
    shop.sql("update basic set aname = null, warn = null, max_dis = null, logo = '  ', pname = null");
    ASSERT_EQ(confirm(1, "1"), SignInOutcome::signed_in);
    EXPECT_EQ(session.settings.aname, "");
    EXPECT_EQ(session.settings.warn, 0);
    EXPECT_EQ(session.settings.max_dis, 0);
    EXPECT_EQ(session.settings.logo, "logo.jpg");
}

TEST_F(SignInTest, AMissingStoreOrDrawerEndsTheProgram) {
    const struct {
        const char* statement;
        std::int64_t cash_point;
    } cases[] = {
        {"update basic set st_d = 1", 3},  // the store has drawers 1 and 2
        {"update basic set st_d = 2", 2},  // drawer 2 is another store's
        {"update basic set st_d = 9", 1}, {"update basic set st_d = null", 1}, {"delete from basic", 1},
    };
    for (const auto& c : cases) {
        shop.sql(c.statement);
        session.cash_point = c.cash_point;
        services.prompts.messages.clear();
        services.log.lines.clear();
        EXPECT_EQ(confirm(1, "1"), SignInOutcome::end_program) << c.statement;
        EXPECT_EQ(services.prompts.messages, std::vector<std::string>{std::string(message::wrong_data)});
        EXPECT_EQ(services.log.lines.size(), 1U) << c.statement;  // which of the two is missing
    }
}

TEST(Permissions, ArePositionsCountedFromOne) {
    signin::Session session;
    const struct {
        std::string permissions;
        int position;
        bool allowed;
    } cases[] = {
        {"0000", 2, false},
        {"0100", 2, true},
        {"1", 1, true},
        {std::string(80, '1'), 81, false},
        {std::string(81, '1'), 81, true},
        {"2x", 1, false},
        {"", 1, false},
        {"1", 0, false},
        {"1", -1, false},
    };
    for (const auto& c : cases) {
        session.permissions = c.permissions;
        EXPECT_EQ(session.has_permission(c.position), c.allowed) << c.permissions << ' ' << c.position;
    }
}

TEST(Permissions, AnyPositionOfAnActionAllowsIt) {
    using signin::Action;
    signin::Session session;
    test::RememberedServices services;
    const auto may = [&](Action action) { return signin::authorise(session, services.prompts, action); };
    for (const int position : {216, 281, 286}) {
        session.permissions = std::string(400, '0');
        session.permissions[static_cast<std::size_t>(position) - 1] = '1';
        EXPECT_TRUE(may(Action::sell_below_stock)) << position;
        EXPECT_TRUE(services.prompts.messages.empty());
        EXPECT_FALSE(may(Action::reprint));
        EXPECT_EQ(services.prompts.last(), signin::denied);
        services.prompts.messages.clear();
    }
    session.permissions.clear();
    EXPECT_FALSE(signin::authorise(session, services.prompts, Action::sell_below_stock, "no", {}));
    EXPECT_EQ(services.prompts.last(), "no");
}

class ChangePasswordTest : public testing::Test {
  protected:
    ChangePasswordTest() {
        shop.sql("insert into users (code,name,pass,perm) select 2,N'كاشير','old','1'");
        session.user_code = 2;
        session.cash_point = 1;
    }
    bool change(std::string_view from, std::string_view to) {
        return signin::change_password(shop.connection(), session, services.all(), from, to);
    }
    std::string stored(int code = 2) {
        return shop.cell("select pass from users where code = " + std::to_string(code));
    }

    test::Shop shop;
    test::RememberedServices services;
    signin::Session session;
};

TEST_F(ChangePasswordTest, TheNewPasswordSignsIn) {
    for (const std::string& password :
         {std::string("new"), std::string(100, 'x'), std::string("o'brien'; --"), std::string("كلمة 😀"),
          std::string("' where code = 1 --"), std::string(), std::string("old")}) {
        const std::string before = stored();
        EXPECT_TRUE(change(before, password)) << password;
        EXPECT_EQ(services.prompts.last(), message::password_changed);
        EXPECT_EQ(stored(), password);
        EXPECT_EQ(stored(1), "1");  // nobody else's
        signin::SignIn screen(shop.connection(), session, services.all());
        EXPECT_EQ(screen.confirm(2, password), signin::SignInOutcome::signed_in);
    }
}

TEST_F(ChangePasswordTest, TheOldPasswordMustMatchExceptForBlanks) {
    for (const char* wrong : {"", "Old", "ol d", "' or 1=1 --"}) {
        services.clock.ran += std::chrono::hours(1);
        EXPECT_FALSE(change(wrong, "new")) << wrong;
        EXPECT_EQ(services.prompts.last(), message::wrong_old_password);
        EXPECT_EQ(stored(), "old");
    }
    services.clock.ran += std::chrono::hours(1);
    EXPECT_TRUE(change(" old  ", "new"));
    EXPECT_EQ(stored(), "new");
}

TEST_F(ChangePasswordTest, APasswordThatTheColumnCannotHoldIsRefused) {
    EXPECT_FALSE(change("old", std::string(101, 'x')));
    EXPECT_EQ(services.prompts.last(), message::password_too_long);
    EXPECT_EQ(stored(), "old");
}

TEST_F(ChangePasswordTest, ANullPasswordCountsAsEmpty) {
    shop.sql("update users set pass = null where code = 2");
    EXPECT_TRUE(change("", "new"));
    EXPECT_EQ(stored(), "new");
}

TEST_F(ChangePasswordTest, AShopWithoutTheTableReportsTheFailure) {
    shop.sql("drop view [user]");
    EXPECT_FALSE(change("old", "new"));
    EXPECT_TRUE(services.prompts.last().starts_with(message::password_not_changed));
    EXPECT_TRUE(services.prompts.last().ends_with(database::message::see_log));
    EXPECT_EQ(stored(), "old");
    ASSERT_EQ(services.log.lines.size(), 1U);
    EXPECT_NE(services.log.lines[0].find("user"), std::string::npos);
}

TEST_F(ChangePasswordTest, AnotherTableOfThatNameChangesNothing) {
    shop.sql("drop view [user]");
    shop.sql("create table [user] (code int null, pass nvarchar(100) null)");
    shop.sql("insert into [user] (code,pass) select 2,'old'");
    EXPECT_FALSE(change("old", "new"));
    EXPECT_EQ(services.prompts.last(), message::password_not_changed);
}

TEST_F(ChangePasswordTest, ADeletedUserIsReported) {
    session.user_code = 77;
    EXPECT_FALSE(change("old", "new"));
    EXPECT_EQ(services.prompts.last(), message::no_such_user);
}

}  // namespace
