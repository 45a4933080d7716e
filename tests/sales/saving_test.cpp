// What a saved invoice writes, and what stops it before anything is written.
#include "sales/saving.h"
#include "sales/messages.h"

#include <algorithm>
#include <functional>

#include "sales/returns.h"
#include "sales/till.h"
#include "support/faulty_connection.h"

namespace {

using common::Amount;
using sales::Invoice;
using sales::KindOption;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Till;

constexpr const char* written_tables[] = {"sales", "saledata", "btran", "sttran", "tmp_tran"};

std::string stock(Till& till, int item, std::int64_t store, const std::string& expiry) {
    return till.shop.cell("select quan from stk where icode = " + std::to_string(item) +
                          " and stcode = " + std::to_string(store) + " and edate = '" + expiry + "'");
}

TEST(Saving, CashSaleWritesHeaderLinesAndStockOldestFirst) {
    Till till;
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 5, 10), Till::line(200, 2, 240, 12)};
    invoice.discount_percent = 10;
    invoice.worker = 1;
    auto saving = till.saving();
    ASSERT_EQ(saving.save(invoice, {Amount(500), Amount(23)}), SaveOutcome::saved);

    EXPECT_EQ(invoice.number, 1);
    const auto header = till.shop.connection().query("select * from sales");
    ASSERT_EQ(header.size(), 1u);
    const auto& row = header.front();
    EXPECT_EQ(row.integer("pnum"), 1);
    EXPECT_EQ(row.integer("vcode"), -1);
    EXPECT_EQ(row.moment("Date").date, (common::Date{2026, 11, 21}));
    EXPECT_EQ(row.moment("time_").time, (common::TimeOfDay{10, 42, 0, 0}));
    EXPECT_EQ(row.integer("ctype"), 0);
    EXPECT_DOUBLE_EQ(row.number("ptot"), 530);
    EXPECT_DOUBLE_EQ(row.number("pdis"), 53);
    EXPECT_EQ(row.integer("Shift"), 14);
    EXPECT_EQ(row.integer("stype"), 0);
    EXPECT_EQ(row.integer("ptype"), 1);
    EXPECT_EQ(row.integer("User"), 1);
    EXPECT_EQ(row.integer("wCode"), 1);
    EXPECT_TRUE(row.null("link"));
    EXPECT_TRUE(row.null("disboun"));
    EXPECT_TRUE(row.null("safe"));

    const auto lines = till.shop.connection().query("select * from saledata order by serial");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines.rows()[1].integer("icode"), 200);
    EXPECT_DOUBLE_EQ(lines.rows()[1].number("quan"), 2);
    EXPECT_DOUBLE_EQ(lines.rows()[1].number("quan1"), 24);
    EXPECT_DOUBLE_EQ(lines.rows()[1].number("unit1"), 12);
    EXPECT_EQ(lines.rows()[1].text("note"), "زيت");

    EXPECT_EQ(stock(till, 100, 1, "2027/01/01"), "0");
    EXPECT_EQ(stock(till, 100, 1, "2027/06/01"), "2");
    EXPECT_EQ(stock(till, 100, 2, "2026/12/01"), "50") << "another store's older batch was touched";
    EXPECT_EQ(stock(till, 200, 1, "3000/01/01"), "26");
    EXPECT_TRUE(till.services.prompts.messages.empty());
}

