// The check finds a save that stopped at any of its statements, and never a complete one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "accounts/voucher.h"
#include "admin/checks.h"
#include "sales/till.h"
#include "shop/opening_stock.h"
#include "support/faulty_connection.h"

namespace {

using admin::Verdict;
using sales::Invoice;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::FaultyConnection;
using test::Till;

// What the check finds. The log of a killed till lacks the line of a stopped save.
std::string wrong(Till& till, bool killed) {
    const test::TemporaryFolder folder;
    {
        std::ofstream log(folder.path() / "log");
        for (const std::string& line : till.services.log.lines) {
            if (killed && line.find(" stopped, ") != std::string::npos) continue;
            log << line << "  ----  2026/11/21 10:42\n";
        }
    }
    std::string all;
    const admin::Period period{{2026, 11, 1}, {2026, 11, 21}};
    auto& connection = till.connection();
    for (const auto& findings :
         {admin::check_invoices(connection, period), admin::check_balances(connection),
          admin::check_stock(connection), admin::check_unfinished(connection, {{2026, 11, 21}, {10, 44, 0}}),
          admin::check_log(connection, folder.path() / "log", period)}) {
        for (const auto& finding : findings) {
            if (finding.verdict == Verdict::wrong) all += finding.text + '\n';
        }
    }
    return all;
}

struct Kind {
    const char* name;
    void (*shape)(Invoice& invoice);
};

const Kind kinds[] = {
    {"cash", [](Invoice&) {}},
    {"account",
     [](Invoice& i) {
         i.payment = PaymentOption::account;
         i.customer = 7;
     }},
    {"card",
     [](Invoice& i) {
         i.payment = PaymentOption::card;
         i.card = {3, "x", "77"};
     }},
    {"tips",
     [](Invoice& i) {
         i.payment = PaymentOption::tips;
         i.tips_receiver = 5;
     }},
    {"craftsman line", [](Invoice& i) { i.lines[1].salver_code = 9; }},
    {"line from another store",
     [](Invoice& i) {
         i.lines[0].source_kind = sales::SourceKind::other_store;
         i.lines[0].source_store = 2;
     }},
    {"return", [](Invoice& i) { i.kind = sales::KindOption::return_; }},
    {"account return",
     [](Invoice& i) {
         i.kind = sales::KindOption::return_;
         i.payment = PaymentOption::account;
         i.customer = 7;
     }},
};

class CutOff : public testing::TestWithParam<Kind> {};

TEST_P(CutOff, IsFoundAtAnyStatement) {
    for (int n = 1;; ++n) {
        SCOPED_TRACE(testing::Message() << GetParam().name << ", statement " << n);
        ASSERT_LT(n, 200);
        Till till;
        till.connection().execute("update custdata set copen = cacc");
        shop::remember_opening_stock(till.connection(), {{2026, 11, 21}, {8, 0, 0, 0}});
        for (const char* item : {"100", "200"})
            till.shop.sql("insert into reservd (icode,ccode,quan1,quan) select " + std::string(item) +
                          ",7,9,9");
        ASSERT_EQ(wrong(till, false), "");
        Invoice invoice = till.invoice();
        invoice.lines = {Till::line(100, 5, 10), Till::line(200, 2, 25)};
        invoice.discount_percent = 10;
        GetParam().shape(invoice);
        FaultyConnection faulty(till.connection());
        faulty.fail_at(n, FaultyConnection::Fault::passing);
        till.services.prompts.closes = true;
        const SaveOutcome outcome = till.saving_on(faulty).save(invoice, {});
        if (!faulty.has_failed()) {
            EXPECT_EQ(outcome, SaveOutcome::saved);
            EXPECT_EQ(wrong(till, false), "");
            break;
        }
        for (const bool killed : {false, true}) {
            if (outcome == SaveOutcome::partly_saved) {
                EXPECT_NE(wrong(till, killed), "") << killed << till.services.log.lines.back();
            } else {
                EXPECT_EQ(wrong(till, killed), "") << killed;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, CutOff, testing::ValuesIn(kinds),
                         [](const auto& kind) { return "Kind" + std::to_string(kind.index); });

TEST(CutOffSaves, ThatCannotBeReadAreNamedAndEndNoCheck) {
    Till till;
    for (const std::string kind : {"invoice", "shift", "odd"})
        till.shop.sql("insert into till_save (id,stcode,cash_no,kind,title,begun,content) select " +
                      std::to_string(kind.size()) + ",1,1,'" + kind + "','','2026/11/21 10:00:00','{'");
    const std::string found = wrong(till, false);
    EXPECT_EQ(std::ranges::count(found, '\n'), 3) << found;
}

// A party that owes, or is owed, 300, and what a receipt of 100 makes of it.
struct Party {
    accounts::PartyKind kind;
    const char* balance;
    double after;
};

class CutOffVoucher : public testing::TestWithParam<Party> {
  protected:
    static std::optional<common::Refusal> save(Till& till, database::Connection& connection) {
        accounts::Voucher screen(accounts::VoucherKind::receipt, connection, till.session,
                                 till.services.all());
        screen.open_new();
        screen.choose_party_kind(GetParam().kind);
        screen.choose_party(7);
        screen.fields.number = "12";
        screen.set_amount("100");
        return screen.save();
    }
};

// A voucher in the journal is found until it is finished or undone, whatever is left of the log.
TEST_P(CutOffVoucher, IsFoundAtAnyStatementUntilItIsSettled) {
    for (int n = 1;; ++n) {
        SCOPED_TRACE(testing::Message() << GetParam().balance << ", statement " << n);
        ASSERT_LT(n, 60);
        Till till;
        till.shop.sql("update custdata set copen = 300, cacc = 300 where ccode = 7");
        till.shop.sql("insert into vendata (vcode,vname,vopen,vacc) select 7,N'مورد',300,300");
        FaultyConnection faulty(till.connection());
        faulty.fail_at(n, FaultyConnection::Fault::lost);
        till.services.prompts.closes = true;
        bool complete = false;
        try {
            complete = !save(till, faulty);
        } catch (const database::Error&) {
            EXPECT_EQ(till.shop.number("select count(*) from vencuspay"), 0);
        }
        if (!faulty.has_failed()) break;
        for (const std::string& line : till.services.log.lines)
            EXPECT_EQ(line.find("nothing saved"), std::string::npos)
                << "what is lost may have arrived: " << line;
        auto left = database::unfinished_saves(till.connection());
        EXPECT_EQ(wrong(till, false).empty(), left.empty());
        EXPECT_EQ(wrong(till, true).empty(), left.empty());
        for (auto& entry : left)
            database::finish(till.connection(), till.services.log, entry, accounts::voucher_resumption);
        EXPECT_EQ(till.shop.number(GetParam().balance), left.empty() && !complete ? 300 : GetParam().after);
        EXPECT_EQ(wrong(till, false), "");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Of, CutOffVoucher,
    testing::Values(Party{accounts::PartyKind::customer, "select cacc from custdata where ccode = 7", 200},
                    Party{accounts::PartyKind::vendor, "select vacc from vendata where vcode = 7", 400}));

}  // namespace
