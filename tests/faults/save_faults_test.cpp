// Saving with a fault at every statement: what was written is always a prefix of the documented order, the
// cashier and the log are told, and the shop goes on working.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "sales/messages.h"
#include "sales/returns.h"
#include "sales/till.h"
#include "support/faulty_connection.h"

namespace {

using database::Connection;
using sales::Invoice;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Desk;
using test::FaultyConnection;
using test::Till;

struct Scenario {
    const char* name;
    std::function<Invoice(Desk&, Connection&)> ring_up;
};

Invoice two_lines(const Desk& till) {
    Invoice invoice = till.invoice();
    invoice.lines = {Till::line(100, 5, 10), Till::line(200, 2, 25)};
    return invoice;
}

Invoice sold_before(Desk& till, Connection& connection, PaymentOption payment) {
    Invoice sale = two_lines(till);
    sale.payment = payment;
    if (payment == PaymentOption::account) sale.customer = 7;
    sale.lines[1].salver_code = 9;
    till.saving_on(connection).save(sale, {});
    till.printer.printed.clear();
    return sales::return_of(
        connection,
        *sales::recall_newest(connection, 1, sales::series_of(sales::KindOption::sale, payment), 1));
}

const Scenario scenarios[] = {
    {"cash sale to a new walk-in customer",
     [](Desk& till, Connection&) {
         Invoice invoice = two_lines(till);
         invoice.walk_in = sales::WalkInCustomer{2, true, "سامي", "", ""};
         return invoice;
     }},
    {"account sale of reserved goods and a craftsman line",
     [](Desk& till, Connection& connection) {
         connection.execute("insert into reservd (icode,ccode,quan1,quan) select 100,7,9,9");
         Invoice invoice = two_lines(till);
         invoice.payment = PaymentOption::account;
         invoice.customer = 7;
         invoice.lines[1].salver_code = 9;
         return invoice;
     }},
    {"card sale",
     [](Desk& till, Connection&) {
         Invoice invoice = two_lines(till);
         invoice.payment = PaymentOption::card;
         invoice.card = {3, "x", "77"};
         return invoice;
     }},
    {"tips sale",
     [](Desk& till, Connection&) {
         Invoice invoice = two_lines(till);
         invoice.payment = PaymentOption::tips;
         invoice.tips_receiver = 5;
         return invoice;
     }},
    {"sale of a line from another store",
     [](Desk& till, Connection&) {
         Invoice invoice = two_lines(till);
         invoice.lines[0].source_kind = sales::SourceKind::other_store;
         invoice.lines[0].source_store = 2;
         return invoice;
     }},
    {"cash return",
     [](Desk& till, Connection& connection) { return sold_before(till, connection, PaymentOption::cash); }},
    {"account return",
     [](Desk& till, Connection& connection) {
         return sold_before(till, connection, PaymentOption::account);
     }},
};

// What a save writes, as figures in the documented order of writing.
std::vector<double> trace(Connection& connection) {
    std::vector<double> figures;
    for (const char* query : {
             "select count(*) from cust_cash",
             "select sum(cacc) from custdata",
             "select count(*) from sales",
             "select count(*) from btran",
             "select count(*) from saledata",
             "select count(*) from sttran",
             "select count(*) from transdata",
             "select count(*) from tmp_tran",
             "select sum(quan) from stk where icode = 100 and stcode = 2",
             "select sum(quan) from stk where icode = 100",
             "select sum(quan) from stk where icode = 200",
             "select sum(cqty) from salver",
             "select sum(quan1) from reservd",
         })
        figures.push_back(database::number_of(connection.scalar(database::Sql::from_administrator(query))));
    return figures;
}

// Returns true if `seen` may lie between `before` and `after`: some steps done, one perhaps begun, the rest
// not yet begun.
bool is_prefix(const std::vector<double>& before, const std::vector<double>& seen,
               const std::vector<double>& after) {
    bool may_be_done = true;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        if (before[i] == after[i]) {
            if (seen[i] != before[i]) return false;
            continue;
        }
        const double share = (seen[i] - before[i]) / (after[i] - before[i]);
        if (share < -1e-9 || share > 1 + 1e-9) return false;
        if (!may_be_done && share > 1e-9) return false;
        if (share < 1 - 1e-9) may_be_done = false;
    }
    return true;
}

