#include <gtest/gtest.h>

#include <thread>

#include "accounts/customer_card.h"
#include "accounts/messages.h"
#include "accounts/tips_receiver.h"
#include "accounts/walk_in_customer.h"
#include "common/messages.h"
#include "office.h"

namespace accounts {
namespace {

class Customers : public testing::Test {
  protected:
    test::Office office;
    AccountCustomer screen{office.shop.connection()};
};

TEST_F(Customers, ANewCardIsWrittenWhole) {
    ASSERT_FALSE(screen.open(CardMode::add));
    EXPECT_EQ(screen.title(), "بيانات عميل جديد");
    screen.card.number = "٣٠";
    screen.card.name = "عميل 'جديد'; drop table custdata --";
    screen.card.opening = "75.5";
    screen.card.is_credit = true;
    screen.card.is_second_kind = true;
    screen.choose_place(0, 1);
    screen.choose_place(1, 10);
    screen.choose_place(2, 100);
    screen.choose_place(3, 1000);
    screen.card.representative = 2;
    screen.card.price_class = 2;
    screen.card.group = "4";
    screen.card.pays_later = true;
    screen.card.has_guarantor = true;
    screen.card.guarantor = "ضامن";
    ASSERT_FALSE(screen.save());
    const auto row = office.shop.connection().query("select * from custdata where ccode = 30").front();
    EXPECT_EQ(row.text("cname"), "عميل 'جديد'; drop table custdata --");
    EXPECT_EQ(row.number("copen"), -75.5);
    EXPECT_EQ(row.number("cacc"), -75.5);
    EXPECT_EQ(row.text("ctype") + row.text("w_dep") + row.text("w_pay") + row.text("grntr"), "1011");
    EXPECT_EQ(row.text("country") + "/" + row.text("gov") + "/" + row.text("city") + "/" + row.text("dist"),
              "1/10/100/1000");
    EXPECT_EQ(row.text("g_name") + row.text("cust_grp") + row.text("cust_typ") + row.text("link"), "ضامن422");

    ASSERT_FALSE(screen.open(CardMode::edit, 30));
    EXPECT_EQ(screen.card.opening, "75.50");
    EXPECT_TRUE(screen.card.is_credit);
    EXPECT_EQ(screen.card.district, 1000);
    EXPECT_EQ(screen.balance(), -75.5);
}

struct Opening {
    const char* amount;
    bool credit;
    double balance;
};
// The customer owes 250, 100 of it from the opening; an invoice of another till comes in between.
TEST_F(Customers, AChangedOpeningShiftsTheBalance) {
    for (const Opening& opening :
         {Opening{"100", false, 255}, {"150", false, 305}, {"0.00", false, 155}, {"150", true, 5}}) {
        office.shop.sql("update custdata set copen = 100, cacc = 250 where ccode = 7");
        ASSERT_FALSE(screen.open(CardMode::edit, 7));
        office.shop.sql("update custdata set cacc = cacc + 5 where ccode = 7");
        screen.card.opening = opening.amount;
        screen.card.is_credit = opening.credit;
        ASSERT_FALSE(screen.save());
        EXPECT_EQ(office.customer_balance(7), opening.balance) << opening.amount;
    }
}

TEST_F(Customers, EachPlaceReloadsTheOnesBelow) {
    screen.open(CardMode::add);
    screen.choose_place(0, 1);
    ASSERT_EQ(screen.places(1).size(), 1U);
    screen.choose_place(1, 10);
    screen.choose_place(2, 100);
    screen.choose_place(3, 1000);
    EXPECT_EQ(screen.places(3).front().name, "الحي السابع");
    screen.choose_place(0, 2);
    EXPECT_EQ(screen.places(1).front().name, "عمان");
    EXPECT_TRUE(screen.places(2).empty());
    EXPECT_TRUE(screen.places(3).empty());
    EXPECT_FALSE(screen.card.governorate || screen.card.centre || screen.card.district);
}

// The class of the card is "قطاعي", 1. A search that finds one class chooses it; otherwise the card's class
// stays, and stays in the list.
TEST_F(Customers, ClassesAreFoundByNumberOrName) {
    office.shop.sql("insert into cust_typ (code,name) select 4,N'عرض 25'");
    office.shop.sql("insert into cust_typ (code,name) select 5,N'[خاص] 50%_'");
    struct Case {
        const char* text;
        std::size_t listed;  // 0 if none is found
        std::int64_t chosen;
    };
    for (const Case& search : {Case{"", 5, 1},
                               {" ", 5, 1},
                               {"[خاص]", 1, 5},
                               {"50%", 1, 5},
                               {"%_", 1, 5},
                               {"_", 1, 5},
                               {"2", 1, 2},
                               {"٣", 1, 3},
                               {"جملة", 3, 1},
                               {"قطا", 1, 1},
                               {"ض ٢٥", 1, 4},
                               {"9", 0, 1},
                               {"' or 1=1 --", 0, 1}}) {
        ASSERT_FALSE(screen.open(CardMode::add));
        screen.card.price_class = 1;
        EXPECT_EQ(screen.search_classes(search.text).has_value(), search.listed == 0) << search.text;
        EXPECT_EQ(screen.price_classes().size(), search.listed == 0 ? 5 : search.listed) << search.text;
        EXPECT_EQ(screen.card.price_class, search.chosen) << search.text;
    }
}

TEST_F(Customers, RefusedCardsNameTheFieldAndWriteNothing) {
    struct Case {
        const char* field;
        void (*spoil)(CustomerCard&);
        std::string_view text;
    };
    const Case cases[] = {
        {"customer_number", [](CustomerCard& c) { c.number = " "; }, "ادخل كود العميل"},
        {"customer_name", [](CustomerCard& c) { c.name = ""; }, "ادخل اسم العميل"},
        {"customer_number", [](CustomerCard& c) { c.number = "7"; }, "رقم العميل مكرر"},
        {"customer_number", [](CustomerCard& c) { c.number = "7a"; }, message::wrong_code},
        {"customer_number", [](CustomerCard& c) { c.number = "-1"; }, message::wrong_code},
        {"customer_number", [](CustomerCard& c) { c.number = "3000000000"; }, message::wrong_code},
        {"customer_number", [](CustomerCard& c) { c.number = "32768"; },
         "كود العميل أكبر مما تقبله عروض الأسعار. أكبر كود مسموح به هو 32767"},
        {"customer_group", [](CustomerCard& c) { c.group = "x"; }, message::wrong_code},
        {"customer_opening", [](CustomerCard& c) { c.opening = "كثير"; }, common::message::wrong_amount},
        {"customer_opening", [](CustomerCard& c) { c.opening = "12.345"; }, common::message::too_fine},
        {"customer_phone",
         [](CustomerCard& c) {
             c.has_guarantor = true;
             c.phone.assign(300, '1');
         },
         common::message::text_too_long},
        {"customer_guarantor_id",
         [](CustomerCard& c) {
             c.has_guarantor = true;
             c.guarantor_id.assign(300, '1');
         },
         common::message::text_too_long},
    };
    for (const Case& refused : cases) {
        screen.open(CardMode::add);
        screen.card.number = "50";
        screen.card.name = "عميل";
        refused.spoil(screen.card);
        const auto refusal = screen.save();
        ASSERT_TRUE(refusal) << refused.text;
        EXPECT_EQ(refusal->field, refused.field);
        EXPECT_EQ(refusal->text, refused.text);
    }
    EXPECT_EQ(office.shop.number("select count(*) from custdata"), 2);
    EXPECT_EQ(office.shop.cell("select cname from custdata where ccode = 7"), "مطعم الأمل");
}

TEST_F(Customers, ViewedAndVanishedCardsAreNotWritten) {
    ASSERT_FALSE(screen.open(CardMode::view, 7));
    EXPECT_EQ(screen.title(), "عرض بيانات عميل ");
    screen.card.name = "آخر";
    EXPECT_TRUE(screen.save());
    ASSERT_FALSE(screen.open(CardMode::edit, 8));
    office.shop.sql("delete from custdata where ccode = 8");
    EXPECT_EQ(screen.save().value().text, common::message::no_such_customer);
    EXPECT_TRUE(screen.open(CardMode::edit, 99));
    EXPECT_EQ(office.shop.cell("select cname from custdata"), "مطعم الأمل");
}

TEST(WalkIns, CodesAreLookedUp) {
    test::Office office;
    CashCustomer screen(office.shop.connection());
    screen.open();
    EXPECT_EQ(screen.fields.code, "1");
    office.shop.sql("insert into cust_cash (zcode,zname,zphone) select 4,N'منى حسن','0100'");
    screen.open();
    EXPECT_EQ(screen.fields.code, "5");
    screen.fields.code = "٤";  // typed, but not entered
    ASSERT_FALSE(screen.confirm());
    EXPECT_EQ(screen.confirmed().name, "منى حسن");
    for (const char* code : {"3", "99999999999", "x", "", "4; delete from cust_cash"}) {
        screen.open();
        screen.fields.code = code;
        EXPECT_EQ(screen.enter_code().value().field, "walk_in_code") << code;
        EXPECT_EQ(screen.confirm().value().field, "walk_in_code") << code;
    }
    screen.open();
    EXPECT_EQ(screen.confirm().value().field, "walk_in_name");
    screen.fields = {"5", "س", std::string(300, '1'), ""};
    const auto refusal = screen.confirm();
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->field, "walk_in_phone");
    EXPECT_EQ(refusal->text, common::message::text_too_long);
    screen.fields.phone = "0122";
    ASSERT_FALSE(screen.confirm());
    EXPECT_TRUE(screen.confirmed().is_new);
    office.shop.sql("insert into cust_cash (zcode,zname,zphone) select 6,N'محل 12','0100'");
    screen.fields.name = "محل ١٢";
    screen.search_names();
    EXPECT_EQ(screen.results().size(), 1U);
    screen.fields.phone = "٠١٠٠";
    screen.search_phones();
    EXPECT_EQ(screen.results().size(), 2U);
    screen.fields.mail = "' or ''='";
    screen.search_mails();
    EXPECT_TRUE(screen.results().empty());
    office.shop.sql("insert into cust_cash (zcode,zname,zphone,zmail) select 7,N'[أ] 5%','1_2','a_b@c'");
    for (const auto& [field, text, search] :
         {std::tuple{&WalkInFields::name, "[أ]", &CashCustomer::search_names},
          {&WalkInFields::name, "%", &CashCustomer::search_names},
          {&WalkInFields::phone, "1_2", &CashCustomer::search_phones},
          {&WalkInFields::mail, "a_b", &CashCustomer::search_mails}}) {
        screen.fields.*field = text;
        (screen.*search)();
        ASSERT_EQ(screen.results().size(), 1U) << text;
        EXPECT_EQ(screen.results().front().code, 7) << text;
    }
}

TEST(TipsReceivers, RefusalsNameTheField) {
    test::Office office;
    office.shop.sql("insert into boundata (ccode,cname) select 5,N'حسن'");
    TipsReceiver screen(office.shop.connection());
    screen.open_new();
    EXPECT_EQ(screen.fields.code, "6");
    for (const char* code : {"5", "0", "ب"}) {
        screen.fields = {code, "على"};
        EXPECT_EQ(screen.save().value().field, "receiver_code") << code;
    }
    screen.fields = {"7", std::string(300, 'x')};
    EXPECT_EQ(screen.save().value().field, "receiver_name");
    EXPECT_TRUE(screen.open_edit(6));
    ASSERT_FALSE(screen.open_edit(5));
    office.shop.sql("delete from boundata");
    EXPECT_EQ(screen.save().value().text, message::no_such_receiver);
}

// Each till proposes the next code that it saw, which the other one has taken meanwhile.
TEST(WalkInCustomers, TwoTillsGiveNoCodeTwice) {
    test::Office office;
    constexpr int each = 60;
    const auto enter = [&](const std::string& till) {
        const auto connection = test::open_shop(office.shop.file());
        for (int i = 1; i <= each; ++i) {
            WalkInCustomer customer{1, true, till + std::to_string(i), "", ""};
            store_walk_in_customer(*connection, customer);
        }
    };
    std::thread other(enter, "b");
    enter("a");
    other.join();
    EXPECT_EQ(office.shop.number("select count(*) from cust_cash"), 2 * each);
    EXPECT_EQ(office.shop.number("select count(distinct zcode) from cust_cash"), 2 * each);
}

}  // namespace
}  // namespace accounts
