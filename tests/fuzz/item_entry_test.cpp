// Random texts and scale labels in the item-code field of a real shop.
#include <cstdio>
#include <random>
#include <string_view>

#include "common/text.h"
#include "sales/entry.h"
#include "sales/sales_desk.h"
#include "support/printer.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

// Pieces that break statements, encodings and parsers, joined at random.
std::string random_text(std::mt19937& random) {
    // clang-format off
    static const std::string_view pieces[] = {
        "'", "''", ";", "--", "/*", "]", "[", "\"", "\\", "%", "_", "1", "100", "20", "2000123",
        "٣", "۴", "ض", "لا", "ﻻ", "W", "p9", "*", "-", ".", "1e308", "nan", "NULL", "\xFF", "\xC3",
        "🍎", " ", "\t", "\r\n", "\x01", "\u200F", "drop table ", "items", "or 1=1",
        {"\0", 1}, "777777777777777777777777777777777777777777777777777777777777"};
    // clang-format on
    std::uniform_int_distribution<std::size_t> which(0, std::size(pieces) - 1);
    std::uniform_int_distribution<int> many(1, 8);
    std::string text;
    for (int n = many(random); n > 0; --n)
        text += pieces[which(random)];
    return text;
}

TEST(BarcodeFuzz, NormalisingIsStableAndClean) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random_text(random);
        const std::string once = sales::normalize_scan(text);
        ASSERT_EQ(sales::normalize_scan(once), once) << text;
        for (const char32_t c : common::code_points(once))
            ASSERT_GE(c, 0x20u);
    }
}

TEST(BarcodeFuzz, TheFieldSurvivesAnything) {
    test::Shop shop;
    shop.sql("insert into items (code,name,num1,price11,price12) select 100,N'أرز',1,8,10");
    shop.sql("insert into stk (icode,stcode,edate,quan) select 100,1,'3000/01/01',1000000");
    shop.sql("insert into barcode (bar,code,scode) select '6221',100,1");
    signin::Session session;
    session.cash_point = 1;
    session.store_code = 1;
    session.permissions = std::string(400, '1');
    test::RememberedServices services;
    test::RememberedPrinter printer;
    sales::SalesDesk desk(shop.connection(), session, services.all(), printer);
    ASSERT_TRUE(desk.Open());
    std::mt19937 random(11);
    for (int round = 0; round < 1500; ++round) {
        const std::string text = random_text(random);
        const std::size_t lines = desk.invoice().lines.size();
        const bool entered = desk.lines().EnterItem(sales::read_entry(text));
        ASSERT_EQ(desk.invoice().lines.size() > lines, entered) << text;
        sales::SearchFilters filters;
        filters.name = text;
        filters.code = round % 2 == 0 ? text : "";
        filters.name_contains = round % 3 == 0;
        desk.lines().search(filters);
        ASSERT_TRUE(services.log.lines.empty()) << text << "\n" << services.log.lines.front();
        if (round % 50 != 0) continue;
        services.prompts.answers = {true};
        ASSERT_TRUE(desk.checkout().CancelRecord());
    }
    EXPECT_EQ(shop.number("select count(*) from items"), 1);
    EXPECT_EQ(shop.number("select count(*) from barcode"), 1);
    EXPECT_TRUE(desk.lines().EnterItem(sales::read_entry("6221")));
}

// 13 digits that begin with "20" are read as item and weight, and no other text is.
TEST(ScaleLabelFuzz, EveryLabelReadsBack) {
    std::mt19937 random(20);
    std::uniform_int_distribution<int> five(0, 99999);
    std::uniform_int_distribution<int> digit(0, 9);
    constexpr const char* arabic[] = {"٠", "١", "٢", "٣", "٤", "٥", "٦", "٧", "٨", "٩"};
    for (int round = 0; round < 20000; ++round) {
        const int item = five(random);
        const int grams = five(random);
        char label[16];
        std::snprintf(label, sizeof label, "20%05d%05d%d", item, grams, digit(random));
        std::string typed;
        for (const char* c = label; *c != 0; ++c)
            typed += round % 2 == 0 ? std::string(1, *c) : std::string(arabic[*c - '0']);
        const auto entry = sales::read_entry(typed);
        ASSERT_EQ(entry.form, sales::EntryForm::scale_label) << typed;
        ASSERT_EQ(entry.text, std::to_string(item));
        ASSERT_DOUBLE_EQ(entry.quantity * 1000, grams);
    }
}

TEST(ScaleLabelFuzz, OneByteOffIsNeverReadAsAnotherWeight) {
    std::mt19937 random(13);
    const std::string label = "2000123004500";
    std::uniform_int_distribution<std::size_t> place(0, label.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 20000; ++round) {
        std::string changed = label;
        const std::size_t at = place(random);
        switch (round % 3) {
            case 0:
                changed[at] = static_cast<char>(byte(random));
                break;
            case 1:
                changed.erase(at, 1);
                break;
            default:
                changed.insert(at, 1, static_cast<char>(byte(random)));
        }
        const auto entry = sales::read_entry(changed);
        if (entry.form != sales::EntryForm::scale_label) continue;
        // If it still reads as a label, the weight is that of its own digits.
        const std::string seen = sales::normalize_scan(changed);
        ASSERT_EQ(seen.size(), 13u) << changed;
        ASSERT_EQ(seen.find_first_not_of("0123456789"), std::string::npos);
        ASSERT_DOUBLE_EQ(entry.quantity, std::stod(seen.substr(7, 5)) / 1000);
    }
}

}  // namespace