TEST(Saving, KindsAndPaymentsBookTheirParties) {
    struct Case {
        const char* name;
        std::function<void(Invoice&)> prepare;
        const char* query;
        const char* expected;
    };
    const auto card = [](Invoice& i) {
        i.payment = PaymentOption::card;
        i.card = {3, "O'Brien", "77'1"};
    };
    const auto account = [](Invoice& i) {
        i.payment = PaymentOption::account;
        i.customer = 7;
    };
    const Case cases[] = {
        {"account sale raises the balance by the net", account, "select cacc from custdata where ccode = 7",
         "118"},
        {"account sale is the customer's", account, "select vcode from sales", "7"},
        {"card sale is booked to the bank", card,
         "select cast(bcode as varchar) + '|' + cast(type as varchar) + '|' + cast(type1 as varchar) + '|' + "
         "note1 from btran",
         "3|1|0| مبيعات إئتمان رقم مرجعي 77'1"},
        {"card sale pays the net into the bank", card, "select quan from btran", "18"},
        {"card sale stays out of the drawer", card, "select safe from sales", "1"},
        {"card sale keeps the holder", card, "select credit_name from sales", "O'Brien"},
        {"tips sale names its receiver",
         [](Invoice& i) {
             i.payment = PaymentOption::tips;
             i.tips_receiver = 5;
         },
         "select link from sales", "5"},
        {"tips sale grants its discount as tips",
         [](Invoice& i) {
             i.payment = PaymentOption::tips;
             i.tips_receiver = 5;
         },
         "select disboun from sales", "2"},
        {"craftsman line is sold", [](Invoice& i) { i.lines[0].salver_code = 9; }, "select cqty from salver",
         "4"},
        {"general item moves no stock", [](Invoice& i) { i.lines[0].item_code.reset(); },
         "select sum(quan) from stk where stcode = 1", "57"},
        {"service moves no stock", [](Invoice& i) { i.lines[0] = Till::line(300, 100, 1); },
         "select sum(quan) from stk where stcode = 1", "57"},
        {"quotes in a name stay text", [](Invoice& i) { i.lines[0].name = "x'); drop table sales --"; },
         "select note from saledata", "x'); drop table sales --"},
        {"account invoice keeps its permit",
         [&](Invoice& i) {
             account(i);
             i.permit_opened = true;
             i.permit_number = " م-15 ";
         },
         "select perm_no from sales", "م-15"},
        {"a cash invoice has no permit",
         [](Invoice& i) {
             i.permit_opened = true;
             i.permit_number = "5";
         },
         "select count(perm_no) from sales", "0"},
        {"walk-in customer is added",
         [](Invoice& i) {
             i.walk_in = sales::WalkInCustomer{2, true, "😀 سامي", std::string(70, '1'), ""};
         },
         "select zname from cust_cash where zcode = 2", "😀 سامي"},
        {"a walk-in code taken meanwhile moves on",
         [](Invoice& i) {
             i.walk_in = sales::WalkInCustomer{1, true, "سامي", "", ""};
         },
         "select cust_c from sales", "2"},
        {"a walk-in customer is ignored on an account invoice",
         [&](Invoice& i) {
             account(i);
             i.walk_in = sales::WalkInCustomer{2, true, "سامي", "", ""};
         },
         "select isnull(cust_c, 0) + (select count(*) from cust_cash) from sales", "1"},
        {"known walk-in customer is brought up to date",
         [](Invoice& i) {
             i.walk_in = sales::WalkInCustomer{1, false, "منى", "011", "m@x"};
         },
         "select zphone from cust_cash where zcode = 1", "011"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        Till till;
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 2, 10)};
        invoice.discount_percent = 10;
        test.prepare(invoice);
        auto saving = till.saving();
        EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
        EXPECT_EQ(till.shop.cell(test.query), test.expected);
    }
}

TEST(Saving, ReturnsMirrorSales) {
    Till till;
    auto saving = till.saving();
    Invoice sale = till.invoice();
    sale.payment = PaymentOption::account;
    sale.customer = 7;
    sale.lines = {Till::line(100, 5, 49.99), Till::line(200, 3, 1.98)};
    sale.lines[0].discount = 0.37;
    sale.lines[1].salver_code = 9;
    sale.discount_percent = 7;
    ASSERT_EQ(saving.save(sale, {}), SaveOutcome::saved);

    const auto recalled = sales::recall_newest(till.shop.connection(), 1, sales::Series::account_sales, 1);
    ASSERT_TRUE(recalled);
    EXPECT_EQ(recalled->invoice.net(), sale.net());
    EXPECT_EQ(till.printer.printed.back().first.balance, Amount(337.63)) << "100.00 + 237.63";
    Invoice back = sales::return_of(till.shop.connection(), *recalled);
    EXPECT_EQ(back.net(), sale.net());
    ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved) << till.services.prompts.last();
    EXPECT_EQ(till.printer.printed.back().first.balance, Amount(100));

    EXPECT_NEAR(till.shop.number("select cacc from custdata where ccode = 7"), 100, 1e-9);
    EXPECT_EQ(till.shop.cell("select sum(quan) from stk where stcode = 1"), "57");
    EXPECT_EQ(stock(till, 100, 1, "2027/01/01"), "5") << "not back in the batch it came from";
    EXPECT_EQ(till.shop.cell("select cqty from salver"), "6");
    EXPECT_EQ(till.shop.cell("select ctype from sales where inv_o = 1"), "2");

    // The same goods cannot come back twice, neither by recalling again nor by a return begun before.
    EXPECT_TRUE(sales::return_of(till.shop.connection(), *recalled).lines.empty());
    EXPECT_EQ(saving.save(back, {}), SaveOutcome::refused);
    EXPECT_EQ(till.services.prompts.last(), std::string(sales::message::returned_too_much) + "أرز");
    EXPECT_EQ(till.shop.cell("select count(*) from sales"), "2");
}

