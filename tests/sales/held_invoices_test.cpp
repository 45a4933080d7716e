// Invoices put aside and resumed, by one till or several, and the draft that a crash leaves.

#include <fstream>

#include "common/files.h"
#include "sales/counter.h"
#include "sales/messages.h"
#include "sales/rights.h"
#include "sales/unfinished.h"

namespace {

using sales::HeldInvoice;
using sales::KindOption;
using test::Counter;

// A second till of the same store, or the first one started again.
struct OtherTill : test::Desk {
    OtherTill(database::Connection& connection, std::int64_t drawer)
        : desk(connection, session, services.all(), printer) {
        session.cash_point = drawer;
        session.user_name = "سلمى";
        session.user_code = 2;
        session.settings.max_dis = 10;
    }
    sales::SalesDesk& open() {
        desk.Open();
        desk.held().offer_draft();
        return desk;
    }
    bool sell() {
        return desk.checkout().begin_save() == sales::BeginSave::ask_payment &&
               desk.checkout().SaveInvoice() == sales::SaveOutcome::saved;
    }
    sales::SalesDesk desk;
};

double saved(Counter& till) {
    return till.shop.number("select count(*) from sales");
}

// What was granted to the user who held it is granted to the one who goes on with it, and nothing else.
TEST(Held, KeepsPricesAndDiscountsForWhoeverResumesIt) {
    Counter till;
    sales::SalesDesk& desk = till.open();
    till.enter("100");
    till.enter("400");
    EXPECT_TRUE(desk.lines().commit_edit(0, sales::column::price, "7.5"));
    EXPECT_TRUE(desk.lines().commit_edit(1, sales::column::discount_value, "0.5"));
    EXPECT_TRUE(desk.lines().CommitDiscountPercent("20"));
    desk.header().choose_walk_in(sales::WalkInCustomer{1, false, "منى", "010", ""});
    EXPECT_TRUE(desk.held().hold());
    EXPECT_TRUE(desk.invoice().lines.empty());
    EXPECT_EQ(saved(till), 0);
    till.shop.sql("update items set price12 = 99");

    OtherTill other(till.connection(), 2);
    till.shop.sql(
        "insert into shift (stcode,cash_no,scode,s_date,man_) select 1,2,15,'2026/11/21 08:00:00',1");
    other.session.permissions = std::string(400, '0');
    other.open();
    const auto held = other.desk.held().list();
    ASSERT_EQ(held.size(), 1u);
    EXPECT_EQ(held[0].customer, "منى");
    EXPECT_EQ(held[0].net.text(), "9.60");  // 7.50 + 5.00 - 0.50, less 20 %
    EXPECT_EQ(held[0].line_count, 2);
    ASSERT_TRUE(other.desk.held().resume(held[0]));
    EXPECT_EQ(other.desk.sale().figures.net, "9.60");
    EXPECT_EQ(other.desk.invoice().walk_in->name, "منى");
    EXPECT_TRUE(other.sell()) << other.services.prompts.last();
    EXPECT_EQ(till.shop.number("select ptot from sales"), 12);
    EXPECT_EQ(till.shop.number("select count(*) from till_held"), 0);
    // A price that the user could not have given is not granted by holding it.
    ASSERT_TRUE(other.desk.lines().EnterItem(sales::read_entry("200")));
    sales::Invoice priced = other.desk.invoice();
    priced.lines[0].price = 1;
    sales::grant_to_others(other.session, priced);
    EXPECT_NE(priced.lines[0].granted->price, 1);
}

TEST(Held, IsRefusedWithAReason) {
    Counter till;
    sales::SalesDesk& desk = till.open();
    EXPECT_FALSE(desk.held().hold());
    EXPECT_EQ(till.said().back(), sales::message::nothing_to_hold);
    till.enter("200");
    ASSERT_TRUE(till.sell());
    ASSERT_TRUE(desk.receipts().recall("1"));
    EXPECT_FALSE(desk.held().hold());
    EXPECT_EQ(till.said().back(), sales::message::saved_is_not_held);

    // Whoever resumes a return also needs the right to make returns.
    ASSERT_TRUE(desk.receipts().start_return());
    ASSERT_TRUE(desk.held().hold());
    const HeldInvoice held = desk.held().list().at(0);
    till.forbid({161});
    EXPECT_FALSE(desk.held().resume(held));
    till.session.permissions = std::string(400, '1');
    ASSERT_TRUE(desk.held().resume(held));
    EXPECT_EQ(desk.invoice().original->number, 1);
    EXPECT_TRUE(till.sell()) << till.services.prompts.last();

    // Goods that were sold meanwhile are refused by the save, as ever.
    till.enter("440");
    ASSERT_TRUE(desk.held().hold());
    till.shop.sql("update stk set quan = 0 where icode = 440");
    ASSERT_TRUE(desk.held().resume(desk.held().list().at(0)));
    till.forbid_below_stock();
    EXPECT_FALSE(till.sell());
    EXPECT_EQ(saved(till), 2);

    Counter old;
    old.shop.sql("drop table till_held");
    old.shop.sql("drop table till_draft");
    old.open();
    old.enter("200");
    EXPECT_FALSE(old.desk.held().hold());
    EXPECT_EQ(old.said().back(), sales::message::cannot_hold);
    EXPECT_EQ(old.desk.invoice().lines.size(), 1u);
    EXPECT_TRUE(old.sell()) << old.services.prompts.last();
}

TEST(Held, IsOnOneScreenAtATime) {
    Counter till;
    sales::SalesDesk& desk = till.open();
    till.enter("100");
    ASSERT_TRUE(desk.held().hold());
    OtherTill other(till.connection(), 2);
    other.open();
    const HeldInvoice listed = other.desk.held().list().at(0);
    ASSERT_TRUE(desk.held().resume(desk.held().list().at(0)));
    const std::string elsewhere = std::string(sales::message::held_is_elsewhere) + "درج 1 · مدير";
    other.services.prompts.answers = {false};
    EXPECT_FALSE(other.desk.held().resume(listed));
    EXPECT_EQ(other.services.prompts.questions.back(), elsewhere + std::string(sales::message::take_over));
    other.services.prompts.answers = {true};
    EXPECT_FALSE(other.desk.held().discard(listed));
    EXPECT_EQ(other.services.prompts.last(), elsewhere);
    EXPECT_TRUE(sales::held_by_drawer(till.connection(), 1, 1).empty());

    // Held again it is one row, with what was added.
    till.enter("200");
    ASSERT_TRUE(desk.held().hold());
    ASSERT_TRUE(other.desk.held().resume(listed));
    EXPECT_EQ(other.desk.invoice().lines.size(), 2u);
    EXPECT_EQ(till.shop.number("select count(*) from till_held"), 1);
    other.services.prompts.answers = {true};
    ASSERT_TRUE(other.desk.checkout().CancelInvoice());
    EXPECT_FALSE(desk.held().resume(listed));
    EXPECT_EQ(till.said().back(), sales::message::held_is_gone);

    // What is on the screen is held itself first, if the cashier agrees.
    till.enter("100");
    ASSERT_TRUE(desk.held().hold());
    till.enter("200");
    till.answer({false});
    EXPECT_FALSE(desk.held().resume(desk.held().list().at(0)));
    till.answer({true});
    EXPECT_TRUE(desk.held().resume(desk.held().list().at(0)));
    EXPECT_EQ(desk.invoice().lines.at(0).item_code, 100);
    EXPECT_EQ(sales::held_by_drawer(till.connection(), 1, 1).size(), 1u);
    till.answer({true});
    EXPECT_TRUE(desk.held().discard(sales::held_by_drawer(till.connection(), 1, 1).at(0)));
    till.answer({true});
    EXPECT_TRUE(desk.checkout().CancelRecord());
    EXPECT_EQ(till.shop.number("select count(*) from till_held"), 0);
}

// The till that has it may be gone for good. Whichever of the two comes back, only one saves it.
TEST(Held, IsTakenOverFromAnotherTill) {
    Counter till;
    sales::SalesDesk& desk = till.open();
    till.enter("100");
    ASSERT_TRUE(desk.held().hold());
    OtherTill other(till.connection(), 2);
    till.shop.sql(
        "insert into shift (stcode,cash_no,scode,s_date,man_) select 1,2,15,'2026/11/21 08:00:00',1");
    other.open();
    const HeldInvoice listed = desk.held().list().at(0);
    ASSERT_TRUE(desk.held().resume(listed));
    till.enter("200");  // does not come along
    // Part of it is in the books: only the till that began the save can end it.
    sales::InvoiceToSave begun;
    begun.invoice = desk.invoice();
    begun.moment = listed.moment;
    begun.cash_point = 1;
    begun.draft = {1, 1, listed.id};
    database::Journal(till.connection()).begin(sales::entry_of(begun, 1));
    EXPECT_FALSE(other.desk.held().resume(listed));
    EXPECT_TRUE(other.services.prompts.last().starts_with(sales::message::held_is_partly_saved));
    till.shop.sql("delete from till_save");

    other.services.prompts.answers = {true};
    ASSERT_TRUE(other.desk.held().resume(listed)) << other.services.prompts.last();
    EXPECT_EQ(other.desk.invoice().lines.size(), 1u);
    EXPECT_FALSE(till.sell());
    EXPECT_TRUE(till.said().back().starts_with(sales::message::held_was_taken_over)) << till.said().back();
    EXPECT_FALSE(desk.held().hold());
    till.answer({true});
    ASSERT_TRUE(desk.checkout().CancelInvoice());
    EXPECT_EQ(till.shop.number("select count(*) from till_held"), 1);
    EXPECT_TRUE(other.sell()) << other.services.prompts.last();
    EXPECT_EQ(till.shop.number("select count(*) from till_held"), 0);
    EXPECT_EQ(saved(till), 1);
}

// A draft of every kind of content, as the next start finds it.
struct Crash {
    Crash() { before.session.program_folder = folder.path(); }
    std::filesystem::path file() const {
        return sales::draft_file(folder.path(), before.session.shop, before.session.cash_point);
    }
    // The till after the crash, its cashier answering whether to go on with the draft.
    std::unique_ptr<OtherTill> start_again(bool restores) {
        auto next = std::make_unique<OtherTill>(before.connection(), 1);
        next->session.program_folder = folder.path();
        next->services.prompts.answers = {restores};
        next->open();
        return next;
    }
    test::TemporaryFolder folder;
    Counter before;
};

TEST(DraftFile, IsOfferedAfterACrash) {
    for (const bool restores : {true, false}) {
        Crash crash;
        sales::SalesDesk& desk = crash.before.open();
        crash.before.enter("100");
        crash.before.enter("400");
        desk.lines().quick_quantity("3");
        crash.before.enter("200");
        desk.lines().delete_line(0);
        desk.lines().CommitDiscountPercent("5");
        desk.header().enter_note("على الباب");
        desk.tick();
        auto next = crash.start_again(restores);
        ASSERT_EQ(next->services.prompts.questions.size(), 1u);
        // Another user is told whose it was.
        EXPECT_NE(next->services.prompts.questions[0].find(sales::message::draft_of_user), std::string::npos);
        if (!restores) {
            ASSERT_TRUE(next->desk.invoice().lines.empty());
            ASSERT_TRUE(next->desk.held().resume(next->desk.held().list().at(0)));
        }
        const sales::Invoice& invoice = next->desk.invoice();
        ASSERT_EQ(invoice.lines.size(), 2u);
        EXPECT_EQ(invoice.lines[0].quantity, 3);
        EXPECT_EQ(invoice.note, "على الباب");
        EXPECT_EQ(next->desk.sale().figures.net, "38.00");  // 3 x 5.00 + 25.00, less 5 %
        EXPECT_TRUE(next->sell()) << next->services.prompts.last();
        EXPECT_TRUE(crash.start_again(true)->services.prompts.questions.empty());
    }
}

// After a power cut the file may be as it was before the invoice left the screen.
TEST(DraftFile, OfAnInvoiceThatIsSavedOrHeldIsForgotten) {
    for (const bool sells : {true, false}) {
        Crash crash;
        crash.before.open();
        crash.before.enter("200");
        crash.before.enter("100");
        const std::string stale = common::read_file(crash.file());
        if (sells)
            ASSERT_TRUE(crash.before.sell());
        else
            ASSERT_TRUE(crash.before.desk.held().hold());
        EXPECT_LT(common::read_file(crash.file()).size(), stale.size() / 4);
        std::ofstream(crash.file(), std::ios::trunc) << stale;
        auto next = crash.start_again(true);
        EXPECT_TRUE(next->services.prompts.questions.empty());
        // The next invoice is kept again.
        next->desk.lines().EnterItem(sales::read_entry("100"));
        EXPECT_EQ(crash.start_again(true)->desk.invoice().lines.size(), 1u);
    }
}

TEST(DraftFile, OfAResumedInvoiceIsTheHeldOneOrItsSuccessor) {
    Crash crash;
    crash.before.open();
    crash.before.enter("200");
    ASSERT_TRUE(crash.before.desk.held().hold());
    ASSERT_TRUE(crash.before.desk.held().resume(crash.before.desk.held().list().at(0)));
    crash.before.enter("100");
    // Without its file, the invoice goes back to where every till sees it.
    const std::string kept = common::read_file(crash.file());
    std::filesystem::remove(crash.file());
    auto without = crash.start_again(true);
    EXPECT_TRUE(without->services.prompts.questions.empty());
    ASSERT_TRUE(without->desk.held().resume(without->desk.held().list().at(0)));
    EXPECT_EQ(without->desk.invoice().lines.size(), 1u);
    // Found again, the file is of an invoice that is on another screen.
    std::ofstream(crash.file(), std::ios::trunc) << kept;
    EXPECT_TRUE(crash.start_again(true)->services.prompts.questions.empty());
}

// Whatever the end of the file is, no more than the last change is lost.
TEST(DraftFile, CutAnywhereHoldsTheChangesBefore) {
    test::TemporaryFolder folder;
    const auto file = folder.path() / "draft.txt";
    std::vector<std::pair<std::size_t, std::size_t>> ends;  // size of the file, lines in it
    {
        sales::Draft draft;
        draft.open(file);
        sales::KeptInvoice kept;
        for (std::size_t line = 1; line <= 4; ++line) {
            kept.invoice.lines.push_back(test::Desk::line(100, 1, 10));
            kept.invoice.lines.back().granted.emplace();
            draft.keep(kept);
            ends.emplace_back(std::filesystem::file_size(file), line);
        }
        draft.keep(kept);
        EXPECT_EQ(std::filesystem::file_size(file), ends.back().first)
            << "nothing changed, nothing is written";
    }
    const std::string whole = common::read_file(file);
    for (std::size_t size = 0; size <= whole.size(); size += 7) {
        for (const char* end : {"", "0000000000000000 {}\n", "\n"}) {
            std::ofstream(file, std::ios::trunc) << whole.substr(0, size) << end;
            std::size_t expected = 0;
            for (const auto& [at, lines] : ends)
                if (at <= size) expected = lines;
            sales::Draft draft;
            draft.open(file);
            const std::size_t found = draft.left() ? draft.left()->invoice.invoice.lines.size() : 0;
            ASSERT_TRUE(found == expected || (std::string_view(end) == "\n" && found == expected + 1))
                << size << ": " << found << " of " << expected;
        }
    }
}

}  // namespace
