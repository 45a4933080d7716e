// Stock-taking while tills sell: what a count finds, and what its booking does to the stock.
#include <gmock/gmock.h>

#include "common/numbers.h"
#include "counting/booking.h"
#include "counting/messages.h"
#include "support/child.h"
#include "support/faulty_connection.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

using counting::Count;
using counting::Counted;
using database::Sql;

// The office on one machine; several work on one shop.
struct Office {
    explicit Office(std::int64_t user = 1, std::string computer = "office-1") {
        session.user_code = user;
        session.user_name = "مدير";
        session.store_code = 1;
        session.computer_name = std::move(computer);
        session.permissions = std::string(400, '1');
    }
    std::string add(database::Connection& shop, const Count& count, const Counted& counted) {
        const auto refusal = counting::add_line(shop, session, services.clock, count, counted);
        return refusal ? refusal->text : "";
    }
    std::string book(database::Connection& shop, const Count& count, bool missing_are_gone = false) {
        const auto refusal = counting::book_count(shop, session, services.clock, count, missing_are_gone);
        return refusal ? refusal->text : "";
    }
    signin::Session session;
    test::RememberedServices services;
};

// Store 1 holds 10 rice (cost 8) in batches of 4 until 2027/01/01 and 6 until 2027/06/01, 24 oil (cost 20, 12
// in a carton), 5 soap (cost 3.50) of another group, and a service.
class Counting : public ::testing::Test {
  protected:
    Counting() {
        for (const char* statement : {
                 "insert into item_types (code,name) select 1,N'بقالة'",
                 "insert into item_types (code,name) select 2,N'منظفات'",
                 "insert into items (code,name,itype,num1,price11,mquan) select 100,N'أرز',1,1,8,12",
                 "insert into items (code,name,itype,num1,num3,price11) select 200,N'زيت',1,1,12,20",
                 "insert into items (code,name,itype,num1,price11) select 300,N'صابون',2,1,3.5",
                 "insert into items (code,name,num1,sale_only) select 400,N'توصيل',1,1",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2027/01/01',4",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2027/06/01',6",
                 "insert into stk (icode,stcode,edate,quan) select 100,2,'3000/01/01',50",
                 "insert into stk (icode,stcode,edate,quan) select 200,1,'3000/01/01',24",
                 "insert into stk (icode,stcode,edate,quan) select 300,1,'3000/01/01',5",
             })
            shop.sql(statement);
    }
    database::Connection& connection() { return shop.connection(); }
    Count open(std::int64_t what, bool by_date = false) {
        const auto number = counting::open_count(connection(), office.session, office.services.clock,
                                                 {.store = 1, .what = what, .by_date = by_date});
        return *counting::read_count(connection(), std::get<std::int64_t>(number));
    }
    // A till that sells: it takes from the oldest batch.
    void sell(int item, int quantity, const char* batch = "3000/01/01") {
        shop.sql("update stk set quan = quan - " + std::to_string(quantity) + " where icode = " +
                 std::to_string(item) + " and stcode = 1 and edate = '" + std::string(batch) + "'");
    }
    // "item expiry quantity" of the batches of store 1.
    std::string stock() {
        std::string text;
        for (const auto& row : connection().query("select * from stk where stcode = 1 order by icode, edate"))
            text += row.text("icode") + " " + common::date_text(row.moment("edate").date) + " " +
                    row.text("quan") + ";";
        return text;
    }
    std::string found(const Count& count) {
        std::string text;
        for (const auto& one : counting::read_differences(connection(), count))
            text += std::to_string(one.item) + ": " + common::shortest_text(one.counted) + "/" +
                    common::shortest_text(one.stock) + " " + one.value().text() + ";";
        return text;
    }

    test::Shop shop;
    Office office;
};

