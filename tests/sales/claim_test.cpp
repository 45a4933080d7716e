// Number and goods that a save claims before it prints: how other tills respect the claim, and what becomes
// of claims that nobody releases.
#include "sales/claim.h"

#include <functional>

#include "sales/messages.h"
#include "sales/till.h"
#include "sales/unfinished.h"
#include "support/faulty_connection.h"

namespace {

using sales::Invoice;
using sales::SaveOutcome;
using test::Desk;
using test::Till;

// A second till on the shop: drawer 2.
class OtherTill : public test::Desk {
  public:
    explicit OtherTill(Till& first) : connection_(test::open_shop(first.shop.file())) {
        session.cash_point = 2;
        first.shop.sql(
            "insert into shift (stcode,cash_no,scode,s_date,man_) select 1,2,15,'2026/11/21 08:00:00',1");
    }
    SaveOutcome sell(std::int64_t item, double quantity) {
        sold = invoice();
        sold.lines = {line(item, quantity, 10)};
        return saving_on(*connection_).save(sold, {});
    }
    Invoice sold;

  private:
    std::unique_ptr<database::Connection> connection_;
};

// While one till's receipt is being printed, however long that takes, the other gets the next number and
// cannot take the goods on that receipt.
TEST(Claims, HoldWhileAReceiptPrints) {
    Till till;
    OtherTill other(till);
    till.printer.on_print = [&] {
        EXPECT_EQ(other.sell(100, 2), SaveOutcome::refused) << "2 of 7, of which 6 are being sold";
        EXPECT_EQ(other.services.prompts.last(),
                  "كميه الصنف أرز لا تكفي الآن: بعضها في بون يتم حفظه على جهاز آخر. حاول مرة أخرى بعد لحظات");
        EXPECT_EQ(other.sell(100, 1), SaveOutcome::saved);
        EXPECT_EQ(other.sold.number, 2);
    };
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 4, 10), Till::line(100, 2, 10)};
    ASSERT_EQ(till.saving().save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
    EXPECT_EQ(invoice.number, 1);
    EXPECT_EQ(till.shop.number("select sum(quan) from stk where icode = 100 and stcode = 1"), 0);
    EXPECT_EQ(other.sell(100, 1), SaveOutcome::refused);
    EXPECT_EQ(other.services.prompts.last(), "كميه الصنف أرز لا تكفي");
    EXPECT_EQ(other.printer.printed.size(), 1u) << "a paper without its invoice";
}

// Another till saves completely before each statement of a save: one of the two gets the last piece, and no
// number is used twice.
TEST(Claims, OneOfTwoTillsGetsTheLastPieceWhereverTheyMeet) {
    for (const bool last_piece : {true, false}) {
        bool reached = true;
        // The other till waits in vain for the goods during most statements.
        for (int n = 1; reached; n += last_piece ? 3 : 1) {
            SCOPED_TRACE(n);
            Till till;
            till.shop.sql("update stk set quan = 1 where icode = 200");
            OtherTill other(till);
            test::FaultyConnection faulty(till.connection());
            reached = false;
            SaveOutcome others = SaveOutcome::refused;
            faulty.call_between(n, [&] {
                reached = true;
                others = other.sell(last_piece ? 200 : 100, 1);
            });
            Invoice invoice = till.invoice();
            invoice.lines = {Till::line(200, 1, 25)};
            const SaveOutcome ours = till.saving_on(faulty).save(invoice, {});
            if (!reached) others = other.sell(last_piece ? 200 : 100, 1);
            EXPECT_EQ((ours == SaveOutcome::saved) + (others == SaveOutcome::saved), last_piece ? 1 : 2);
            EXPECT_EQ(till.printer.printed.size(), ours == SaveOutcome::saved ? 1u : 0u);
            EXPECT_EQ(other.printer.printed.size(), others == SaveOutcome::saved ? 1u : 0u);
            EXPECT_EQ(till.shop.number("select count(*) from stk where quan < 0"), 0);
            EXPECT_EQ(till.shop.number("select count(distinct pnum) from sales"), last_piece ? 1 : 2);
            EXPECT_EQ(till.shop.number("select count(*) from till_claim"), 0);
        }
    }
}

