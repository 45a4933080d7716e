#include <gtest/gtest.h>

#include "accounts/cash_customer.h"
#include "accounts/customer_card.h"
#include "accounts/messages.h"
#include "accounts/tips_receiver.h"
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

TEST_F(Customers, ClassesAreFoundByNumberOrName) {
    screen.open(CardMode::add);
    const std::pair<const char*, std::size_t> searches[] = {
        {"", 3}, {" ", 3}, {"2", 1}, {"٣", 1}, {"جملة", 2}, {"قطا", 1}, {"9", 0}, {"' or 1=1 --", 0}};
    for (const auto& [text, found] : searches) {
        screen.search_classes(text);
        EXPECT_EQ(screen.price_classes().size(), found) << text;
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
        {"customer_group", [](CustomerCard& c) { c.group = "x"; }, message::wrong_code},
        {"customer_opening", [](CustomerCard& c) { c.opening = "كثير"; }, common::message::wrong_amount},
        {"customer_opening", [](CustomerCard& c) { c.opening = "12.345"; }, common::message::too_fine},
        {"customer_phone", [](CustomerCard& c) { c.phone.assign(300, '1'); }, common::message::text_too_long},
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
    EXPECT_EQ(screen.save().value().text, message::no_such_customer);
    EXPECT_TRUE(screen.open(CardMode::edit, 99));
    EXPECT_EQ(office.shop.cell("select cname from custdata"), "مطعم الأمل");
}

class WalkIns : public testing::Test {
  protected:
    WalkIns() {
        for (const char* statement :
             {"insert into cust_cash (zcode,zname,zphone,zmail) select 4,N'منى حسن','0100','m@x'",
              "insert into cust_cash (zcode,zname,zphone,zmail) select 9,N'حسن','0111',null"})
            office.shop.sql(statement);
        screen.open();
    }
    test::Office office;
    CashCustomer screen{office.shop.connection()};
};

TEST_F(WalkIns, ANewOneIsHandedOverUnwritten) {
    EXPECT_EQ(screen.fields.code, "10");
    screen.fields.name = "سلمى";
    screen.fields.phone = "0122";
    ASSERT_FALSE(screen.confirm());
    EXPECT_TRUE(screen.confirmed().is_new);
    EXPECT_EQ(screen.confirmed().code, 10);
    EXPECT_EQ(screen.confirmed().name, "سلمى");
    EXPECT_EQ(office.shop.number("select count(*) from cust_cash"), 2);
    office.shop.sql("delete from cust_cash");
    screen.open();
    EXPECT_EQ(screen.fields.code, "1");
}

TEST_F(WalkIns, SearchesListInOrderAndFillTheFields) {
    screen.search_names();
    EXPECT_EQ(screen.results().size(), 2U);
    screen.fields.name = "حسن";
    screen.search_names();
    ASSERT_EQ(screen.results().size(), 2U);
    screen.fields.phone = "011";
    screen.search_phones();
    ASSERT_EQ(screen.results().size(), 1U);
    screen.fields.mail = "' or ''='";
    screen.search_mails();
    EXPECT_TRUE(screen.results().empty());
    screen.fields.mail = "@X";
    screen.search_mails();
    ASSERT_EQ(screen.results().size(), 1U);
    screen.choose(0);
    screen.choose(5);
    const WalkInFields& fields = screen.fields;
    EXPECT_EQ(fields.code + fields.name + fields.phone + fields.mail, "4منى حسن0100m@x");
    screen.fields.phone = "0100-2";  // corrected on the screen
    ASSERT_FALSE(screen.confirm());
    EXPECT_FALSE(screen.confirmed().is_new);
    EXPECT_EQ(screen.confirmed().phone, "0100-2");
}

TEST_F(WalkIns, CodesAreLookedUp) {
    screen.fields.code = "9";
    ASSERT_FALSE(screen.enter_code());
    EXPECT_EQ(screen.fields.name, "حسن");
    screen.open();
    screen.fields.code = "٤";
    ASSERT_FALSE(screen.confirm());
    EXPECT_EQ(screen.confirmed().name, "منى حسن");
    for (const char* code : {"5", "99999999999", "x", "", "4; delete from cust_cash"}) {
        screen.open();
        screen.fields.code = code;
        EXPECT_EQ(screen.confirm().value().field, "walk_in_code") << code;
    }
    screen.fields.code = "5";
    EXPECT_EQ(screen.enter_code().value().text, "اسم العميل النقدي غير موجود");
    screen.open();
    EXPECT_EQ(screen.confirm().value().field, "walk_in_name");
    screen.fields.name = "س";
    screen.fields.phone = std::string(300, '1');
    const auto refusal = screen.confirm();
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->field, "walk_in_phone");
    EXPECT_EQ(refusal->text, common::message::text_too_long);
}

TEST(TipsReceivers, AddAndEdit) {
    test::Office office;
    TipsReceiver screen(office.shop.connection());
    screen.open_new();
    EXPECT_EQ(screen.fields.code, "1");
    EXPECT_EQ(screen.title(), "اضافة بيان اكراميات");
    EXPECT_EQ(screen.save().value().text, "ادخل الاسم");
    screen.fields = {"5", "حسن"};
    EXPECT_FALSE(screen.save());
    screen.open_new();
    EXPECT_EQ(screen.fields.code, "6");
    for (const char* code : {"5", "0", "ب"}) {
        screen.fields = {code, "على"};
        EXPECT_EQ(screen.save().value().field, "receiver_code") << code;
    }
    screen.fields = {"7", std::string(300, 'x')};
    EXPECT_EQ(screen.save().value().field, "receiver_name");
    ASSERT_FALSE(screen.open_edit(5));
    EXPECT_EQ(screen.title(), "تعديل بيان اكراميات");
    screen.fields.name = "حسن 'الكبير'";
    EXPECT_FALSE(screen.save());
    EXPECT_EQ(office.shop.cell("select cname from boundata where ccode = 5"), "حسن 'الكبير'");
    EXPECT_EQ(office.shop.number("select count(*) from boundata"), 1);
    office.shop.sql("delete from boundata");
    EXPECT_EQ(screen.save().value().text, message::no_such_receiver);
    EXPECT_TRUE(screen.open_edit(5));
}

}  // namespace
}  // namespace accounts