TEST_F(Counting, ADifferenceBelongsToTheMomentOfItsCount) {
    const Count count = open(counting::all_items);
    Office second(2, "office-2");
    const auto other = test::open_shop(shop.file());

    // 8 of 10 rice are found: 2 are missing, worth 16. Then a till sells 3 from the oldest batch.
    EXPECT_EQ(office.add(connection(), count, {.item = 100, .quantity = "8"}), "");
    sell(100, 3, "2027/01/01");
    // Oil on two shelves, counted on two machines: 1 carton and 13 pieces are 25, one more than the books
    // have.
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .unit_level = 3}), "");
    EXPECT_EQ(second.add(*other, count, {.item = 200, .quantity = "13"}), "");
    sell(200, 2);
    // Soap is counted wrongly, and once more; a line for rice was a mistake.
    EXPECT_EQ(second.add(*other, count, {.item = 300, .quantity = "9"}), "");
    EXPECT_EQ(second.add(*other, count, {.item = 300, .quantity = "5", .replaces = true}), "");
    EXPECT_EQ(second.add(*other, count, {.item = 100, .quantity = "70"}), "");
    EXPECT_EQ(counting::remove_line(connection(), office.session, count, 6), std::nullopt);
    EXPECT_EQ(found(count), "100: 8/10 -16.00;200: 25/24 20.00;300: 5/5 0.00;");
    EXPECT_TRUE(counting::read_missing(connection(), count, {}).empty());

    EXPECT_EQ(office.book(connection(), count), "");
    // Rice 10 - 3 - 2: what is left of the oldest batch, then the next. Oil 24 - 2 + 1.
    EXPECT_EQ(stock(), "100 2027/01/01 0;100 2027/06/01 5;200 3000/01/01 23;300 3000/01/01 5;");
    EXPECT_EQ(shop.cell("select count(*) from modify"), "2");
    EXPECT_EQ(shop.cell("select quan from modify where icode = 100 and stcode = 1 and [user] = 1"), "-2");

    // A booked count stays as it is.
    const std::string closed(counting::message::count_closed);
    EXPECT_EQ(second.add(*other, count, {.item = 100}), closed);
    EXPECT_EQ(second.book(*other, count), closed);
    EXPECT_TRUE(counting::remove_line(*other, second.session, count, 1).has_value());
    EXPECT_EQ(stock(), "100 2027/01/01 0;100 2027/06/01 5;200 3000/01/01 23;300 3000/01/01 5;");
    EXPECT_EQ(found(count), "100: 8/10 -16.00;200: 25/24 20.00;300: 5/5 0.00;");
}

TEST_F(Counting, GoodsThatMovedBetweenTheLinesOfAnItemAreTold) {
    const Count count = open(counting::what_is_scanned);
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .quantity = "10"}), "");
    sell(200, 2);
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .quantity = "12"}), "");
    const auto first = counting::read_differences(connection(), count);
    EXPECT_EQ(first.front().moved_meanwhile, -2);
    EXPECT_EQ(first.front().surplus(), 0);
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .quantity = "21", .replaces = true}), "");
    const auto again = counting::read_differences(connection(), count);
    EXPECT_EQ(again.front().moved_meanwhile, 0);
    EXPECT_EQ(again.front().surplus(), -1);
}

TEST_F(Counting, WhatNobodyCountedIsGoneOnlyIfTheUserSaysSo) {
    const Count kept = open(1);
    EXPECT_EQ(office.add(connection(), kept, {.item = 300}), std::string(counting::message::other_group));
    EXPECT_EQ(office.add(connection(), kept, {.item = 100, .quantity = "10"}), "");
    const auto missing = counting::read_missing(connection(), kept, {});
    ASSERT_EQ(missing.size(), 1U);
    EXPECT_EQ(missing.front().item, 200);
    EXPECT_EQ(missing.front().value().text(), "-480.00");
    const std::string before = stock();
    EXPECT_EQ(office.book(connection(), kept), "");
    EXPECT_EQ(stock(), before);

    const Count gone = open(1);
    EXPECT_EQ(office.add(connection(), gone, {.item = 100, .quantity = "10"}), "");
    EXPECT_EQ(office.book(connection(), gone, true), "");
    EXPECT_EQ(stock(), "100 2027/01/01 4;100 2027/06/01 6;200 3000/01/01 0;300 3000/01/01 5;");
    EXPECT_EQ(found(gone), "100: 10/10 0.00;200: 0/24 -480.00;");
}

TEST_F(Counting, BatchesAreCountedByTheirDates) {
    const Count count = open(counting::all_items, true);
    const common::Date june{2027, 6, 1};
    const common::Date new_date{2027, 9, 1};
    EXPECT_EQ(office.add(connection(), count, {.item = 100, .quantity = "5", .expiry = june}), "");
    EXPECT_EQ(office.add(connection(), count, {.item = 100, .quantity = "2", .expiry = new_date}), "");
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .quantity = "24"}), "");
    EXPECT_EQ(office.add(connection(), count, {.item = 300, .quantity = "5"}), "");
    EXPECT_EQ(counting::read_missing(connection(), count, {}).size(), 1U);  // rice until 2027/01/01
    EXPECT_EQ(office.book(connection(), count, true), "");
    EXPECT_EQ(stock(),
              "100 2027/01/01 0;100 2027/06/01 5;100 2027/09/01 2;200 3000/01/01 24;300 3000/01/01 5;");
}

