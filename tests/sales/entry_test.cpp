// Entering items: how typed and scanned texts are read, what each becomes, and every refusal on the way.
#include "sales/entry.h"
#include "sales/counter.h"
#include "sales/messages.h"
#include "support/faulty_connection.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using sales::EntryForm;
using sales::KindOption;
using sales::PaymentOption;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Scan, ReadsEveryForm) {
    struct Case {
        std::string typed;
        EntryForm form;
        std::string text;
        double quantity;
        std::int64_t number;
        std::string name = "";
    };
    const Case cases[] = {
        {"", EntryForm::empty, "", 1, 0},
        {"  \t", EntryForm::empty, "", 1, 0},
        {"*", EntryForm::general, "*", 1, 0},
        {" *خبز \t'بلدي'\r", EntryForm::general, "", 1, 0, "خبز 'بلدي'"},
        {"\u200F*\u200Eخبز", EntryForm::general, "", 1, 0, "خبز"},
        {"\u200F", EntryForm::empty, "", 1, 0},
        {"123", EntryForm::code, "123", 1, 0},
        {"١٢٣", EntryForm::code, "123", 1, 0},
        {"۱۲۳", EntryForm::code, "123", 1, 0},
        {"2000123004500", EntryForm::scale_label, "123", 0.45, 0},
        {" 2000123004500\r\n", EntryForm::scale_label, "123", 0.45, 0},
        {"٢٠٠٠١٢٣٠٠٤٥٠٠", EntryForm::scale_label, "123", 0.45, 0},
        {"2099999999999", EntryForm::scale_label, "99999", 99.999, 0},
        // One character more or fewer, or another prefix, makes it a code.
        {"20001230045001", EntryForm::code, "20001230045001", 1, 0},
        {"200012300450", EntryForm::code, "200012300450", 1, 0},
        {"2100123004500", EntryForm::code, "2100123004500", 1, 0},
        {"20001230045x0", EntryForm::code, "20001230045x0", 1, 0},
        {"-11084857292701", EntryForm::receipt, "-11084857292701", 1, 0},
        {" -١١٠٨٤٨٥٧٢٩٢٧٠١", EntryForm::receipt, "-11084857292701", 1, 0},
        {"-1108485729271", EntryForm::code, "-1108485729271", 1, 0},    // an odd number of digits
        {"-91084857292701", EntryForm::code, "-91084857292701", 1, 0},  // of no series
        {"5%", EntryForm::discount_percent, "5", 1, 0},
        {" ٧٫٥٪", EntryForm::discount_percent, "7.5", 1, 0},
        {"2.25-", EntryForm::discount_value, "2.25", 1, 0},
        // A sign alone, in front or in the middle makes a code.
        {"%", EntryForm::code, "%", 1, 0},
        {"-5", EntryForm::code, "-5", 1, 0},
        {"5%5", EntryForm::code, "5%5", 1, 0},
        {"w12", EntryForm::craftsman, "w12", 1, 12},
        {"P7", EntryForm::craftsman, "P7", 1, 7},
        // Only digits make it a work line; other words are searched for as they were typed.
        {"Wx", EntryForm::code, "Wx", 1, 0, "Wx"},
        {"p", EntryForm::code, "p", 1, 0, "p"},
        {"حليب", EntryForm::code, "pgdf", 1, 0, "حليب"},
        {" \u200Fحليب ١ لتر", EntryForm::code, "pgdf 1 gjv", 1, 0, "حليب ١ لتر"},
        {"ABC-12 x", EntryForm::code, "ABC-12 x", 1, 0},
        // The keys of W and P under the Arabic layout, with and without Shift; the digits with them.
        {"ص١٢", EntryForm::craftsman, "w12", 1, 12},
        {"ح7", EntryForm::craftsman, "p7", 1, 7},
        {"\u064B12", EntryForm::craftsman, "W12", 1, 12},
        {"؛9", EntryForm::craftsman, "P9", 1, 9},
        {"شلاؤ-١", EntryForm::code, "abc-1", 1, 0},
        {"\u200F123\u200E", EntryForm::code, "123", 1, 0},
        // Keys that type two characters, at the beginning and in front of nothing; keys of signs.
        {"لا7", EntryForm::code, "b7", 1, 0},
        {"لأ7", EntryForm::code, "G7", 1, 0},
        {"لإ7", EntryForm::code, "T7", 1, 0},
        {"لآ7", EntryForm::code, "B7", 1, 0},
        {"7ل", EntryForm::code, "7g", 1, 0},
        {"7لا", EntryForm::code, "7b", 1, 0},
        {"7جدكطوزظذ", EntryForm::code, "7[];',./`", 1, 0},
        {"12'; drop table items --", EntryForm::code, "12'; drop table items --", 1, 0,
         "12'; drop table items --"},
        // A quantity before "*" is for what follows, before "+" for the last line.
        {"6*123", EntryForm::code, "123", 6, 0},
        {" ٢٫٥*حليب", EntryForm::code, "pgdf", 2.5, 0, "حليب"},
        {"3*w12", EntryForm::craftsman, "w12", 3, 12},
        {"6*", EntryForm::quantity, "", 6, 0},
        {"1.2.3*123", EntryForm::code, "123", 0, 0},
        {"2*2000123004500", EntryForm::scale_label, "123", 0.45, 0},
        {"6**", EntryForm::unreadable, "*", 6, 0},
        {"2*3*123", EntryForm::unreadable, "123", 2, 0},
        {"٦+", EntryForm::quantity_of_last, "6", 1, 0},
        {"+", EntryForm::code, "+", 1, 0},
        {"6+7", EntryForm::code, "6+7", 1, 0},
        {std::string(51, '7'), EntryForm::unreadable, std::string(51, '7'), 1, 0},
        {std::string(10000, '7'), EntryForm::unreadable, "", 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed.substr(0, 60));
        const auto entry = sales::read_entry(c.typed);
        EXPECT_EQ(entry.form, c.form);
        if (c.form != EntryForm::general) {
            EXPECT_EQ(entry.text, c.text);
        }
        EXPECT_EQ(entry.name, c.name);
        EXPECT_DOUBLE_EQ(entry.quantity, c.quantity);
        EXPECT_EQ(entry.number, c.number);
        // What a scanner sends is no discount.
        if (entry.is_discount()) {
            EXPECT_EQ(sales::read_entry(c.typed, true).form, EntryForm::code);
        }
    }
}