TEST(Saving, ReceiptsOfOneNumberAreToldApart) {
    Till till;
    auto saving = till.saving();
    Invoice first = till.invoice();
    first.lines = {Till::line(100, 1, 10), Till::line(200, 1, 25)};
    ASSERT_EQ(saving.save(first, {}), SaveOutcome::saved);
    till.services.clock.moment.time = {10, 43, 0, 0};
    Invoice second = till.invoice();
    second.lines = {Till::line(200, 3, 25)};
    ASSERT_EQ(saving.save(second, {}), SaveOutcome::saved);
    till.shop.sql("update sales set pnum = 1");
    till.shop.sql("update saledata set pnum = 1");

    EXPECT_EQ(sales::recall_newest(till.connection(), 1, sales::Series::cash_sales, 1)->invoice.net(),
              Amount(75));
    const auto receipts = sales::receipts_of_day(till.connection(), 1, 1, first.date);
    ASSERT_EQ(receipts.size(), 2u);
    EXPECT_EQ(sales::recall_invoice(till.connection(), receipts[0])->invoice.net(), Amount(75));
    EXPECT_EQ(sales::recall_invoice(till.connection(), receipts[1])->invoice.net(), Amount(35));
}

// Recalled, the sale's number of its cash series.
Invoice return_of_newest(Till& till, std::int64_t number) {
    return sales::return_of(till.connection(),
                            *sales::recall_newest(till.connection(), number, sales::Series::cash_sales, 1));
}

TEST(Saving, AReturnBelongsToItsSaleAndNotToTheNumber) {
    Till till;
    auto saving = till.saving();
    std::vector<sales::ReceiptRow> receipts;  // the newest first
    for (const double quantity : {2, 3}) {
        Invoice sale = till.invoice();
        sale.lines = {Till::line(200, quantity, 25)};
        ASSERT_EQ(saving.save(sale, {}), SaveOutcome::saved);
        till.services.clock.moment.time.minute += 1;
    }
    till.shop.sql("update sales set pnum = 1");
    till.shop.sql("update saledata set pnum = 1");
    receipts = sales::receipts_of_day(till.connection(), 1, 1, till.invoice().date);
    ASSERT_EQ(receipts.size(), 2u);
    const auto left_of = [&](std::size_t receipt) {
        const auto recalled = sales::recall_invoice(till.connection(), receipts[receipt]);
        const Invoice back = sales::return_of(till.connection(), *recalled);
        return back.lines.empty() ? 0 : *back.lines[0].returnable;
    };
    Invoice back =
        sales::return_of(till.connection(), *sales::recall_invoice(till.connection(), receipts[1]));
    ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved) << till.services.prompts.last();
    EXPECT_EQ(left_of(1), 0);
    EXPECT_EQ(left_of(0), 3) << "the other receipt of the number";
    EXPECT_EQ(saving.save(back, {}), SaveOutcome::refused) << "the same goods again";
    EXPECT_EQ(
        sales::recall_newest(till.connection(), 1, sales::Series::returns, 1)->invoice.original->identity,
        receipts[1].identity);

    // A return that names only the number may have been of either.
    till.shop.sql("drop table till_return");
    EXPECT_EQ(left_of(0), 1);
    back = sales::return_of(till.connection(), *sales::recall_invoice(till.connection(), receipts[0]));
    till.services.clock.moment.time.minute += 1;
    back.original->identity.reset();
    // Other programs number sales under 0 and 1.
    till.shop.sql("update saledata set ctype = 1 where ctype = 0");
    ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved) << till.services.prompts.last();
    till.shop.sql("update saledata set ctype = 0 where ctype = 1");
    EXPECT_EQ(left_of(0), 0);
}

