// Every list of the shop: a row is added, changed and deleted by its own statements, and in use it stays.
#include "shop/list_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shop/messages.h"
#include "shop/user_editor.h"
#include "shop/users.h"
#include "signin/blocked.h"
#include "signin/messages.h"
#include "signin/sign_in.h"
#include "signin/supervisors.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using signin::Action;
using testing::HasSubstr;
using Code = std::optional<std::int64_t>;

struct Office : testing::Test {
    Office() {
        session.user_code = 1;
        session.permissions = std::string(400, '1');
    }
    test::Shop shop;
    test::RememberedServices services;
    signin::Session session;
    shop::ListEditor editor{shop.connection(), session, services.all()};
};

TEST_F(Office, EveryListTakesRowsAndGivesThemBack) {
    for (const shop::ListDescription& list : shop::lists()) {
        SCOPED_TRACE(list.name);
        if (!list.parent.empty()) {
            // Adds a parent row first, so that the child list has one to belong to.
            editor.open(shop::list_named(list.parent));
            ASSERT_FALSE(editor.rows().empty());
        }
        editor.open(list);
        const auto make = [&](const std::string& name) {
            shop::ListRow row = editor.new_row();
            row.values.front() = name;
            if (!list.parent.empty()) row.values[1] = Code(editor.parents().front().code);
            return row;
        };
        const std::size_t before = editor.rows().size();
        const shop::ListRow empty = editor.new_row();
        shop::ListRow kept = make("سطر 'أول'");
        ASSERT_FALSE(editor.save(kept, empty));
        shop::ListRow row = make("سطر ثان");
        if (list.name == "periods") {
            row.values[1] = common::Date{2030, 1, 1};
            row.values[2] = common::Date{2030, 1, 2};
        }
        ASSERT_FALSE(editor.save(row, empty));
        EXPECT_EQ(row.code, kept.code + 1);

        shop::ListRow same = row;
        same.values.front() = std::string("سطر 'أول' ");
        const auto refused = editor.save(same, row);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->field, "list_name");

        const auto read = editor.rows().back();
        shop::ListRow renamed = read;
        renamed.values.front() = std::string("اسم 'آخر'");
        ASSERT_FALSE(editor.save(renamed, read));
        const auto stale = editor.save(renamed, read);
        ASSERT_TRUE(stale);
        EXPECT_THAT(stale->text, HasSubstr("اسم 'آخر'"));
        EXPECT_TRUE(editor.erase(read));  // it is not what was read any more
        ASSERT_FALSE(editor.erase(editor.rows().back()));
        EXPECT_EQ(editor.rows().size(), before + 1);
    }
    editor.open(shop::list_named("countries"));
    const auto refused = editor.erase(editor.rows().front());
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->text, std::string(shop::message::row_is_used) + "المحافظات");
}

TEST_F(Office, BlockedUsersNeitherSignInNorApprove) {
    shop::UserEditor users(shop.connection(), session, services.all());
    shop::UserRow row;
    row.name = "مشرف";
    row.permissions = shop::permission_string("all");
    ASSERT_FALSE(users.save(row, {}, "22"));
    EXPECT_EQ(row.code, 2);
    const auto names = [&] {
        signin::Session till;
        return signin::SignIn(shop.connection(), till, services.all()).users().size() * 10 +
               signin::Supervisors(shop.connection(), till, services.all(), Action::open_drawer)
                   .users()
                   .size();
    };
    EXPECT_EQ(names(), 22U);
    users.open();
    // Somebody else blocks him while his name stands on the screen.
    signin::Session till;
    signin::SignIn sign_in(shop.connection(), till, services.all());
    ASSERT_FALSE(users.set_blocked(users.rows().back(), true));
    EXPECT_EQ(sign_in.confirm(2, "22"), signin::SignInOutcome::stay_on_list);
    EXPECT_EQ(services.prompts.last(), signin::message::blocked);
    EXPECT_EQ(names(), 11U);
    EXPECT_TRUE(users.set_blocked(users.rows().front(), true));  // himself
    ASSERT_FALSE(users.set_blocked(users.rows().back(), false));
    EXPECT_EQ(names(), 22U);

    // The last who may change users keeps the right, whoever asks.
    const auto keeper = users.rows().front();
    shop::UserRow weaker = users.rows().back();
    weaker.permissions = shop::with_right(weaker.permissions, Action::edit_users, false);
    ASSERT_FALSE(users.save(weaker, users.rows().back(), {}));
    session.user_code = 2;
    weaker = keeper;
    weaker.permissions = shop::with_right(weaker.permissions, Action::edit_users, false);
    const auto refusal = users.save(weaker, keeper, {});
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->text, shop::message::last_of_users);
    EXPECT_EQ(shop.cell("select substring(perm, 371, 1) from users where code = 1"), "1");
}

}  // namespace
