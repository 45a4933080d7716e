// Offers at the sales desk: kept, loaded, sold, printed; and an invoice that was saved in part.
#include "sales/offers.h"
#include "common/text.h"
#include "sales/counter.h"
#include "sales/messages.h"
#include "support/faulty_connection.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using sales::BeginSave;
using sales::KindOption;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(OffersOnScreen, AnOfferComesBackAsItWasAndIsSold) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(desk.header().SwitchPayment(PaymentOption::account));
    ASSERT_TRUE(desk.header().choose_customer(7));
    ASSERT_TRUE(counter.enter("6221000400029"));  // a pack of six
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "3"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "4"));
    ASSERT_TRUE(counter.enter("410"));
    ASSERT_TRUE(desk.lines().CommitDiscountPercent("5"));
    const auto figures = desk.sale().figures;
    std::vector<std::array<std::string, column::count>> cells = {desk.invoice().cells(0),
                                                                 desk.invoice().cells(1)};

    EXPECT_EQ(desk.offers().SaveOffer(), 1);
    EXPECT_TRUE(desk.invoice().lines.empty());
    EXPECT_EQ(desk.invoice().payment, PaymentOption::cash);
    EXPECT_EQ(counter.shop.number("select count(*) from sales"), 0);
    EXPECT_EQ(counter.shop.cell("select pdis from offer where F2 = N'شاي'"), "4.6");

    ASSERT_TRUE(desk.offers().LoadOffer(1));
    EXPECT_EQ(desk.sale().offer, 1);
    EXPECT_EQ(desk.invoice().customer_name, "مطعم الأمل");
    EXPECT_EQ(desk.sale().figures.net, figures.net);
    EXPECT_EQ(desk.sale().figures.discount_value, figures.discount_value);
    for (std::size_t row = 0; row < cells.size(); ++row)
        EXPECT_EQ(desk.invoice().cells(row), cells[row]);
    EXPECT_TRUE(desk.invoice().lines[0].marked);
    ASSERT_TRUE(counter.enter("440"));
    EXPECT_FALSE(desk.invoice().lines[2].marked) << "added by hand";
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::save_now) << counter.services.prompts.last();
    EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(counter.shop.number("select sum(quan) from stk where icode = 400"), 240 - 18);
    EXPECT_EQ(counter.shop.number("select count(*) from offer"), 2) << "the offer stays";
    EXPECT_EQ(desk.sale().offer, 0);
}

// The cells hold two decimals; the totals they show are those of the offer all the same.
TEST(OffersOnScreen, AnOfferIsWorthWhatItShowed) {
    Counter counter;
    auto& desk = counter.open();
    // 0.45 × 69.99 less 5 % (1.574775) are 29.92, less 1.57 they would be 29.93; 100 × 1.2345 are 123.45.
    struct Case {
        const char *quantity, *price, *percent, *total;
    };
    for (const Case& c : {Case{"0.45", "69.99", "5", "29.92"}, Case{"100", "1.2345", "0", "123.45"}}) {
        ASSERT_TRUE(counter.enter("*"));
        const std::size_t row = desk.invoice().lines.size() - 1;
        ASSERT_TRUE(desk.lines().commit_edit(row, column::quantity, c.quantity));
        ASSERT_TRUE(desk.lines().commit_edit(row, column::price, c.price));
        ASSERT_TRUE(desk.lines().commit_edit(row, column::discount_percent, c.percent));
        EXPECT_EQ(counter.cell(row, column::total), c.total);
    }
    const std::int64_t number = desk.offers().SaveOffer();
    ASSERT_TRUE(desk.offers().LoadOffer(number));
    EXPECT_EQ(counter.cell(0, column::total), "29.92");
    EXPECT_EQ(counter.cell(1, column::total), "123.45");
    EXPECT_EQ(desk.sale().figures.net, "153.37");
    EXPECT_EQ(sales::quotation(counter.connection(), counter.session, number)->totals.back().second,
              "153.37");
}