// When all goods of a sale come back, in one return or in several, the drawer pays out exactly what it took.
TEST(Saving, RefundsMirrorTheirSalesToThePiastre) {
    struct Case {
        const char* name;
        PaymentOption payment;
        double percent;
        double net;
        std::vector<std::vector<double>> returns;  // quantities by line; 0: the line stays away
    };
    // 3 × 49.99 - 1.00, 7 × 1.98 and 0.450 × 69.99 are 148.97, 13.86 and 31.50: 194.33 in all. 7 % are 13.60.
    const Case cases[] = {
        {"whole", PaymentOption::cash, 0, 194.33, {{3, 7, 0.45}}},
        {"whole, discounted", PaymentOption::cash, 7, 180.73, {{3, 7, 0.45}}},
        {"whole tips sale", PaymentOption::tips, 7, 180.73, {{3, 7, 0.45}}},
        {"in parts", PaymentOption::cash, 0, 194.33, {{1, 0, 0}, {1, 7, 0.45}, {1, 0, 0}}},
        {"in parts, discounted", PaymentOption::cash, 7, 180.73, {{1, 2, 0}, {1, 1, 0.45}, {1, 4, 0}}},
        {"tips sale in parts", PaymentOption::tips, 7, 180.73, {{1, 2, 0}, {1, 1, 0.45}, {1, 4, 0}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Till till;
        auto saving = till.saving();
        Invoice sale = till.invoice();
        sale.payment = c.payment;
        sale.tips_receiver = 5;
        sale.discount_percent = c.percent;
        sale.lines = {Till::line(100, 3, 49.99), Till::line(200, 7, 1.98), Till::line(200, 0.45, 69.99)};
        sale.lines[0].discount = 1;
        sale.lines[2].item_code.reset();
        ASSERT_EQ(saving.save(sale, {}), SaveOutcome::saved) << till.services.prompts.last();
        EXPECT_EQ(sale.net(), Amount(c.net));

        Amount refunded;
        for (const auto& quantities : c.returns) {
            Invoice back = return_of_newest(till, 1);
            for (std::size_t line = back.lines.size(); line-- > 0;) {
                const double price = back.lines[line].price;
                const std::size_t sold = price == 49.99 ? 0 : price == 1.98 ? 1 : 2;
                if (quantities[sold] == 0)
                    back.lines.erase(back.lines.begin() + static_cast<std::ptrdiff_t>(line));
                else
                    back.lines[line].set_quantity(quantities[sold]);
            }
            ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved) << till.services.prompts.last();
            refunded += back.net();
        }
        EXPECT_EQ(refunded, Amount(c.net));
        EXPECT_TRUE(return_of_newest(till, 1).lines.empty());
        // The drawer after a tips sale holds its net: no return takes a discount off it again.
        if (c.payment == PaymentOption::tips) {
            EXPECT_EQ(till.shop.number("select sum(pdis) from sales where ctype = 2"), 0);
            EXPECT_EQ(Amount(till.shop.number("select sum(ptot) from sales where ctype = 2")), Amount(c.net));
        }
    }
}

// Another program writes account sales as ctype 1.
TEST(Saving, TheSecondKindOfSaleIsRecalledWithItsLines) {
    Till till;
    auto saving = till.saving();
    Invoice sale = till.invoice();
    sale.payment = PaymentOption::account;
    sale.customer = 7;
    sale.lines = {Till::line(200, 2, 25)};
    ASSERT_EQ(saving.save(sale, {}), SaveOutcome::saved);
    till.shop.sql("update sales set ctype = 1");
    till.shop.sql("update saledata set ctype = 1");
    const auto recalled = sales::recall_newest(till.connection(), 1, sales::Series::account_sales, 1);
    ASSERT_EQ(recalled->invoice.lines.size(), 1u);
    EXPECT_EQ(recalled->invoice.net(), Amount(50));
    Invoice back = sales::return_of(till.connection(), *recalled);
    ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved) << till.services.prompts.last();
    EXPECT_TRUE(sales::return_of(till.connection(), *recalled).lines.empty());
}

