#include "bench/actions.h"

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "bench/by_hand_cash.h"
#include "bench/by_hand_sale.h"
#include "bench/by_hand_upgrade.h"
#include "bench/copies.h"
#include "bench/invoices.h"
#include "bench/painted_till.h"
#include "bench/till.h"
#include "cash/cash_position.h"
#include "cash/daily_statement.h"
#include "database/schema/schema.h"
#include "reports/report.h"

namespace bench {

namespace {

// Everything that the measured actions need on one shop.
struct Scene {
    Scene(const Copies& copies, const Sizes& wanted)
        : sizes(wanted),
          home(copies.home()),
          till(copies.home(), wanted),
          painted(till),
          engine(copies.by_hand()),
          upgrade(engine),
          sale(engine, copies.by_hand_log()),
          hand_cash(engine),
          position(till.connection(), till.session(), till.nobody()),
          statement(till.connection(), till.session(), till.services()) {}

    Sizes sizes;
    std::filesystem::path home;
    Till till;
    PaintedTill painted;

    HandEngine engine;
    HandUpgrade upgrade;
    HandSale sale;
    HandCash hand_cash;

    cash::CashPosition position;
    cash::DailyStatement statement;

    // The next item that is rung up; the program and the work by hand sell the same ones.
    std::int64_t entered = 0, entered_by_hand = 0, sold = 0, sold_by_hand = 0;
    std::vector<HandLine> lines_by_hand;
    // The result of the last round.
    std::size_t found = 0, found_by_hand = 0;
    std::vector<HandCash::Position> positions_by_hand;
    HandCash::Statement statement_by_hand;
};

namespace fs = std::filesystem;

struct Action {
    std::string name;
    std::optional<double> budget_ms;
    int rounds;
    std::function<Runner(Scene&)> ours;
    std::function<Runner(Scene&)> by_hand = {};
    // Throws if the program and the work by hand came to different results.
    std::function<void(Scene&)> agree = {};
    Judged judged = Judged::median;
    std::optional<double> ratio_budget = std::nullopt;
};

Runner timed(std::function<void()> work, std::function<void()> prepare = {}) {
    return {[work = std::move(work)] { return milliseconds(work); }, std::move(prepare)};
}

// Starts the real till on the shop; it ends as soon as its sign-in screen is painted.
void start_till(const fs::path& program, const fs::path& home) {
    const pid_t child = fork();
    if (child == 0) {
        setenv("TALLVEX_HOME", home.c_str(), 1);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("TALLVEX_END_AT", "sign-in", 1);
        if (chdir(home.c_str()) != 0) _exit(126);
        execl(program.c_str(), program.c_str(), "1", nullptr);
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the till did not start");
}

void expect_same(const std::string& what, double ours, double by_hand) {
    if (std::fabs(ours - by_hand) > 0.005)
        throw std::runtime_error(fmt::format("{}: ours is {:.2f}, by hand {:.2f}", what, ours, by_hand));
}

const common::Moment opening{last_day, {8, 0, 0, 0}};
const common::Moment closing{last_day, {23, 59, 59, 0}};

Runner ring_up(Scene& s) {
    return timed([&s] { s.till.ring_up(s.entered++, 1); },
                 [&s] {
                     if (s.till.screen().invoice().lines.size() >= 40)
                         s.till.screen().checkout().CancelInvoice();
                 });
}

Runner ring_up_by_hand(Scene& s) {
    // The sale period is looked up once per invoice, as the program does for the first of 40 lines.
    return timed([&s] {
        s.sale.enter(rung_up_code(s.sizes, s.entered_by_hand), s.entered_by_hand % 40 == 0);
        ++s.entered_by_hand;
    });
}

// Waits, so that the disk work of the save before is not measured as well. It is done before the items are
// rung up, because right before a save the processor's wake-up would be measured.
void wait_for_disk() {
    std::this_thread::sleep_for(std::chrono::milliseconds(15));
}

Runner save(Scene& s) {
    return timed([&s] { s.till.save(); },
                 [&s] {
                     wait_for_disk();
                     if (!s.till.screen().invoice().lines.empty()) s.till.screen().checkout().CancelInvoice();
                     s.till.ring_up(s.sold, 20);
                     s.sold += 20;
                     s.till.begin_save();
                 });
}

Runner save_by_hand(Scene& s) {
    return timed(
        [&s] { s.sale.save(s.lines_by_hand); },
        [&s] {
            wait_for_disk();
            s.lines_by_hand.clear();
            for (int i = 0; i < 20; ++i)
                s.lines_by_hand.push_back(s.sale.enter(rung_up_code(s.sizes, s.sold_by_hand++), i == 0));
        });
}

void same_positions(Scene& s) {
    const auto& ours = s.position.drawers();
    if (ours.size() != s.positions_by_hand.size()) throw std::runtime_error("drawers are missing");
    for (std::size_t i = 0; i < ours.size(); ++i) {
        expect_same("cash position", ours[i].position.value(), s.positions_by_hand[i].position);
        expect_same("card sales", ours[i].card_sales.value(), s.positions_by_hand[i].card_sales);
        expect_same("uncollected", ours[i].uncollected.value(), s.positions_by_hand[i].uncollected);
    }
}

void same_statement(Scene& s) {
    const auto& hand = s.statement_by_hand;
    const cash::Figures& figures = s.statement.figures();
    // The order of HandCash's sums of a day.
    using enum cash::Figure;
    const std::vector<cash::Figure> order = {account_sales, account_returns,   cash_sales,  card_sales,
                                             tips,          coupons,           uncollected, cash_returns,
                                             discounts,     returned_discounts};
    for (std::size_t i = 0; i < order.size(); ++i)
        expect_same("the statement's column " + std::to_string(i), figures[order[i]].value(), hand.sums[i]);
    expect_same("balance brought forward", figures[previous_balance].value(), hand.brought_forward);
    expect_same("invoices of the day", static_cast<double>(s.statement.summary().invoices), hand.summary[0]);
    double ours = 0;
    double by_hand = 0;
    for (const auto& line : s.statement.journal())
        ours += line.value;
    for (const auto& line : hand.journal)
        by_hand += line.value;
    expect_same("lines of the journal", static_cast<double>(s.statement.journal().size()),
                static_cast<double>(hand.journal.size()));
    expect_same("sum of the journal", ours, by_hand);
}

std::vector<Action> actions(const Wanted& wanted) {
    sales::SearchFilters prefix;
    prefix.name = searched_prefix;
    sales::SearchFilters words;
    words.name = searched_words;
    words.name_contains = true;
    std::vector<Action> list;
    list.push_back({"process start to sign-in shown, schema up to date", 400, 15, [&wanted](Scene& s) {
                        return timed([&wanted, &s] { start_till(wanted.till, s.home); });
                    }});
    list.push_back({"the upgrade list, nothing to do", 50, 30,
                    [](Scene& s) { return timed([&s] { database::run_upgrade_list(s.till.connection()); }); },
                    [](Scene& s) {
                        return timed([&s] {
                            if (!s.upgrade.run())
                                throw std::runtime_error("the schema by hand is not complete");
                        });
                    }});
    list.push_back({.name = "Enter on a code to a painted line",
                    .budget_ms = 16,
                    .rounds = 400,
                    .ours =
                        [](Scene& s) {
                            return timed([&s] { s.painted.enter_and_paint(); },
                                         [&s] { s.painted.type_code(); });
                        },
                    .judged = Judged::percentile_99});
    list.push_back({"… its logic and reads alone", std::nullopt, 500, ring_up, ring_up_by_hand});
    list.push_back({"search panel, prefix of a name, to a painted list", 50, 30, [prefix](Scene& s) {
                        return Runner{[&s, prefix] { return s.painted.search_and_paint(prefix.name); }};
                    }});
    list.push_back(
        {"… its logic and reads alone", 15, 50,
         [prefix](Scene& s) {
             return timed([&s, prefix] { s.found = s.till.screen().lines().search(prefix).count; });
         },
         [prefix](Scene& s) {
             return timed([&s, prefix] { s.found_by_hand = s.sale.search(prefix.name).size(); });
         },
         [](Scene& s) {
             expect_same("items found", static_cast<double>(s.found), static_cast<double>(s.found_by_hand));
         }});
    list.push_back({.name = "search panel, words inside a name, its logic and reads",
                    .budget_ms = 50,
                    .rounds = 50,
                    .ours =
                        [words](Scene& s) {
                            return timed(
                                [&s, words] { s.found = s.till.screen().lines().search(words).count; });
                        },
                    .agree =
                        [](Scene& s) {
                            const auto by_hand = static_cast<double>(items_with_searched_words(s.sizes));
                            expect_same("items found", static_cast<double>(s.found), by_hand);
                        }});
    for (const auto& [name, typed] :
         {std::pair("the first letter of a name in the entry field, to a painted list", "ح"),
          std::pair("two words of a name, to a painted list", searched_words)}) {
        list.push_back({name, 50, 60, [typed = std::string(typed)](Scene& s) {
                            return Runner{[&s, typed] { return s.painted.match_and_paint(typed); }};
                        }});
    }
    list.push_back({.name = "cash position of a store with 3 drawers",
                    .budget_ms = 1000,
                    .rounds = 20,
                    .ours = [](Scene& s) { return timed([&s] { s.position.compute(1, opening, closing); }); },
                    .by_hand =
                        [](Scene& s) {
                            return timed(
                                [&s] { s.positions_by_hand = s.hand_cash.positions(opening, closing); });
                        },
                    .agree = same_positions,
                    .ratio_budget = 1.3});
    list.push_back(
        {"daily statement of 3 drawers and journal", 1000, 20,
         [](Scene& s) {
             if (!s.statement.open()) throw std::runtime_error("the statement did not open");
             s.statement.date = last_day;
             s.statement.choose_drawer(0);
             return timed([&s] {
                 if (!s.statement.show()) throw std::runtime_error("the statement was refused");
             });
         },
         [](Scene& s) { return timed([&s] { s.statement_by_hand = s.hand_cash.statement(last_day); }); },
         same_statement});
    // The items of the year before the last day, and of its month; by day they are read from fewer rows.
    for (const auto& [name, kind, first, budget] :
         {std::tuple("report of a month, sales by item", reports::KindId::sales_by_item,
                     common::Date{2026, 10, 22}, 1000.0),
          std::tuple("report of a month, profit by day", reports::KindId::profit_by_day,
                     common::Date{2026, 10, 22}, 1000.0),
          std::tuple("report of a year, sales by day", reports::KindId::sales_by_day,
                     common::Date{2025, 11, 22}, 3000.0),
          std::tuple("report of a year, sales by item", reports::KindId::sales_by_item,
                     common::Date{2025, 11, 22}, 3000.0)}) {
        const reports::Request request{kind, {first, last_day, 0}, closing, true};
        list.push_back({name, budget, 5, [request](Scene& s) {
                            return timed([&s, request] {
                                if (reports::table_of(s.till.connection(), request).rows.empty())
                                    throw std::runtime_error("the report is empty");
                            });
                        }});
    }
    list.push_back({.name = "save of a 20-line invoice, durable, without the printer",
                    .budget_ms = 50,
                    .rounds = 300,
                    .ours = save,
                    .by_hand = save_by_hand,
                    .ratio_budget = 1.3});
    return list;
}

Timing measure(const Action& action, int rounds, Scene& full, Scene& tenth) {
    std::vector<Runner> runners;
    for (Scene* scene : {&full, &tenth}) {
        runners.push_back(action.ours(*scene));
        if (action.by_hand) runners.push_back(action.by_hand(*scene));
    }
    const std::vector<Samples> taken = take_turns(runners, rounds);
    Timing timing;
    timing.name = action.name;
    timing.budget_ms = action.budget_ms;
    timing.judged = action.judged;
    timing.ratio_budget = action.ratio_budget;
    timing.ours = taken.front();
    timing.ours_tenth = taken[taken.size() / 2];
    if (action.by_hand) {
        timing.by_hand = taken[1];
        timing.by_hand_tenth = taken[3];
    }
    if (action.agree) {
        action.agree(full);
        action.agree(tenth);
    }
    return timing;
}

}  // namespace

std::vector<Timing> measure_actions(const Wanted& wanted, const Copies& full, const Sizes& full_sizes,
                                    const Copies& tenth, const Sizes& tenth_sizes) {
    std::vector<Timing> timings;
    bool saved = false;
    {
        Scene full_scene(full, full_sizes);
        Scene tenth_scene(tenth, tenth_sizes);
        for (const Action& action : actions(wanted)) {
            if (action.name.find(wanted.only) == std::string::npos) continue;
            std::fprintf(stderr, "measuring %s\n", action.name.c_str());
            const int rounds = std::max(2, static_cast<int>(action.rounds * wanted.rounds));
            timings.push_back(measure(action, rounds, full_scene, tenth_scene));
            saved = saved || action.name.starts_with("save");
        }
    }
    if (saved) {
        full.compare_work();
        tenth.compare_work();
    }
    return timings;
}

}  // namespace bench