TEST(ItemEntry, RefusesWithItsMessageAndAddsNothing) {
    struct Case {
        const char* name;
        std::string typed;
        std::string_view said;
        KindOption kind = KindOption::sale;
        PaymentOption payment = PaymentOption::cash;
        const char* before = nullptr;  // a statement that prepares the shop
    };
    const Case cases[] = {
        {"unknown code", "99999", common::message::wrong_code},
        {"unknown barcode", "6229999999999", common::message::wrong_code},
        {"no number", "abc", common::message::wrong_code},
        {"a fraction", "12.5", common::message::wrong_code},
        {"a negative", "-100", common::message::wrong_code},
        {"beyond 64 bits", "99999999999999999999", common::message::wrong_code},
        {"quotes", "1' or '1'='1", common::message::wrong_code},
        {"semicolon", "100; delete from items", common::message::wrong_code},
        {"emoji", "🍎", common::message::wrong_code},
        {"a pasted book", std::string(10000, '1'), common::message::wrong_code},
        {"label of an unknown item", "2099998004500", common::message::wrong_code},
        {"label without weight", "2000123000000", message::wrong_quantity},
        {"label behind a quantity", "2*2000123004500", message::label_has_quantity},
        {"no quantity", "0*400", message::wrong_quantity},
        {"barcode of two items", "7000", message::shared_barcode},
        {"craftsman line unknown", "W77", message::product_sold},
        {"craftsman line sold out", "W9", message::product_sold, KindOption::sale, PaymentOption::cash,
         "update salver set cqty = 0"},
        {"craftsman line never sold", "p9", message::product_not_sold, KindOption::return_},
        {"stopped", "420", message::stopped},
        {"service returned", "300", message::sale_only, KindOption::return_},
        {"service on third kind", "300", message::sale_only, KindOption::third},
        {"no unit data", "100", message::set_units, KindOption::sale, PaymentOption::cash,
         "update items set num1 = null where code = 100"},
        {"factor 0", "100", message::set_units, KindOption::sale, PaymentOption::cash,
         "update items set num1 = 0 where code = 100"},
        {"no pack data", "6221000410028", message::set_packs},
        {"no carton data", "6221000410035", message::set_cartons},
        {"no prices", "430", message::set_prices},
        {"price 0", "430", message::set_prices, KindOption::sale, PaymentOption::cash,
         "update items set price12 = 0 where code = 430"},
        {"account without customers", "100", message::add_customers, KindOption::sale, PaymentOption::account,
         "delete from custdata"},
        {"tips without receivers", "*", message::add_tips_customers, KindOption::sale, PaymentOption::tips,
         "delete from boundata"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Counter counter;
        if (c.before != nullptr) counter.shop.sql(c.before);
        auto& desk = counter.open();
        ASSERT_TRUE(desk.header().SwitchKind(c.kind));
        ASSERT_TRUE(desk.header().SwitchPayment(c.payment));
        EXPECT_FALSE(counter.enter(c.typed));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(c.said)));
        EXPECT_THAT(desk.invoice().lines, IsEmpty());
        EXPECT_EQ(desk.sale().figures.net, "0.00");
        EXPECT_TRUE(counter.services.log.lines.empty()) << counter.services.log.lines.front();
    }
}