TEST(Saving, ReservationsGoDownWithWhatTheirCustomerBuys) {
    Till till;
    till.shop.sql("insert into custdata (ccode,cname,copen,cacc) select 8,N'مطعم النيل',0,0");
    for (const char* customer : {"7", "8"})
        till.shop.sql(std::string("insert into reservd (icode,ccode,quan1,quan) select 200,") + customer +
                      ",9,9");
    const auto reserved = [&] {
        return till.shop.cell("select quan1 from reservd where ccode = 7") + " " +
               till.shop.cell("select quan from reservd where ccode = 7") + " " +
               till.shop.cell("select quan1 from reservd where ccode = 8") + " " +
               till.shop.cell("select quan from reservd where ccode = 8");
    };
    auto saving = till.saving();
    struct Case {
        PaymentOption payment;
        KindOption kind;
    };
    for (const auto& [payment, kind] :
         {Case{PaymentOption::account, KindOption::sale}, Case{PaymentOption::cash, KindOption::sale},
          Case{PaymentOption::account, KindOption::return_}}) {
        Invoice invoice = till.invoice();
        invoice.payment = payment;
        if (payment == PaymentOption::account) invoice.customer = 7;
        invoice.kind = kind;
        invoice.lines = {Till::line(200, 2, 25)};
        ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
        EXPECT_EQ(reserved(), "7 7 9 9");
    }
}

TEST(InvoiceKey, TheLogsNameIsReadBack) {
    const sales::InvoiceKey key{12, 2, 7, 3, {}};
    EXPECT_EQ(sales::log_name(key), "invoice 12 (kind 2, customer 7, store 3)");
    EXPECT_EQ(sales::read_log_name(sales::log_name(key)), key);
    for (const char* name : {"", "invoice 9 (kind 0)", "invoice x (kind 0, customer -1, store 1)",
                             "invoice 9 (kind 0, customer -1, store 1) begins"})
        EXPECT_FALSE(sales::read_log_name(name)) << name;
}

// 9,821 days and 38,527 seconds after the beginning of the year 2000.
TEST(InvoiceKey, IsPrintedAndScanned) {
    const common::TimeOfDay time{10, 42, 7, 0};
    const common::Date date{2026, 11, 21};
    const struct {
        sales::InvoiceKey key;
        const char* code;
    } cases[] = {{{1284, 0, -1, 1, date}, "-1108485729271284"},
                 {{7, 0, 300, 12, date}, "-22084857292707"},
                 {{123456, 2, -1, 3, date}, "-330848572927123456"},
                 {{1284, 0, -1, 1, {1999, 12, 31}}, ""}};
    for (const auto& [key, code] : cases) {
        EXPECT_EQ(sales::receipt_code({key, time}), code);
        const auto read = sales::read_receipt_code(code);
        ASSERT_EQ(read.has_value(), *code != 0) << code;
        if (!read) continue;
        EXPECT_TRUE(sales::is_code_of(*read, {key, time}));
        EXPECT_TRUE(sales::is_code_of(*read, {key, {10, 42, 8, 0}})) << "a server's rounding";
        EXPECT_FALSE(sales::is_code_of(*read, {key, {10, 42, 10, 0}}));
        for (const sales::InvoiceKey& other :
             {sales::InvoiceKey{key.number + 1, key.ctype, key.vcode, key.store, date},
              sales::InvoiceKey{key.number, key.ctype == 2 ? 0 : 2, key.vcode, key.store, date},
              sales::InvoiceKey{key.number, key.ctype, key.vcode, key.store + 1, date}})
            EXPECT_FALSE(sales::is_code_of(*read, {other, time})) << code;
    }
}

