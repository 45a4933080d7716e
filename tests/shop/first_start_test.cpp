// A shop made by the first start: with items of a file, all of it or nothing, and after a power cut.
#include "shop/first_start.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "common/code_page.h"
#include "shop/place.h"
#include "shop/refused.h"
#include "startup/shop_files.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
using shop::FirstStep;
using testing::HasSubstr;

constexpr common::Moment now{{2026, 11, 21}, {10, 42, 0, 0}};

struct Start : testing::Test {
    Start() {
        start.fields.name = "بقالة 'النيل'";
        start.fields.owner = "صابر";
        start.fields.owner_password = start.fields.owner_again = "987";
    }
    void write_items(const std::string& text) {
        const fs::path file = temporary.path() / "items.csv";
        std::ofstream(file) << text;
        start.fields.items_file = file.string();
    }
    std::string cell(const std::string& query) const {
        return database::text_of(shop::open_place(folder, startup::read_connection_file(folder))
                                     ->scalar(database::Sql::from_administrator(query)));
    }
    test::TemporaryFolder temporary;
    fs::path folder = temporary.path() / "shop";
    shop::FirstStart start{folder};
};

TEST_F(Start, ItemsOfAFileComeWithTheShop) {
    write_items("code,name,price12,stock,barcode\n1,شاي,abc,5,\n");
    const auto refusal = start.read_items(now);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->field, "first_items_file");
    EXPECT_THAT(refusal->text, HasSubstr("\n2: "));
    EXPECT_FALSE(fs::exists(folder));

    // A file as a spreadsheet on an Arabic Windows saves it, with an owner's headings.
    write_items(
        common::to_code_page_1256("الكود;الاسم;قطاعي;رصيد\n1;شاي العروسة;10.50;5\n2;سكر 'أبيض';31;7.5\n"));
    ASSERT_FALSE(start.read_items(now));
    start.make(now);
    EXPECT_TRUE(shop::has_shop(folder));
    EXPECT_EQ(cell("select count(*) from items"), "2");
    EXPECT_EQ(cell("select quan from stk where icode = 2 and stcode = 1"), "7.5");
    EXPECT_EQ(cell("select aname from basic"), "بقالة 'النيل'");
    EXPECT_THROW(start.make(now), shop::Refused);  // there is a shop now
}

TEST_F(Start, APowerCutLeavesNoHalfShop) {
    start.make(now);
    // The database gets its name last: a cut before that leaves it under its other one.
    fs::rename(folder / "shop.db", folder / "shop.db.making");
    EXPECT_FALSE(shop::has_shop(folder));
    start.fields.store = "فرع الجيزة";
    start.make(now);
    EXPECT_TRUE(shop::has_shop(folder));
    EXPECT_EQ(cell("select [name] from stocks"), "فرع الجيزة");
}

TEST_F(Start, StepsRefuseWhatCannotBe) {
    const struct {
        FirstStep step;
        std::string shop::FirstStartFields::*member;
        const char* value;
        const char* field;
    } cases[] = {
        {FirstStep::shop, &shop::FirstStartFields::name, " ", "first_name"},
        {FirstStep::shop, &shop::FirstStartFields::name, "متجر\u202E", "first_name"},
        {FirstStep::drawers, &shop::FirstStartFields::opening_1, "-1", "first_opening_1"},
        {FirstStep::drawers, &shop::FirstStartFields::opening_2, "5", "first_drawer_2"},
        {FirstStep::drawers, &shop::FirstStartFields::denominations, "5 x", "first_denominations"},
        {FirstStep::printer, &shop::FirstStartFields::drawer_port, "/etc/passwd", "first_drawer_port"},
        {FirstStep::users, &shop::FirstStartFields::owner, "12", "first_owner"},
        {FirstStep::users, &shop::FirstStartFields::cashier_1, "صابر", "first_cashier_1"},
        {FirstStep::users, &shop::FirstStartFields::password_2, "1", "first_cashier_2"},
    };
    for (const auto& c : cases) {
        ASSERT_FALSE(start.check(c.step)) << c.field;
        const std::string before = start.fields.*c.member;
        start.fields.*c.member = c.value;
        const auto refusal = start.check(c.step);
        ASSERT_TRUE(refusal) << c.field;
        EXPECT_EQ(refusal->field, c.field);
        EXPECT_FALSE(refusal->text.empty());
        start.fields.*c.member = before;
    }
}

}  // namespace