TEST(ItemEntry, EveryFormMakesItsLine) {
    struct Case {
        std::string typed;
        int level;
        std::string code, name, quantity, price, total, unit, factor, cost, balance;
    };
    const Case cases[] = {
        {"400", 2, "400", "مياه", "1.000", "5.00", "5.00", "وحدة", "1", "3", "240.000"},
        {"400", 3, "400", "مياه", "1.000", "4.50", "4.50", "وحدة", "1", "3", "240.000"},
        {"400", 4, "400", "مياه", "1.000", "4.25", "4.25", "وحدة", "1", "3", "240.000"},
        {"400", 5, "400", "مياه", "1.000", "4.00", "4.00", "وحدة", "1", "3", "240.000"},
        {"6221000400012", 2, "400", "مياه", "1.000", "5.00", "5.00", "وحدة", "1", "3", "240.000"},
        {"6221000400029", 3, "400", "مياه", "1.000", "26.00", "26.00", "عبوة", "6", "17", "40.000"},
        {"6221000400036", 2, "400", "مياه", "1.000", "105.00", "105.00", "كرتونة", "24", "65", "10.000"},
        {"٦٢٢١٠٠٠٤٠٠٠٣٦ ", 5, "400", "مياه", "1.000", "95.00", "95.00", "كرتونة", "24", "65", "10.000"},
        {"2000123004500", 2, "123", "جبنة", "0.450", "100.00", "45.00", "وحدة", "1", "80", "40.000"},
        {"w9", 2, "200", "زيت", "1.000", "30.00", "30.00", "وحدة", "1", "20", "50.000"},
        {"ص٩", 2, "200", "زيت", "1.000", "30.00", "30.00", "وحدة", "1", "20", "50.000"},
        {"300", 2, "300", "توصيل", "1.000", "15.00", "15.00", "وحدة", "1", "0", ""},
        {"*خبز", 2, "", "خبز", "0.000", "0.00", "0.00", "وحدة", "1", "0", ""},
        {"*", 2, "", "صنف عام", "0.000", "0.00", "0.00", "وحدة", "1", "0", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed + " at level " + std::to_string(c.level));
        Counter counter;
        auto& desk = counter.open();
        desk.header().choose_price_level(c.level);
        ASSERT_TRUE(counter.enter(c.typed)) << counter.services.prompts.last();
        const auto cell = desk.invoice().cells(0);
        EXPECT_EQ(cell[column::code], c.code);
        EXPECT_EQ(cell[column::name], c.name);
        EXPECT_EQ(cell[column::quantity], c.quantity);
        EXPECT_EQ(cell[column::price], c.price);
        EXPECT_EQ(cell[column::discount_value], "0.00");
        EXPECT_EQ(cell[column::discount_percent], "0.00");
        EXPECT_EQ(cell[column::total], c.total);
        EXPECT_EQ(cell[column::unit_name], c.unit);
        EXPECT_EQ(cell[column::unit_factor], c.factor);
        EXPECT_EQ(cell[column::unit_cost], c.cost);
        EXPECT_EQ(cell[column::balance], c.balance);
        EXPECT_EQ(desk.sale().figures.net, c.total);
        EXPECT_EQ(desk.sale().current_row, 0u);
        EXPECT_THAT(counter.said(), IsEmpty());
    }
}