TEST(Saving, ReturnsInPartsAreCappedAtWhatIsLeft) {
    Till till;
    auto saving = till.saving();
    Invoice sale = till.invoice();
    sale.lines = {Till::line(200, 2, 240, 12), Till::line(200, 6, 25)};
    ASSERT_EQ(saving.save(sale, {}), SaveOutcome::saved);
    const auto recall = [&] {
        return sales::return_of(till.shop.connection(), *sales::recall_newest(till.shop.connection(), 1,
                                                                              sales::Series::cash_sales, 1));
    };
    Invoice first = recall();
    ASSERT_EQ(first.lines.size(), 2u);
    first.lines.pop_back();
    first.lines[0].quantity = 1;
    ASSERT_EQ(saving.save(first, {}), SaveOutcome::saved);
    const Invoice second = recall();
    ASSERT_EQ(second.lines.size(), 2u);
    EXPECT_DOUBLE_EQ(*second.lines[0].returnable, 1);
    EXPECT_DOUBLE_EQ(*second.lines[1].returnable, 6);
}

TEST(Saving, ReturnWithoutSaleGoesToTheNewestBatchOrMakesOne) {
    Till till;
    auto saving = till.saving();
    Invoice back = till.invoice();
    back.kind = KindOption::third;
    back.lines = {Till::line(100, 2, 10), Till::line(200, 1, 25)};
    back.lines[1].expiry = common::Date{2028, 2, 29};
    ASSERT_EQ(saving.save(back, {}), SaveOutcome::saved);
    EXPECT_EQ(stock(till, 100, 1, "2027/06/01"), "6");
    EXPECT_EQ(stock(till, 200, 1, "2028/02/29"), "1");
    EXPECT_EQ(till.shop.cell("select ctype from sales"), "3");
}

TEST(Saving, WhatNoBatchCoversGoesBelowZeroWithoutExpiry) {
    Till till;
    auto saving = till.saving();
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 10, 10)};
    invoice.lines[0].below_stock = true;
    ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
    EXPECT_EQ(stock(till, 100, 1, "2027/01/01"), "0");
    EXPECT_EQ(stock(till, 100, 1, "2027/06/01"), "0");
    EXPECT_EQ(stock(till, 100, 1, "3000/01/01"), "-3");
}

TEST(Saving, DecimalQuantitiesLeaveNoDustOfABatch) {
    Till till;
    till.shop.sql("delete from stk where icode = 100");
    for (const char* month : {"01", "02", "03", "04", "05", "06"})
        till.shop.sql(std::string("insert into stk (icode, stcode, edate, quan) values (100, 1, '2027/") +
                      month + "/01', 0.1)");
    auto saving = till.saving();
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 0.6, 10)};
    ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
    EXPECT_EQ(till.shop.cell("select count(*) from stk where icode = 100"), "6")
        << "a batch without expiry was made";
    EXPECT_EQ(till.shop.cell("select count(*) from stk where icode = 100 and quan <> 0"), "0");
}

TEST(Saving, GoodsThatComeInMeanwhileAreCountedAndTaken) {
    bool reached = true;
    int before_stock = 0;
    for (int n = 1; reached; ++n) {
        SCOPED_TRACE(n);
        Till till;
        const auto other = test::open_shop(till.shop.file());
        test::FaultyConnection faulty(till.shop.connection());
        reached = false;
        bool stock_is_left = false;
        faulty.call_between(n, [&] {
            reached = true;
            stock_is_left =
                till.shop.number("select sum(quan) from stk where icode = 100 and stcode = 1") > 0;
            other->execute(
                "update stk set quan = quan + 2 where icode = 100 and stcode = 1 and edate = "
                "'2027/06/01'");
            other->execute("insert into stk (icode,stcode,edate,quan) values (100,1,'2028/01/01',10)");
        });
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 6, 10), Till::line(100, 3, 10)};
        for (auto& line : invoice.lines)
            line.below_stock = true;
        auto saving = till.saving_on(faulty);
        ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
        EXPECT_EQ(till.shop.number("select sum(quan) from stk where icode = 100 and stcode = 1"),
                  reached ? 10 : -2);
        if (!stock_is_left) continue;
        ++before_stock;
        EXPECT_EQ(till.shop.cell("select count(*) from stk where quan < 0"), "0");
    }
    EXPECT_GT(before_stock, 5);
}

TEST(Saving, LineFromAnotherStoreIsTransferredThenSold) {
    Till till;
    auto saving = till.saving();
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 20, 10)};
    invoice.lines[0].source_kind = sales::SourceKind::other_store;
    invoice.lines[0].source_store = 2;
    ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
    EXPECT_EQ(stock(till, 100, 2, "2026/12/01"), "30");
    EXPECT_EQ(till.shop.cell("select sum(quan) from stk where icode = 100"), "37");
    EXPECT_EQ(till.shop.cell("select sum(quan) from stk where icode = 100 and stcode = 1"), "7");
    EXPECT_EQ(till.shop.cell("select tto from sttran where tfrom = 2"), "1");
}