TEST(OffersOnScreen, ALongNameComesBackWhole) {
    // The second is cut one short of the cell's width, in which an olive counts twice.
    for (const char* word : {"زيت زيتون بكر ", "🫒"}) {
        SCOPED_TRACE(word);
        std::string name = "بكر";
        while (common::column_width(name) < 80)
            name += word;
        Counter counter;
        counter.shop.sql("update items set name = N'" + name + "' where code = 410");
        auto& desk = counter.open();
        ASSERT_TRUE(counter.enter("410"));
        const std::string entered = desk.invoice().cells(0)[column::name];
        ASSERT_GT(common::column_width(entered), 50u);
        ASSERT_EQ(desk.offers().SaveOffer(), 1);
        ASSERT_TRUE(desk.offers().LoadOffer(1));
        EXPECT_EQ(desk.invoice().cells(0)[column::name], entered);
        // If the card has changed since, the name stays as it was cut.
        counter.shop.sql("update items set name = N'شيء آخر' where code = 410");
        counter.services.prompts.answers = {true};
        ASSERT_TRUE(desk.offers().LoadOffer(1));
        EXPECT_EQ(desk.invoice().cells(0)[column::name], common::cut_to_column(entered, 50));
    }
}

TEST(OffersOnScreen, PaymentAndCustomerOfTheOfferAreTakenOver) {
    struct Case {
        PaymentOption payment;
        const char* stored;
    };
    for (const Case& c : {Case{PaymentOption::cash, "-1 0"}, Case{PaymentOption::card, "-1 1"},
                          Case{PaymentOption::tips, "-1 2"}, Case{PaymentOption::account, "7 0"}}) {
        SCOPED_TRACE(c.stored);
        Counter counter;
        auto& desk = counter.open();
        desk.header().SwitchPayment(c.payment);
        desk.header().choose_customer(7);
        desk.header().choose_walk_in(sales::WalkInCustomer{1, true, "سها", "011", ""});
        ASSERT_TRUE(counter.enter("400"));
        ASSERT_EQ(desk.offers().SaveOffer(), 1) << counter.services.prompts.last();
        EXPECT_EQ(
            counter.shop.cell("select cast(vcode as varchar) + ' ' + cast(stype as varchar) from offer"),
            c.stored);
        ASSERT_TRUE(desk.offers().LoadOffer(1));
        EXPECT_EQ(desk.invoice().payment, c.payment);
        // The proposed code belonged to another customer, so he got the next free one.
        ASSERT_TRUE(desk.invoice().walk_in);
        EXPECT_EQ(desk.invoice().walk_in->name, "سها");
        EXPECT_EQ(desk.invoice().walk_in->code, 2);
        EXPECT_FALSE(desk.invoice().walk_in->is_new);
    }
}

TEST(OffersOnScreen, WhatCannotBeKeptOrLoadedIsSaidAndChangesNothing) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_EQ(desk.offers().SaveOffer(), 0);
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::empty_offer)));

    ASSERT_TRUE(counter.enter("400"));
    EXPECT_FALSE(desk.offers().LoadOffer(9));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::no_such_offer)));
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(desk.offers().SaveOffer(), 1);

    // An invoice in work is replaced only after a question.
    ASSERT_TRUE(counter.enter("410"));
    EXPECT_FALSE(desk.offers().LoadOffer(1));
    EXPECT_THAT(counter.asked(), ElementsAre(testing::StartsWith(message::cancel_receipt)));
    EXPECT_EQ(desk.invoice().lines[0].item_code, 410);
    EXPECT_FALSE(desk.receipts().recall("1"));
    counter.said();

    ASSERT_TRUE(desk.header().SwitchPayment(PaymentOption::account));
    EXPECT_EQ(desk.offers().SaveOffer(), 0) << "on account without a customer";
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::choose_customer)));
}