TEST(Claims, OfADeadTillCountForAMinute) {
    struct Case {
        const char* age;  // of the dead till's claim of number 1 and of 5 bags of rice
        std::int64_t number;
        SaveOutcome rice;
    };
    for (const Case& c : {Case{"-50", 2, SaveOutcome::refused}, Case{"-70", 1, SaveOutcome::saved},
                          Case{"+3600", 1, SaveOutcome::saved}}) {
        SCOPED_TRACE(c.age);
        Till till;
        const std::string moment = std::string("dateadd(second, ") + c.age + ", getdate())";
        till.shop.sql(
            "insert into till_claim (series, stcode, pnum, claim, goods, moment) select 0, 0, 1, 5, '100 1 "
            "5;', " +
            moment);
        auto saving = till.saving();
        Invoice oil = till.invoice();
        oil.lines = {Till::line(200, 1, 25)};
        ASSERT_EQ(saving.save(oil, {}), SaveOutcome::saved);
        EXPECT_EQ(oil.number, c.number);
        Invoice rice = till.invoice();
        rice.lines = {Till::line(100, 3, 10)};
        EXPECT_EQ(saving.save(rice, {}), c.rice);
        EXPECT_EQ(till.shop.number("select count(*) from till_claim"), c.rice == SaveOutcome::saved ? 0 : 1);
    }
}

// A claim left by a lost connection does not block the till itself.
TEST(Claims, AreTakenBackByTheNextSave) {
    Till till;
    test::FaultyConnection faulty(till.connection());
    auto saving = till.saving_on(faulty);
    till.printer.on_print = [&] { faulty.fail_at(1, test::FaultyConnection::Fault::lost); };
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 7, 10)};
    EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::partly_saved);
    EXPECT_EQ(till.shop.number("select count(*) from till_claim"), 1);
    faulty.stop_failing();
    till.printer.on_print = nullptr;
    EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
    EXPECT_EQ(invoice.number, 1);
}

// While the cashier is asked about a stopped save, its number is reserved. If he waits until the claim is too
// old, the finished save gets another number and a new receipt.
TEST(Claims, OfASaveThatStoppedLastUntilItIsFinished) {
    for (const bool is_old : {false, true}) {
        SCOPED_TRACE(is_old);
        Till till;
        OtherTill other(till);
        test::FaultyConnection faulty(till.connection());
        till.printer.on_print = [&] { faulty.fail_at(2, test::FaultyConnection::Fault::passing); };
        till.services.prompts.closes = true;
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 1, 10)};
        ASSERT_EQ(till.saving_on(faulty).save(invoice, {}), SaveOutcome::partly_saved);
        if (is_old) till.shop.sql("update till_claim set moment = dateadd(second, -70, getdate())");
        ASSERT_EQ(other.sell(200, 1), SaveOutcome::saved);
        EXPECT_EQ(other.sold.number, is_old ? 1 : 2);

        Desk next;
        next.services.prompts.answers = {true, true};
        const common::Services services = next.services.all();
        sales::UnfinishedSaves(till.connection(), next.session, services, next.printer).settle_all();
        EXPECT_EQ(till.shop.cell("select pnum from sales where ptype = 1"), is_old ? "2" : "1");
        EXPECT_EQ(next.printer.printed.size(), is_old ? 1u : 0u);
        EXPECT_EQ(next.services.prompts.messages.size(), is_old ? 1u : 0u);
        EXPECT_EQ(till.shop.number("select count(*) from till_claim"), 0);
    }
}

// A till of another version, and a shop in which no till may create tables.
TEST(Claims, ATillThatKnowsNoneIsMetAfterPrinting) {
    for (const bool has_table : {true, false}) {
        SCOPED_TRACE(has_table);
        Till till;
        if (!has_table) till.shop.sql("drop table till_claim");
        bool met = false;
        till.printer.on_print = [&] {
            if (std::exchange(met, true)) return;
            till.shop.sql(
                "insert into sales (pnum, ctype, vcode, stcode, [date]) select 1, 0, -1, 2, '2026/11/21'");
            till.shop.sql("update stk set quan = 1 where icode = 200");
        };
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 7, 10), Till::line(200, 2, 25)};
        ASSERT_EQ(till.saving().save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
        ASSERT_EQ(till.printer.printed.size(), 2u);
        EXPECT_EQ(till.printer.printed[0].first.number, 1);
        EXPECT_EQ(till.printer.printed[1].first.number, 2);
        EXPECT_EQ(till.shop.cell("select pnum from sales where ptype = 1"), "2");
        EXPECT_THAT(till.services.prompts.messages,
                    testing::ElementsAre("البون رقم 1 استخدم جهاز آخر رقمه.\nالبون المطبوع لاغ: مزقه. "
                                         "سيطبع مرة أخرى برقم جديد",
                                         "تم حفظ البون، لكن رصيد الصنف زيت نفد أثناء الطباعة لأن جهازا آخر "
                                         "باعه.\nالرصيد الآن أقل من الصفر، أبلغ المدير"));
        EXPECT_EQ(till.shop.number("select sum(quan) from stk where icode = 200"), -1);
    }
}

}  // namespace