TEST(Saving, EveryRefusalWritesNothingAndSaysWhy) {
    struct Case {
        std::function<void(Till&, Invoice&)> prepare;
        std::string expected;
    };
    namespace message = sales::message;
    const auto account = [](Till&, Invoice& i) {
        i.payment = PaymentOption::account;
        i.customer = 7;
        i.permit_opened = true;
    };
    const Case cases[] = {
        {[](Till&, Invoice& i) { i.lines.clear(); }, std::string(message::empty_invoice)},
        {[](Till& t, Invoice&) { t.shop.sql("update shift set e_date = '2026/11/21 09:00:00'"); },
         "لا يمكن حفظ البون بدون فتح ورديه جديده"},
        {[](Till& t, Invoice&) { t.shop.sql("delete from shift"); },
         "لا يمكن حفظ البون بدون فتح ورديه جديده"},
        {[](Till& t, Invoice&) { t.session.cash_point = 2; }, "لا يمكن حفظ البون بدون فتح ورديه جديده"},
        {[](Till&, Invoice& i) { i.store = 0; }, "اختار المخزن"},
        {[](Till&, Invoice& i) { i.lines[0].quantity = 8; }, "كميه الصنف أرز لا تكفي"},
        {[](Till&, Invoice& i) {
             i.lines[0].quantity = 4;
             i.lines.push_back(i.lines[0]);
         },
         "كميه الصنف أرز لا تكفي"},
        {account, "أدخل بيانات الاذن"},
        {[&](Till& t, Invoice& i) {
             account(t, i);
             i.permit_number = "5";
             i.number = 1;
             t.shop.sql("insert into sales (pnum,ctype,stcode,date,vcode) select 1,0,1,'2026/11/21',7");
         },
         "سبق ادخال نفس رقم الايصال لنفس العميل"},
        {[](Till& t, Invoice& i) {
             i.payment = PaymentOption::account;
             i.customer = 7;
             t.shop.sql("delete from custdata");
         },
         std::string(common::message::no_such_customer)},
        {[](Till&, Invoice& i) { i.payment = PaymentOption::tips; }, std::string(message::choose_tips)},
        {[](Till& t, Invoice& i) {
             i.payment = PaymentOption::tips;
             i.tips_receiver = 5;
             t.shop.sql("delete from boundata");
         },
         std::string(message::tips_gone)},
        {[](Till& t, Invoice& i) {
             i.payment = PaymentOption::card;
             i.card = {3, "x", "77"};
             t.shop.sql("delete from bankdata");
         },
         std::string(common::message::no_such_bank)},
        {[&](Till& t, Invoice& i) {
             account(t, i);
             i.permit_number = std::string(21, '5');
         },
         std::string(message::permit_field) + std::string(message::too_long)},
        {[](Till&, Invoice& i) {
             i.lines[0].item_code.reset();
             i.lines[0].name = std::string(600, 'x');
         },
         std::string(message::name_field) + std::string(message::too_long)},
        {[](Till&, Invoice& i) {
             i.payment = PaymentOption::card;
             i.card.bank_code = 3;
             i.card.reference = " ";
         },
         std::string(message::enter_reference)},
        {[](Till&, Invoice& i) {
             i.walk_in = sales::WalkInCustomer{99, false, "", "", ""};
         },
         "اسم العميل النقدي غير موجود"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.expected);
        Till till;
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 7, 10)};
        test.prepare(till, invoice);
        const auto rows = [&] {
            std::string counts;
            for (const char* table : written_tables)
                counts += till.shop.cell(std::string("select count(*) from ") + table) + " ";
            return counts + till.shop.cell("select sum(quan) from stk");
        };
        const std::string before = rows();
        auto saving = till.saving();
        EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::refused);
        EXPECT_EQ(till.services.prompts.last(), test.expected);
        EXPECT_EQ(rows(), before);
        EXPECT_TRUE(till.printer.printed.empty());
    }
}