TEST(OffersOnScreen, ThePriceOfferedHoldsWhenTheItemIsRepriced) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("410"));
    ASSERT_EQ(desk.offers().SaveOffer(), 1);
    counter.shop.sql("update items set price11 = 30, price12 = 30 where code = 410");
    ASSERT_TRUE(desk.offers().LoadOffer(1));
    EXPECT_EQ(desk.invoice().cells(0)[column::price], "12.00");
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    EXPECT_EQ(counter.shop.number("select ptot from sales"), 12);
    ASSERT_TRUE(counter.enter("410"));
    EXPECT_EQ(desk.invoice().cells(0)[column::price], "30.00") << "a line rung up by hand";
}

TEST(OffersOnScreen, WhatIsGoneSinceIsNamedAtTheSave) {
    struct Case {
        PaymentOption payment;
        const char* since;
        std::string expected;
    };
    const Case cases[] = {
        {PaymentOption::cash, "update items set stop = 1 where code = 410",
         std::string(message::stopped) + "\nشاي"},
        {PaymentOption::cash, "delete from items where code = 410",
         std::string(message::item_of) + "شاي" + std::string(message::item_deleted)},
        {PaymentOption::cash, "update stk set quan = 3 where icode = 410 and stcode = 2",
         std::string(message::transfer_store_short) + "\nشاي"},
        {PaymentOption::account, "delete from custdata", std::string(common::message::no_such_customer)},
        {PaymentOption::cash, "delete from cust_cash", std::string(common::message::no_such_cash_customer)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.since);
        Counter counter;
        auto& desk = counter.open();
        desk.header().SwitchPayment(c.payment);
        desk.header().choose_customer(7);
        if (c.payment == PaymentOption::cash)
            desk.header().choose_walk_in(sales::WalkInCustomer{1, false, "منى", "010", ""});
        counter.shop.sql("insert into stk (icode,stcode,edate,quan) select 410,2,'3000/01/01',4");
        ASSERT_TRUE(counter.enter("400"));
        ASSERT_TRUE(counter.enter("410", 2));
        ASSERT_TRUE(desk.lines().commit_edit(1, column::quantity, "4"));
        ASSERT_EQ(desk.offers().SaveOffer(), 1);
        counter.shop.sql(c.since);
        ASSERT_TRUE(desk.offers().LoadOffer(1));
        EXPECT_EQ(desk.invoice().lines.size(), 2u);
        counter.said();
        EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
        EXPECT_THAT(counter.said(), ElementsAre(c.expected));
        EXPECT_EQ(counter.shop.number("select count(*) from sales"), 0);
    }
}

TEST(OffersOnScreen, AQuotationStatesTheTotalInWords) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("410"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "10"));
    ASSERT_TRUE(desk.lines().CommitDiscountValue("12"));
    ASSERT_EQ(desk.offers().SaveOffer(), 1);
    counter.session.settings.tel = "0223456789";
    const auto report = sales::quotation(counter.connection(), counter.session, 1);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->telephone, "Tel : 0223456789");
    EXPECT_EQ(printing::report_csv(*report),
              "\xEF\xBB\xBF"
              "عرض سعر\r\n"
              "رقم العرض,1\r\nالتاريخ,2026/11/21\r\nالعميل,عميل نقدي\r\nاسم المستخدم,مدير\r\n"
              "م,كود,اسم الصنف,الوحدة,كمية,سعر,خصم,الاجمالي\r\n"
              "1,410,شاي,وحدة,10,12.00,0.00,120.00\r\n"
              "الاجمالي,120.00\r\nخـــــــصم,12.00\r\nالصافي,108.00\r\n"
              "فقط مائة و  ثمانية جنيها لا غير\r\n");
    EXPECT_EQ(report->main_total, -1) << "the last one, the net, stands out";
    counter.shop.sql("update offer set f5 = '99999.00', pdis = 0");
    EXPECT_EQ(sales::quotation(counter.connection(), counter.session, 1)->words,
              "فقط تسعمائة وتسعة وتسعون ألفا وتسعمائة وتسعون جنيها لا غير");
    EXPECT_FALSE(sales::quotation(counter.connection(), counter.session, 2));
}

