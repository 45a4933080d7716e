#include "purchases/goods_in.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "buyer.h"
#include "purchases/average_cost.h"
#include "purchases/messages.h"
#include "purchases/new_prices.h"
#include "purchases/saved_receipts.h"
#include "support/faulty_connection.h"

namespace purchases {
namespace {

TEST(AverageCost, IsWeightedByWhatIsInStock) {
    const struct {
        Valued stock;
        double quantity, value;
        double in, out;  // what a unit costs after the goods came in, and after they left instead
    } cases[] = {
        {{20, 10}, 30, 240, 8.8, 10},    // 200 + 240 for 50; more leaves than there is
        {{40, 10}, 10, 60, 9.2, 11.33},  // 460 for 50; 340 for 30
        {{0, 10}, 4, 50, 12.5, 10},      // nothing in stock: the new cost
        {{-5, 10}, 4, 50, 12.5, 10},     // sold before it was taken in
        {{8, 0}, 4, 50, 12.5, 0},        // the stock's cost is not known
        {{10, 6}, 10, 0, 3, 6},          // free goods
        {{10, 6}, 5, 100, 10.67, 6},     // 160 for 15; more would leave than the stock is worth
    };
    for (const auto& one : cases) {
        EXPECT_NEAR(with_goods(one.stock, one.quantity, one.value).cost, one.in, 0.005);
        EXPECT_NEAR(without_goods(one.stock, one.quantity, one.value).cost, one.out, 0.005);
    }
}

TEST(NewPrices, AreRoundedHalfUpToTheirStep) {
    EXPECT_DOUBLE_EQ(price_above(3.6, 25, 25), 4.5);
    EXPECT_DOUBLE_EQ(price_above(10, 12.5, 50), 11.5);  // 11.25
    EXPECT_DOUBLE_EQ(price_above(1, 10, 25), 1);        // 1.1
    EXPECT_DOUBLE_EQ(price_above(0.7, 15, 0), 0.81);    // 0.805
}

TEST(GoodsInDesk, AReceiptMovesStockCostBalanceAndPrices) {
    test::Buyer buyer;
    buyer.shop.sql("update items set price13 = 5, price14 = 6, price15 = 7 where code = 200");
    GoodsIn desk = buyer.receipt(buyer.shop.connection());
    buyer.add(desk, 200, 1, 0.5);  // the same goods again raise their line, and leave again
    desk.row = 1;
    EXPECT_EQ(desk.line_fields().quantity, "30.5");
    auto tea = desk.line_fields();
    tea.quantity = "30";
    ASSERT_FALSE(desk.set_line(tea));
    ASSERT_FALSE(desk.set_margin("25", 25, false));
    // Retail falls from 6.00 to 4.50, below wholesale.
    EXPECT_TRUE(desk.save());
    EXPECT_THAT(
        buyer.services.prompts.questions,
        testing::ElementsAre(testing::StartsWith(std::string(message::lowered_with_retail) + "\nشاي\n")));
    buyer.services.prompts.answers = {true};
    ASSERT_FALSE(desk.save());
    ASSERT_TRUE(desk.saved());
    EXPECT_EQ(desk.saved()->number, 1);
    EXPECT_EQ(desk.saved()->balance.text(), "1224.00");  // 900 + 324

    EXPECT_EQ(
        buyer.shop.cell("select cast(ptot as varchar) + ' ' + cast(pdis as varchar) + ' ' + perm_no from "
                        "purchase where ctype = 1"),
        "360 36 A-17");
    EXPECT_EQ(buyer.stock(100), "44 3000/01/01;");
    EXPECT_EQ(buyer.stock(200), "30 2027/03/31;");
    // 25 of 10 and 24 for 216 are 49 for 466.
    EXPECT_DOUBLE_EQ(buyer.shop.number("select price11 from items where code = 100"), 9.5102);
    EXPECT_DOUBLE_EQ(buyer.shop.number("select price21 from items where code = 100"), 114.1224);
    EXPECT_DOUBLE_EQ(buyer.shop.number("select price12 from items where code = 100"), 12);
    EXPECT_DOUBLE_EQ(buyer.shop.number("select price11 from items where code = 200"), 3.6);
    EXPECT_EQ(buyer.shop.cell("select cast(price12 as varchar) + ' ' + cast(price13 as varchar) + ' ' + "
                              "cast(price14 as varchar) + ' ' + cast(price15 as varchar) from items where "
                              "code = 200"),
              "4.5 4.5 4.5 7");
    EXPECT_DOUBLE_EQ(buyer.shop.number("select av_price from purdata where icode = 200"), 3.6);
    EXPECT_DOUBLE_EQ(buyer.shop.number("select quan1 from purdata where icode = 100"), 24);

    // The answer was lost and the user presses again: it is one document.
    ASSERT_FALSE(desk.save());
    EXPECT_EQ(buyer.owed(3), 1224);
    EXPECT_EQ(buyer.shop.number("select count(*) from purchase"), 1);

    // One pack of the two goes back, at what it cost after both discounts. A start of a till has emptied the
    // expiry dates of purdata meanwhile.
    buyer.shop.sql("update purdata set edate = '3000/01/01'");
    const auto former = load_receipt(buyer.shop.connection(), PurchaseKind::supply, 1);
    ASSERT_TRUE(former);
    EXPECT_EQ(former->net().text(), "324.00");
    EXPECT_EQ(former->lines[1].batch(), (common::Date{2027, 3, 31}));
    GoodsIn back = buyer.desk();
    back.begin(return_of(buyer.shop.connection(), *former, 1));
    back.row = 0;
    EXPECT_EQ(back.units().size(), 1U);  // two pieces are no two packs
    auto oil = back.line_fields();
    oil.quantity = "3";
    ASSERT_TRUE(back.set_line(oil));
    oil.quantity = "1";
    ASSERT_FALSE(back.set_line(oil));
    back.row = 1;
    back.remove_line();
    ASSERT_FALSE(back.save());
    EXPECT_EQ(buyer.owed(3), 1116);
    EXPECT_EQ(buyer.stock(100), "32 3000/01/01;");
    // The rest may still go, but no more.
    const Receipt rest = return_of(buyer.shop.connection(), *former, 1);
    EXPECT_EQ(rest.lines[0].quantity, 1);
    EXPECT_EQ(rest.net().text(), "216.00");
    Receipt greedy = rest;
    greedy.lines[0].quantity = 2;
    greedy.id = 77;
    EXPECT_THROW(save(buyer.shop.connection(), buyer.session, greedy, buyer.services.clock.now()), Refused);
    const auto listed = list_receipts(buyer.shop.connection(), {{2026, 11, 1}, {2026, 11, 30}, 3});
    ASSERT_EQ(listed.size(), 2);
    EXPECT_NEAR(listed[1].kind == PurchaseKind::supply ? listed[1].back : listed[0].back, 12.0 / 54, 1e-9);
}

TEST(GoodsInDesk, ACorrectionTakesTheReceiptBackAndWritesItAnew) {
    test::Buyer buyer;
    GoodsIn wrong = buyer.desk();
    wrong.begin(PurchaseKind::supply);
    wrong.head.supplier = 4;
    buyer.add(wrong, 200, 1, 30);
    auto line = wrong.line_fields();
    line.price = "4";
    ASSERT_FALSE(wrong.set_line(line));
    ASSERT_FALSE(wrong.save());
    EXPECT_EQ(buyer.owed(4), 120);
    buyer.shop.sql("update stk set quan = quan - 5 where icode = 200");  // a till sells

    GoodsIn right = buyer.desk();
    Receipt copy = *load_receipt(buyer.shop.connection(), PurchaseKind::supply, 1);
    copy.corrects = 1;
    right.begin(copy);
    line = right.line_fields();
    line.quantity = "10";
    ASSERT_FALSE(right.set_line(line));
    right.foot.drawer = 1;                                               // paid at once
    buyer.shop.sql("update stk set quan = quan - 2 where icode = 200");  // and once more before the save
    ASSERT_FALSE(right.save());
    EXPECT_EQ(buyer.stock(200), "3 3000/01/01;");  // 30 - 7 - 30 + 10
    EXPECT_EQ(buyer.shop.number("select price11 from items where code = 200"), 4);
    EXPECT_EQ(buyer.owed(4), 0);  // 120 - 120 + 40 - 40
    EXPECT_EQ(
        buyer.shop.cell("select cast(quan as varchar) + ' ' + cast(ptype as varchar) + ' ' + cast(cash_n as "
                        "varchar) from vencuspay where ztype = 1 and vcode = 4"),
        "40 1 1");
    EXPECT_EQ(buyer.shop.number("select sum(case when ctype = 1 then quan1 else 0 - quan1 end) from purdata"),
              10);
    copy.id = 5;
    EXPECT_THROW(save(buyer.shop.connection(), buyer.session, copy, buyer.services.clock.now()), Refused);

    const auto account =
        accounts::vendor_statement(buyer.shop.connection(), 4, {2026, 11, 1}, {2026, 11, 30});
    EXPECT_EQ(account.credits.text() + " " + account.debits.text() + " " + account.closing.text(),
              "160.00 160.00 0.00");
    EXPECT_EQ(account.rows.size(), 6);
    const auto later = accounts::vendor_statement(buyer.shop.connection(), 3, {2026, 12, 1}, {2026, 12, 31});
    EXPECT_EQ(later.brought_forward.text(), "900.00");
}

TEST(GoodsInDesk, RefusesWhatIsTypedWrongAndAsksAboutTheUnusual) {
    test::Buyer buyer;
    GoodsIn desk = buyer.desk();
    desk.begin(PurchaseKind::supply);
    EXPECT_EQ(desk.save()->text, message::choose_supplier);
    desk.head.supplier = 3;
    EXPECT_EQ(desk.save()->text, message::no_lines);
    EXPECT_EQ(buyer.add(desk, 300, 1, 1)->text, message::service);
    ASSERT_FALSE(buyer.add(desk, 200, 1, 1));
    const LineFields good = desk.line_fields();
    const struct {
        std::string LineFields::*field;
        const char* typed;
        const char* at;
    } wrong[] = {
        {&LineFields::quantity, "0", "line_quantity"},
        {&LineFields::quantity, "10000000", "line_quantity"},
        {&LineFields::quantity, "1,5", "line_quantity"},
        {&LineFields::price, "-1", "line_price"},
        {&LineFields::price, "x", "line_price"},
        {&LineFields::price, "999999999", "line_price"},
        {&LineFields::total, "1.234", "line_total"},
        {&LineFields::discount, "5", "line_discount"},
        {&LineFields::expiry, "31/2/2027", "line_expiry"},
        {&LineFields::retail, "abc", "line_retail"},
    };
    for (const auto& one : wrong) {
        LineFields typed = good;
        typed.*one.field = one.typed;
        const auto refused = desk.set_line(typed);
        ASSERT_TRUE(refused) << one.typed;
        EXPECT_EQ(refused->field, one.at) << one.typed;
    }
    desk.head.date = {2026, 11, 22};
    EXPECT_EQ(desk.save()->text, message::future_date);
    desk.head.date = {2026, 11, 21};
    desk.head.invoice = "123456789012345678901";
    EXPECT_EQ(desk.save()->field, "receipt_invoice");
    desk.head.invoice = "7' or 1=1";

    // Goods that cost nothing, then goods above their selling price, then old ones: each is asked about.
    EXPECT_TRUE(desk.save());
    LineFields typed = good;
    typed.price = "6";
    ASSERT_FALSE(desk.set_line(typed));
    EXPECT_TRUE(desk.save());
    typed = desk.line_fields();
    typed.price = "5";
    typed.expiry = "20/11/2026";
    ASSERT_FALSE(desk.set_line(typed));
    EXPECT_TRUE(desk.save());
    EXPECT_EQ(buyer.shop.number("select count(*) from purchase"), 0);
    buyer.services.prompts.answers = {true};
    EXPECT_FALSE(desk.save());
    EXPECT_THAT(buyer.services.prompts.questions,
                testing::ElementsAre(testing::StartsWith(std::string(message::free_goods)),
                                     testing::StartsWith(std::string(message::below_cost)),
                                     testing::StartsWith(std::string(message::expired)),
                                     testing::StartsWith(std::string(message::expired))));

    // The same invoice of the supplier again; a return of more than the batch holds.
    desk.begin(PurchaseKind::supply);
    desk.head.supplier = 3;
    desk.head.invoice = "7' or 1=1";
    buyer.add(desk, 200, 1, 1);
    EXPECT_TRUE(desk.save());
    EXPECT_EQ(buyer.services.prompts.questions.back().find("7' or 1=1"),
              std::string(message::same_invoice_before).size());
    // A closed day.
    buyer.shop.sql("insert into till_day (stcode,[day]) select 1,'2026/11/21'");
    desk.head.invoice.clear();
    EXPECT_TRUE(desk.save());
    EXPECT_EQ(buyer.services.prompts.questions.back(), message::ask_closed_day);
    buyer.shop.sql("delete from till_day");
    desk.begin(PurchaseKind::vendor_return);
    desk.head.supplier = 3;
    buyer.add(desk, 200, 1, 2);
    EXPECT_EQ(desk.receipt().lines[0].expiry, (common::Date{2026, 11, 20}));
    EXPECT_EQ(desk.save()->field, "line_quantity");
    EXPECT_EQ(buyer.stock(200), "1 2026/11/20;");
    buyer.session.is_read_only = true;
    EXPECT_TRUE(desk.save());
}

// Three for 10.00 go back one by one, and five of ten at another price than they cost.
TEST(GoodsInDesk, PartsThatGoBackComeToWhatTheLineCost) {
    test::Buyer buyer;
    GoodsIn desk = buyer.desk();
    desk.begin(PurchaseKind::supply);
    desk.head.supplier = 4;
    for (const auto& [item, quantity, total] : {std::tuple(200, 3, "10"), std::tuple(100, 10, "100")}) {
        buyer.add(desk, item, 1, quantity);
        auto line = desk.line_fields();
        line.total = total;
        ASSERT_FALSE(desk.set_line(line));
    }
    ASSERT_FALSE(desk.save());
    const auto former = load_receipt(buyer.shop.connection(), PurchaseKind::supply, 1);
    const auto give_back = [&](std::size_t at, double quantity, std::optional<double> price) {
        Receipt back = return_of(buyer.shop.connection(), *former, 1);
        back.lines = {back.lines[at]};
        back.lines[0].quantity = quantity;
        if (price) back.lines[0].price = *price;
        back.date = {2026, 11, 21};
        save(buyer.shop.connection(), buyer.session, back, buyer.services.clock.now());
        return back.net().text();
    };
    EXPECT_EQ(give_back(1, 5, 8), "40.00");
    EXPECT_EQ(give_back(0, 1, {}), "3.33");
    EXPECT_EQ(give_back(0, 1, {}), "3.34");  // half of 6.67
    EXPECT_EQ(give_back(0, 1, {}), "3.33");
    EXPECT_EQ(give_back(0, 5, {}), "50.00");
    EXPECT_EQ(buyer.owed(4), 10);
}

// The power fails at every statement in turn: nothing of the receipt is written, its draft is kept, and the
// next save writes it once.
TEST(GoodsInDesk, IsWrittenWholeOrNotAtAll) {
    test::Buyer buyer;
    const auto figures = [&] {
        std::string text = buyer.stock(100) + buyer.stock(200);
        for (const char* query : {"select count(*) from purchase", "select count(*) from purdata",
                                  "select count(*) from vencuspay", "select sum(vacc) from vendata",
                                  "select sum(price11) + sum(price12) from items"})
            text += " " + buyer.shop.cell(query);
        return text;
    };
    const std::string before = figures();
    std::int64_t failures = 0;
    for (std::int64_t n = 1;; ++n) {
        test::FaultyConnection faulty(buyer.shop.connection());
        GoodsIn desk = buyer.receipt(faulty);
        desk.foot.drawer = 1;
        faulty.fail_at(n, test::FaultyConnection::Fault::lost);
        try {
            ASSERT_FALSE(desk.save());
            if (!faulty.has_failed()) break;
        } catch (const database::Error&) {
            ++failures;
        }
        if (buyer.shop.number("select count(*) from purchase") != 0) break;  // only what is told failed
        ASSERT_EQ(figures(), before) << "at statement " << n;
        buyer.services.prompts.answers = {true};
        EXPECT_TRUE(buyer.desk().left_open());
    }
    EXPECT_GT(failures, 15);
    EXPECT_EQ(buyer.shop.number("select count(*) from purchase"), 1);
    EXPECT_EQ(buyer.shop.number("select count(*) from vencuspay"), 1);
    EXPECT_EQ(buyer.owed(3), 900);
}

}  // namespace
}  // namespace purchases