TEST(ItemEntry, SalePeriodReducesThePriceOfItsDays) {
    struct Case {
        const char* from;
        const char* to;
        const char* percent;
        const char* period_price;
        const char* expected;
        bool clearance;
    };
    const Case cases[] = {
        {"2026/11/01", "2026/11/30", "15", "null", "4.25", true},
        {"2026/11/21", "2026/11/21", "10", "null", "4.50", true},
        {"2026/11/22", "2026/11/30", "10", "null", "5.00", false},
        {"2026/11/01", "2026/11/20", "10", "null", "5.00", false},
        {"2026/11/01", "2026/11/30", "null", "null", "5.00", false},
        // The period's price counts only together with its percent.
        {"2026/11/01", "2026/11/30", "null", "4.75", "5.00", false},
        {"2026/11/01", "2026/11/30", "0", "4.75", "5.00", false},
        {"2026/11/01", "2026/11/30", "10", "2", "4.50", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.from) + " " + c.percent + " " + c.period_price);
        Counter counter;
        counter.shop.sql("insert into tmp_price (icode,p_per,s_price) select 400,90,1");  // of a former day
        counter.shop.sql(std::string("insert into sal_prd (sale_no,sale_from,sale_to) select 4,'") + c.from +
                         "','" + c.to + "'");
        counter.shop.sql(std::string("insert into sale_price (sale_prd,icode,p_per,s_price) select 4,400,") +
                         c.percent + "," + c.period_price);
        auto& desk = counter.open();
        ASSERT_TRUE(counter.enter("400"));
        EXPECT_EQ(counter.cell(0, column::price), c.expected);
        EXPECT_EQ(desk.invoice().lines[0].clearance, c.clearance);
        // The discount cells of a clearance item never open, even with the right to edit discounts.
        EXPECT_EQ(desk.lines().begin_edit(0, column::discount_value), !c.clearance);
        EXPECT_EQ(desk.lines().begin_edit(0, column::discount_percent), !c.clearance);
        if (c.clearance) {
            EXPECT_THAT(counter.said(), testing::Each(std::string(message::no_clearance_discount)));
        }
    }
}