// A sale whose stock movement fails in a shop without a journal: the header and the lines are written.
TEST(PartlySaved, StaysUnchangeableUntilItIsCancelled) {
    Counter counter;
    counter.shop.sql("drop table till_save");
    test::FaultyConnection faulty(counter.connection());
    sales::SalesDesk desk(faulty, counter.session, counter.services.all(), counter.printer);
    const auto enter = [&](std::string_view text) { return desk.lines().EnterItem(sales::read_entry(text)); };
    ASSERT_TRUE(desk.Open());
    ASSERT_TRUE(enter("400"));
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment);
    counter.printer.on_print = [&] { faulty.fail_at(9, test::FaultyConnection::Fault::passing); };
    ASSERT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::partly_saved);
    counter.printer.on_print = nullptr;
    ASSERT_EQ(counter.shop.number("select count(*) from sales"), 1);
    ASSERT_TRUE(desk.sale().partly_saved);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(counter.services.devices.ports.count("com1"), 0u) << "the drawer stays closed";

    const std::vector<std::function<bool()>> forbidden = {
        [&] { return desk.checkout().begin_save() != BeginSave::refused; },
        [&] { return enter("410"); },
        [&] { return desk.lines().commit_edit(0, column::quantity, "2"); },
        [&] { return desk.lines().CommitDiscountPercent("1"); },
        [&] { return desk.header().SwitchPayment(PaymentOption::card); },
        [&] { return desk.receipts().recall("1"); },
        [&] { return desk.offers().SaveOffer() != 0; },
    };
    for (std::size_t at = 0; at < forbidden.size(); ++at) {
        counter.said();
        EXPECT_FALSE(forbidden[at]()) << at;
        EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::partly_stays))) << at;
    }
    EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(counter.shop.number("select count(*) from sales"), 1);

    counter.answer({true});
    ASSERT_TRUE(desk.checkout().CancelInvoice());
    EXPECT_FALSE(desk.sale().partly_saved);
    EXPECT_EQ(std::to_string(desk.invoice().number), "2");
    EXPECT_TRUE(enter("410"));
}

// The row of a walk-in customer was written, but the answer was lost: he is not added twice.
TEST(OffersOnScreen, AWalkInCustomerWhoseAnswerWasLostIsAddedOnce) {
    Counter counter;
    test::FaultyConnection faulty(counter.connection());
    for (const bool taken_meanwhile : {false, true}) {
        SCOPED_TRACE(taken_meanwhile);
        const int proposed = static_cast<int>(counter.shop.number("select max(zcode) from cust_cash")) + 1;
        if (taken_meanwhile)
            counter.shop.sql("insert into cust_cash (zcode,zname) select " + std::to_string(proposed) +
                             ",N'غيره'");
        sales::WalkInCustomer customer{proposed, true, "سامي " + std::to_string(proposed), "012", ""};
        const auto add = [&](int written) {
            counter.shop.sql("insert into cust_cash (zcode,zname,zphone,zmail) select " +
                             std::to_string(written) + ",N'" + customer.name + "','012',''");
        };
        // The first statement looks for the code, the second one adds the row.
        faulty.call_before(2, [&] { add(proposed + (taken_meanwhile ? 1 : 0)); });
        faulty.fail_at(2, test::FaultyConnection::Fault::lost);
        auto lost = customer;
        EXPECT_THROW(accounts::store_walk_in_customer(faulty, lost), database::Error);
        ASSERT_TRUE(faulty.has_failed());
        faulty.stop_failing();
        accounts::store_walk_in_customer(faulty, customer);
        EXPECT_FALSE(customer.is_new);
        EXPECT_EQ(
            counter.shop.number("select count(*) from cust_cash where zname = N'" + customer.name + "'"), 1);
        EXPECT_EQ(counter.shop.number("select zcode from cust_cash where zname = N'" + customer.name + "'"),
                  static_cast<double>(customer.code));
    }
}

}  // namespace
