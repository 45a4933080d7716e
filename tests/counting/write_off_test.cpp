// Goods that leave the stock without a sale, and the lists of low stock and of expiring goods.
#include "counting/write_off.h"

#include <gmock/gmock.h>

#include "counting/messages.h"
#include "counting/needs.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using counting::WriteOffLine;
using counting::WrittenOff;

// Store 1 holds 4 milk until 2026/11/25, 6 until 2026/12/20 and none of the batch of 2026/11/01 (cost 8,
// minimum 12, 12 in a carton); store 2 holds 3 oil, of which 5 are wanted.
class Goods : public ::testing::Test {
  protected:
    Goods() {
        session.user_code = 1;
        for (const char* statement : {
                 "insert into items (code,name,num1,num3,price11,mquan) select 100,N'لبن',1,12,8,12",
                 "insert into items (code,name,num1,price11,mquan) select 200,N'زيت',1,20,5",
                 "insert into items (code,name,num1,mquan,sale_only) select 400,N'توصيل',1,5,1",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2026/11/01',0",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2026/11/25',4",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2026/12/20',6",
                 "insert into stk (icode,stcode,quan) select 200,2,3",
             })
            shop.sql(statement);
    }
    std::string add(const WrittenOff& typed) {
        auto made = counting::write_off_line(shop.connection(), 1, typed, lines);
        if (const auto* refusal = std::get_if<common::Refusal>(&made)) return refusal->text;
        lines.push_back(std::get<WriteOffLine>(made));
        return "";
    }
    std::string text_of(const std::variant<std::int64_t, common::Refusal>& result) {
        if (const auto* refusal = std::get_if<common::Refusal>(&result)) return refusal->text;
        return std::to_string(std::get<std::int64_t>(result));
    }
    std::string save() {
        return text_of(counting::write_off(shop.connection(), session, services.clock, 1, lines));
    }
    std::string reverse(std::int64_t number) {
        return text_of(counting::reverse_write_off(shop.connection(), session, services.clock, number));
    }
    std::string stock() {
        std::string text;
        for (const auto& batch : counting::read_batches(shop.connection(), 1, 100))
            text += common::date_text(batch.expiry) + " " + database::text_of(batch.held) + ";";
        return text;
    }

    test::Shop shop;
    signin::Session session;
    test::RememberedServices services;
    std::vector<WriteOffLine> lines;
};

TEST_F(Goods, AreWrittenOffAndComeBackOnce) {
    namespace message = counting::message;
    const common::Date december{2026, 12, 20};
    EXPECT_EQ(add({.item = 100, .quantity = "5", .expiry = december, .reason = " كسر it's "}), "");
    EXPECT_EQ(add({.item = 100, .quantity = "3", .expiry = {}, .reason = "تالف"}), "");
    // One is left of the batch, two of the item.
    const std::string not_so_many(message::not_so_many);
    EXPECT_EQ(add({.item = 100, .quantity = "1.5", .expiry = december, .reason = "تالف"}),
              not_so_many + "1\nلبن");
    EXPECT_EQ(add({.item = 100, .unit_level = 3, .expiry = {}, .reason = "تالف"}), not_so_many + "2\nلبن");
    EXPECT_EQ(add({.item = 100, .quantity = "0", .expiry = {}, .reason = "تالف"}),
              message::quantity_above_zero);
    EXPECT_EQ(add({.item = 100, .expiry = {}, .reason = "  "}), message::enter_reason);
    EXPECT_EQ(add({.item = 100, .expiry = {}, .reason = std::string(500, 'x')}),
              common::message::text_too_long);
    EXPECT_EQ(add({.item = 400, .expiry = {}, .reason = "تالف"}), message::is_service);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(save(), "1");
    EXPECT_EQ(stock(), "2026/11/25 1;2026/12/20 1;");
    // Another office has taken the goods meanwhile: nothing is written.
    EXPECT_EQ(save(), not_so_many + "1\nلبن");
    auto rows = counting::read_write_offs(shop.connection(), {2026, 11, 21}, {2026, 11, 21});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(counting::value_of(rows).text(), "64.00");
    EXPECT_EQ(rows.front().line.reason, "كسر it's");

    EXPECT_EQ(reverse(1), "2");
    EXPECT_EQ(reverse(1), message::already_reversed);
    EXPECT_EQ(reverse(2), message::is_reversal);
    rows = counting::read_write_offs(shop.connection(), {2026, 11, 21}, {2026, 11, 21}, 1);
    EXPECT_EQ(rows.size(), 4U);
    EXPECT_EQ(counting::value_of(rows).text(), "0.00");
    EXPECT_EQ(shop.number("select sum(quan) from stk where icode = 100"), 10);
    EXPECT_TRUE(counting::read_write_offs(shop.connection(), {2026, 11, 22}, {2026, 11, 30}).empty());
}

TEST_F(Goods, ThatRunShortOrOutOfDateAreListed) {
    const auto names = [](const auto& rows) {
        std::string text;
        for (const auto& row : rows)
            text += row.name + " " + database::text_of(row.held) + ";";
        return text;
    };
    EXPECT_EQ(names(counting::read_low_stock(shop.connection())), "زيت 3;لبن 10;");
    EXPECT_EQ(names(counting::read_low_stock(shop.connection(), 2)), "زيت 3;لبن 0;");
    shop.sql("update items set stop = 1 where code = 100");
    EXPECT_EQ(names(counting::read_low_stock(shop.connection(), 1)), "زيت 0;");
    const auto expiring = counting::read_expiring(shop.connection(), {2026, 12, 20});
    EXPECT_EQ(names(expiring), "لبن 4;لبن 6;");
    EXPECT_EQ(expiring.front().days_left({2026, 11, 27}), -2);
    EXPECT_EQ(expiring.back().value().text(), "48.00");
    EXPECT_EQ(names(counting::read_expiring(shop.connection(), {2026, 12, 19}, 1)), "لبن 4;");
    EXPECT_EQ(names(counting::read_expiring(shop.connection(), {2026, 12, 31}, 2)), "");
}

}  // namespace