// A piece of water is 5, its pack 28, its carton 105; cheese is 100 a kilogram; the work line of oil is 30,
// plain oil 25.
TEST(ItemEntry, AskedBeforeASecondLineOfAnItem) {
    const std::string pack = "6221000400029", carton = "6221000400036";
    struct Case {
        const char* name;
        std::vector<std::string> scans;
        bool yes;
        std::vector<std::string> quantities;
        const char* net;
    };
    const Case cases[] = {
        {"yes raises", {"400", "400"}, true, {"2.000"}, "10.00"},
        {"no adds a line", {"400", "400"}, false, {"1.000", "1.000"}, "10.00"},
        {"by barcode", {"400", "6221000400012"}, true, {"2.000"}, "10.00"},
        {"by weight", {"2000123004500", "2000123002500"}, true, {"0.700"}, "70.00"},
        {"a carton beside pieces", {"400", carton}, true, {"1.000", "1.000"}, "110.00"},
        {"a carton onto cartons", {"400", carton, carton}, true, {"1.000", "2.000"}, "215.00"},
        {"pieces beside packs", {pack, "400", pack}, true, {"2.000", "1.000"}, "61.00"},
        {"work line onto itself", {"W9", "W9"}, true, {"2.000"}, "60.00"},
        {"the plain item onto a work line", {"W9", "200"}, true, {"1.000", "1.000"}, "55.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Counter counter;
        auto& desk = counter.open();
        for (const std::string& scan : c.scans) {
            counter.answer({c.yes});
            EXPECT_TRUE(counter.enter(scan)) << counter.services.prompts.last();
        }
        EXPECT_EQ(counter.asked(),
                  std::vector<std::string>(c.scans.size() - 1, std::string(message::entered_before)));
        std::vector<std::string> quantities;
        for (std::size_t row = 0; row < desk.invoice().lines.size(); ++row)
            quantities.push_back(counter.cell(row, column::quantity));
        EXPECT_EQ(quantities, c.quantities);
        EXPECT_EQ(desk.sale().figures.net, c.net);
    }
}

TEST(ItemEntry, ALineIsNotRaisedBeyondTheLargestQuantity) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("300"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "9999999"));
    counter.answer({true});
    EXPECT_FALSE(counter.enter("300"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::wrong_quantity)));
    EXPECT_EQ(counter.cell(0, column::quantity), "9999999.000");
}

TEST(ItemEntry, AWorkLineSellsNoMoreThanWasMade) {
    Counter counter;
    counter.shop.sql("update salver set cqty = 1");
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("w9"));
    for (const bool raise : {true, false}) {
        counter.answer({raise});
        EXPECT_FALSE(counter.enter("w9"));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    }
    EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "2"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    EXPECT_EQ(counter.cell(0, column::quantity), "1.000");
}

TEST(ItemEntry, SecondFieldNeedsARecalledInvoice) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_FALSE(desk.lines().EnterItemForRecalled(sales::read_entry("400")));
    EXPECT_THAT(counter.said(), ElementsAre("يجب تحديد الفاتوره اولا"));
    ASSERT_TRUE(counter.enter("400"));
    EXPECT_FALSE(desk.lines().EnterItemForRecalled(sales::read_entry("400")))
        << "an invoice being rung up is not a recalled one";
}

TEST(ItemEntry, GroupShowsTheTypesNameOrItsNumber) {
    Counter counter;
    counter.shop.sql("insert into item_types (code,name) select 2,N'مشروبات'");
    counter.shop.sql("update items set itype = 2 where code = 400");
    counter.shop.sql("update items set itype = 9 where code = 410");
    counter.open();
    for (const char* code : {"400", "410", "440"})
        ASSERT_TRUE(counter.enter(code));
    EXPECT_EQ(counter.cell(0, column::group), "مشروبات");
    EXPECT_EQ(counter.cell(1, column::group), "9");
    EXPECT_EQ(counter.cell(2, column::group), "");
}

// A till that is left on notices the sale periods that begin and end meanwhile.
TEST(ItemEntry, SalePeriodsBeginAndEndWhileATillIsOn) {
    Counter counter;
    counter.shop.sql("insert into sal_prd (sale_no,sale_from,sale_to) select 1,'2026/11/22','2026/11/23'");
    counter.shop.sql("insert into sale_price (sale_prd,icode,p_per) select 1,410,25");
    auto& desk = counter.open();
    const auto price_now = [&] {
        EXPECT_TRUE(counter.enter("410")) << counter.services.prompts.last();
        const double price = desk.invoice().lines.back().price;
        counter.start_anew();
        return price;
    };
    EXPECT_EQ(price_now(), 12);
    counter.services.clock.moment = {{2026, 11, 22}, {0, 0, 1, 0}};
    EXPECT_EQ(price_now(), 9) << "begun at midnight";
    EXPECT_EQ(price_now(), 9);
    counter.services.clock.moment = {{2026, 11, 24}, {8, 0, 0, 0}};
    EXPECT_EQ(price_now(), 12) << "over";

    // The manager adds one while an invoice is being rung up.
    EXPECT_TRUE(counter.enter("440"));
    counter.shop.sql("insert into sal_prd (sale_no,sale_from,sale_to) select 2,'2026/11/24','2026/11/24'");
    counter.shop.sql("insert into sale_price (sale_prd,icode,p_per) select 2,410,50");
    EXPECT_TRUE(counter.enter("410"));
    EXPECT_EQ(desk.invoice().lines.back().price, 12) << "one invoice, one price list";
    counter.start_anew();
    EXPECT_EQ(price_now(), 6);
}