TEST_F(Counting, RefusesWhatWouldSpoilACount) {
    namespace message = counting::message;
    const Count first = open(counting::all_items);
    const Count second = open(counting::what_is_scanned);
    EXPECT_EQ(office.book(connection(), second), message::nothing_counted);
    EXPECT_EQ(office.add(connection(), first, {.item = 100, .quantity = "8"}), "");
    // Both would correct the same shortage.
    EXPECT_EQ(office.add(connection(), second, {.item = 100, .quantity = "8"}),
              std::string(message::counted_elsewhere) + "1");
    const struct {
        Counted counted;
        std::string_view text;
    } cases[] = {
        {{.item = 999}, message::no_such_item},
        {{.item = 400}, message::is_service},
        {{.item = 100, .unit_level = 2}, message::no_unit},
        {{.item = 100, .quantity = "x'"}, message::wrong_quantity},
        {{.item = 100, .quantity = ""}, message::wrong_quantity},
        {{.item = 100, .quantity = "-1"}, common::message::no_minus},
        {{.item = 100, .quantity = "99999999"}, message::quantity_too_large},
        {{.item = 200, .unit_level = 3, .quantity = "9999999"}, message::quantity_too_large},
    };
    for (const auto& test : cases)
        EXPECT_EQ(office.add(connection(), first, test.counted), test.text) << test.counted.quantity;
    EXPECT_EQ(found(first), "100: 8/10 -16.00;");
    const auto refused = counting::open_count(connection(), office.session, office.services.clock,
                                              {.store = 1, .what = {}, .title = "it's"});
    EXPECT_EQ(std::get<common::Refusal>(refused).field, "count_scope");
    // A count that was given up changes nothing, and its items can be counted elsewhere.
    EXPECT_EQ(counting::give_up_count(connection(), office.session, office.services.clock, first),
              std::nullopt);
    EXPECT_EQ(office.add(connection(), second, {.item = 100, .quantity = "0"}), "");
    EXPECT_EQ(office.book(connection(), second), "");
    EXPECT_EQ(stock(), "100 2027/01/01 0;100 2027/06/01 0;200 3000/01/01 24;300 3000/01/01 5;");
}

// Killed before each of its statements, or with each of them failing, a booking is done whole or not at all.
TEST_F(Counting, ABookingIsDoneWholeOrNotAtAll) {
    if (test::test_server()) GTEST_SKIP() << test::needs_shop_files;
    const Count count = open(counting::all_items);
    EXPECT_EQ(office.add(connection(), count, {.item = 100, .quantity = "8"}), "");
    EXPECT_EQ(office.add(connection(), count, {.item = 200, .quantity = "25"}), "");
    const std::string before = stock();
    const std::string after = "100 2027/01/01 2;100 2027/06/01 6;200 3000/01/01 25;300 3000/01/01 0;";
    const auto state = [&] {
        return stock() + shop.cell("select count(*) from modify") +
               shop.cell("select count(*) from till_count_line") +
               shop.cell("select count(*) from till_count where closed is not null");
    };
    const std::string untouched = before + "020";
    ASSERT_EQ(state(), untouched);
    int statements = 0;
    for (bool is_done = false; !is_done; ++statements) {
        ASSERT_LT(statements, 60);
        const pid_t child = test::start_child([&] {
            const auto own = test::open_shop(shop.file());
            test::FaultyConnection faulty(*own);
            faulty.call_before(statements + 1, [] { kill(getpid(), SIGKILL); });
            office.book(faulty, count, true);
            return true;
        });
        is_done = WIFEXITED(test::wait_for(child));
        if (state() != untouched) {
            EXPECT_EQ(state(), after + "331");
            break;
        }
        test::FaultyConnection faulty(connection());
        faulty.fail_at(statements + 1, test::FaultyConnection::Fault::passing);
        EXPECT_THROW(office.book(faulty, count, true), database::Error) << statements;
        ASSERT_EQ(state(), untouched) << statements;
    }
    EXPECT_GT(statements, 8);
    EXPECT_EQ(state(), after + "331");
}

}  // namespace