std::vector<double> trace_of_whole_save(const Scenario& scenario) {
    Till till;
    Invoice invoice = scenario.ring_up(till, till.connection());
    EXPECT_EQ(till.saving().save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
    return trace(till.connection());
}

// The next start of the till, and a sale after it.
void expect_the_shop_goes_on(Connection& connection) {
    database::run_upgrade_list(connection);
    Desk next;
    Invoice invoice = next.invoice();
    invoice.lines = {Till::line(200, 1, 25)};
    EXPECT_EQ(next.saving_on(connection).save(invoice, {}), SaveOutcome::saved)
        << next.services.prompts.last();
}

class SaveFaults : public testing::TestWithParam<Scenario> {};

TEST_P(SaveFaults, LeaveABeginningOfTheOrder) {
    const Scenario& scenario = GetParam();
    const std::vector<double> after = trace_of_whole_save(scenario);
    for (const auto fault : {FaultyConnection::Fault::passing, FaultyConnection::Fault::lost}) {
        bool passed = false;
        for (int n = 1; !passed; ++n) {
            SCOPED_TRACE(testing::Message() << (fault == FaultyConnection::Fault::lost ? "lost" : "failed")
                                            << " at statement " << n);
            ASSERT_LT(n, 200);
            Till till;
            Invoice invoice = scenario.ring_up(till, till.connection());
            const std::vector<double> before = trace(till.connection());
            FaultyConnection faulty(till.connection());
            faulty.fail_at(n, fault);
            till.services.prompts.messages.clear();
            auto saving = till.saving_on(faulty);
            const SaveOutcome outcome = saving.save(invoice, {});
            passed = !faulty.has_failed();
            if (passed) {
                EXPECT_EQ(outcome, SaveOutcome::saved);
                break;
            }
            const std::vector<double> seen = trace(till.connection());
            ASSERT_TRUE(is_prefix(before, seen, after)) << testing::PrintToString(seen);
            if (outcome == SaveOutcome::saved) {  // only the claims of number and goods stay for a while
                EXPECT_EQ(seen, after);
                continue;
            }
            ASSERT_EQ(till.services.prompts.messages.size(), 1u);
            ASSERT_EQ(std::ranges::count_if(till.services.log.lines,
                                            [](const std::string& line) {
                                                return line.find(" stopped, ") != std::string::npos;
                                            }),
                      1);
            const std::string stopped = till.services.log.lines.back();
            const std::string number = std::to_string(invoice.number);
            if (outcome == SaveOutcome::refused) {
                EXPECT_EQ(till.services.prompts.last(),
                          std::string(sales::message::not_saved) + "\n" +
                              std::string(fault == FaultyConnection::Fault::lost
                                              ? database::message::connection_lost
                                              : database::message::see_log));
                for (std::size_t i = 1; i < seen.size(); ++i)
                    EXPECT_EQ(seen[i], before[i]);
                faulty.stop_failing();
                EXPECT_EQ(saving.save(invoice, {}), SaveOutcome::saved) << till.services.prompts.last();
                EXPECT_EQ(trace(till.connection()), after);
            } else {
                ASSERT_EQ(outcome, SaveOutcome::partly_saved);
                EXPECT_NE(till.services.prompts.last().find("البون رقم " + number), std::string::npos);
                EXPECT_NE(stopped.find("invoice " + number), std::string::npos);
            }
            if (fault == FaultyConnection::Fault::passing) expect_the_shop_goes_on(till.connection());
        }
    }
}

// A child process saves and dies before its n-th statement; run by the test below with the shop's file.
TEST(SaveKilled, DISABLED_InTheMiddle) {
    const char* file = std::getenv("TALLVEX_KILLED_SHOP");
    ASSERT_NE(file, nullptr);
    const Scenario& scenario = scenarios[std::atoi(std::getenv("TALLVEX_KILLED_SCENARIO"))];
    const auto connection = test::open_shop(file);
    Desk till;
    Invoice invoice = scenario.ring_up(till, *connection);
    FaultyConnection faulty(*connection);
    faulty.call_before(std::atoi(std::getenv("TALLVEX_KILLED_AT")), [] { _exit(137); });
    _exit(till.saving_on(faulty).save(invoice, {}) == SaveOutcome::saved ? 0 : 1);
}

int die_at(const std::filesystem::path& file, std::size_t scenario, int n) {
    const pid_t child = fork();
    if (child == 0) {
        setenv("TALLVEX_KILLED_SHOP", file.c_str(), 1);
        setenv("TALLVEX_KILLED_SCENARIO", std::to_string(scenario).c_str(), 1);
        setenv("TALLVEX_KILLED_AT", std::to_string(n).c_str(), 1);
        if (freopen("/dev/null", "w", stdout) == nullptr) _exit(126);
        execl("/proc/self/exe", "faults_tests", "--gtest_filter=SaveKilled.DISABLED_InTheMiddle",
              "--gtest_also_run_disabled_tests", nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SaveKilled, LeavesABeginningOfTheOrderAndTheNextStartWorks) {
    for (std::size_t scenario = 0; scenario < std::size(scenarios); ++scenario) {
        SCOPED_TRACE(scenarios[scenario].name);
        const std::vector<double> after = trace_of_whole_save(scenarios[scenario]);
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            ASSERT_LT(n, 200);
            const std::vector<double> before = [&] {
                Till fresh;
                scenarios[scenario].ring_up(fresh, fresh.connection());
                return trace(fresh.connection());
            }();
            Till till;
            const int ended = die_at(till.shop.file(), scenario, n);
            if (ended == 0) break;
            ASSERT_EQ(ended, 137);
            ASSERT_TRUE(is_prefix(before, trace(till.connection()), after));
            expect_the_shop_goes_on(till.connection());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Everything, SaveFaults, testing::ValuesIn(scenarios),
                         [](const auto& scenario) { return "Scenario" + std::to_string(scenario.index); });

}  // namespace
