#include "signin/sign_in.h"

#include "signin/messages.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

namespace message = signin::message;

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
         {std::string("new"), std::string("o'brien'; --"), std::string("كلمة 😀"),
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
        EXPECT_FALSE(change(wrong, "new")) << wrong;
        EXPECT_EQ(services.prompts.last(), message::wrong_old_password);
        EXPECT_EQ(stored(), "old");
    }
    EXPECT_TRUE(change(" old  ", "new"));
    EXPECT_EQ(stored(), "new");
}

TEST_F(ChangePasswordTest, ANullPasswordCountsAsEmpty) {
    shop.sql("update users set pass = null where code = 2");
    EXPECT_TRUE(change("", "new"));
    EXPECT_EQ(stored(), "new");
}

TEST_F(ChangePasswordTest, AShopWithoutTheTableReportsTheFailure) {
    shop.sql("drop view [user]");
    EXPECT_FALSE(change("old", "new"));
    EXPECT_EQ(services.prompts.last(), message::password_not_changed);
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