TEST(Saving, TakesTheNumberAgain) {
    Till till;
    till.shop.sql("insert into sales (pnum,ctype,stcode,vcode) select 41,0,2,-1");
    Invoice invoice = till.invoice();
    invoice.number = 1;  // what the screen still shows
    invoice.lines = {Till::line(200, 1, 25)};
    auto saving = till.saving();
    ASSERT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
    EXPECT_EQ(invoice.number, 42);
}

TEST(Saving, SettingsChooseTheReceipts) {
    struct Case {
        const char* settings;
        bool suppressed;
        bool text_port;
        bool works;
        std::vector<printing::Form> expected;
    };
    using printing::Form;
    const Case cases[] = {
        {"inv_p = null", false, false, false, {Form::full}},
        {"inv_p = 0, cust_n = 1", false, false, true, {Form::full, Form::no_telephone}},
        {"inv_p = 0, cust_n = 1", false, false, false, {Form::full}},
        {"inv_p = 1, csh_inv = 1, cust_n = 1", false, false, false, {Form::cash_page}},
        {"inv_p = 1", false, false, false, {Form::standard_page}},
        {"inv_p = 0", true, false, true, {}},
        {"inv_p = 0", true, true, true, {Form::full}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.settings);
        Till till;
        till.shop.sql(std::string("update basic set ") + test.settings);
        till.printer.text = test.text_port;
        till.printer.works = test.works;  // a dead printer never stops the sale
        Invoice invoice = till.invoice();
        invoice.suppress_receipt = test.suppressed;
        invoice.lines = {Till::line(200, 1, 25)};
        auto saving = till.saving();
        EXPECT_EQ(saving.save(invoice, {Amount(30), Amount(5)}), SaveOutcome::saved);
        std::vector<Form> forms;
        for (const auto& [receipt, form] : till.printer.printed) {
            forms.push_back(form);
            EXPECT_EQ(receipt.number, 1);
            EXPECT_EQ(receipt.remaining, Amount(5));
            EXPECT_EQ(receipt.shift_number, 14);
        }
        EXPECT_EQ(forms, test.expected);
    }
}

// A server that carries out the end of a save and is lost before it answers, or for longer.
class LosingTheAnswer final : public test::FaultyConnection {
  public:
    LosingTheAnswer(database::Connection& inner, int more) : FaultyConnection(inner), more_(more) {}
    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override {
        if (is_lost_ && more_-- > 0) throw lost();
        return FaultyConnection::run(statement, values);
    }
    std::vector<Outcome> run_all(const std::vector<database::Command>& commands) override {
        auto outcomes = FaultyConnection::run_all(commands);
        is_lost_ = !commands.empty() && commands.back().text() == "commit transaction";
        if (is_lost_) throw database::BatchError(lost(), 0);
        return outcomes;
    }

  private:
    static database::Error lost() { return {"08S01", "Communication link failure", ""}; }
    int more_;
    bool is_lost_ = false;
};

TEST(Saving, ASaveWhoseLastAnswerIsLostIsSaved) {
    for (const int more : {0, 1}) {
        SCOPED_TRACE(more);
        Till till;
        LosingTheAnswer losing(till.connection(), more);
        till.services.prompts.answers = {true};
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(200, 1, 25)};
        EXPECT_EQ(till.saving_on(losing).save(invoice, {}), SaveOutcome::saved)
            << till.services.prompts.last();
        EXPECT_EQ(till.services.prompts.questions.size(), static_cast<std::size_t>(more));
        EXPECT_EQ(till.shop.number("select count(*) from sales"), 1);
        EXPECT_EQ(till.shop.number("select sum(quan) from stk where icode = 200"), 49);
        EXPECT_EQ(till.shop.number("select count(*) from till_save"), 0);
        EXPECT_NE(till.services.log.lines.back().find("finished"), std::string::npos);
    }
}

TEST(Saving, SecondPressWhileTheReceiptPrintsDoesNothing) {
    Till till;
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(200, 1, 25)};
    Invoice again = invoice;
    auto saving = till.saving();
    till.printer.on_print = [&] { EXPECT_EQ(saving.save(again, {}), SaveOutcome::refused); };
    EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::saved);
    EXPECT_EQ(till.shop.cell("select count(*) from sales"), "1");
}

}  // namespace