// All tills share the price list. It is filled only if it is wrong, and an interruption leaves it as it was.
TEST(ItemEntry, ThePriceListIsFilledInOneTransactionAndOnlyIfItIsWrong) {
    Counter counter;
    counter.shop.sql("insert into sal_prd (sale_no,sale_from,sale_to) select 1,'2026/11/21','2026/11/21'");
    counter.shop.sql("insert into sale_price (sale_prd,icode,p_per) select 1,410,25");
    counter.shop.sql("insert into sale_price (sale_prd,icode,p_per,s_price) select 1,440,10,3");
    const auto list = [&] {
        return counter.shop.cell("select count(*) from tmp_price") + " " +
               counter.shop.cell("select p_per from tmp_price where icode = 410");
    };
    test::FaultyConnection faulty(counter.connection());
    sales::SalesDesk desk(faulty, counter.session, counter.services.all(), counter.printer);
    const auto filled = [&] {
        const auto before = faulty.count();
        EXPECT_TRUE(desk.Open());
        return std::any_of(faulty.statements().begin() + before, faulty.statements().end(),
                           [](const std::string& text) { return text == "delete from tmp_price"; });
    };
    EXPECT_TRUE(filled());
    EXPECT_EQ(list(), "2 25");
    EXPECT_FALSE(filled());
    for (const char* change : {
             "update sale_price set p_per = 30 where icode = 410",
             "update tmp_price set s_price = null where icode = 440",
             "delete from tmp_price where icode = 410",
             "insert into tmp_price (icode,p_per) select 450,5",
         }) {
        counter.shop.sql(change);
        EXPECT_TRUE(filled()) << change;
        EXPECT_EQ(list(), "2 30");
        EXPECT_FALSE(filled()) << change;
    }
    counter.shop.sql("delete from sal_prd");
    for (int n = 1;; ++n) {
        faulty.fail_at(n, test::FaultyConnection::Fault::passing);
        const bool opened = desk.Open();
        faulty.stop_failing();
        if (opened) break;
        EXPECT_EQ(list(), "2 30") << "stopped at statement " << n;
    }
    EXPECT_EQ(counter.shop.cell("select count(*) from tmp_price"), "0");
}

TEST(ItemEntry, EqualCodesRaiseTheirLineAtOnceWhereTheShopWants) {
    Counter counter;
    counter.shop.sql("insert into till_setting (name, value) select 'raise_equal_codes', 'yes'");
    auto& desk = counter.open();
    for (const char* code : {"400", "410", "6221000400012", "3*400"})
        EXPECT_TRUE(counter.enter(code));
    EXPECT_THAT(counter.asked(), IsEmpty());
    ASSERT_EQ(desk.invoice().lines.size(), 2U);
    EXPECT_EQ(counter.cell(0, column::quantity), "5.000");
    // The quantity is that of the line that was raised, and not of the one below.
    EXPECT_TRUE(counter.enter("6+"));
    EXPECT_EQ(counter.cell(0, column::quantity), "6.000");
    // Another unit, and a label of a scale, ask.
    counter.answer({true, true});
    for (const char* code : {"6221000400029", "2000123004500", "2000123004500"})
        EXPECT_TRUE(counter.enter(code));
    EXPECT_THAT(counter.asked(), ElementsAre(message::entered_before, message::entered_before));
}

}  // namespace
