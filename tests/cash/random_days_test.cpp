// Hundreds of random shop days: each procedure against an independent ledger.
#include <gtest/gtest.h>

#include "cash/cash_position.h"
#include "cash/cash_sums.h"
#include "cash/day_summary.h"
#include "cash/figures.h"
#include "ledger.h"

namespace cash {
namespace {

using test::amount_text;
using test::Ledger;
using Rule = Ledger::Rule;

constexpr int rounds = 250;
constexpr common::Date middle_day{2026, 11, 21};
constexpr Drawer all_drawers[] = {{1, 1}, {1, 2}, {2, 1}};

std::string text(double amount) {
    return common::format_amount(amount);
}
std::string text(common::Amount amount) {
    return amount.text();
}

class RandomDays : public testing::Test {
  protected:
    // Runs a check on many random shops; a failing one is named by its round, which repeats it.
    template <typename Check>
    void each_shop(unsigned seed, const Check& check) {
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            SCOPED_TRACE("round " + std::to_string(round));
            std::mt19937 random(seed + static_cast<unsigned>(round));
            const Ledger ledger = test::random_ledger(random, 12 + round % 40);
            write(drawers, ledger);
            check(ledger, random);
        }
    }
    // A moment of the three days, often one of a movement.
    static long any_moment(const Ledger& ledger, std::mt19937& random) {
        if (random() % 2 == 0) return ledger.rows[random() % ledger.rows.size()].moment();
        return static_cast<long>(random() % (3 * 86400));
    }
    static common::Moment as_moment(long seconds) {
        const int second = static_cast<int>(seconds % 86400);
        return {common::add_days({2026, 11, 20}, seconds / 86400),
                {second / 3600, second / 60 % 60, second % 60, 0}};
    }
    test::Drawers drawers;
};

TEST_F(RandomDays, PositionAndPeriodFigures) {
    each_shop(1000, [this](const Ledger& ledger, std::mt19937& random) {
        const long until = any_moment(ledger, random);
        const long start = std::min(until, any_moment(ledger, random));
        const auto before = [&](const test::Movement& row) { return row.moment() < until; };
        for (const std::int64_t store : {1, 2}) {
            CashPosition position(drawers.shop.connection(), drawers.session, drawers.services.clock);
            position.compute(store, as_moment(start), as_moment(until));
            for (const DrawerPosition& drawer : position.drawers()) {
                EXPECT_EQ(text(drawer.position),
                          amount_text(ledger.cash(store, drawer.drawer, Rule::store_wide, before)));
                long card = 0;
                long telephone = 0;
                for (const auto& row : ledger.rows) {
                    if (row.table != test::Movement::sales || row.store != store ||
                        row.drawer != drawer.drawer || row.vcode != -1 || row.moment() <= start ||
                        row.moment() > until)
                        continue;
                    if (row.stype == 1) card += row.ctype < 2 ? row.counted() : -row.counted();
                    if (row.stype == 4 && row.safe == 0 && row.ctype < 2) telephone += row.counted();
                }
                EXPECT_EQ(text(drawer.card_sales), amount_text(card));
                EXPECT_EQ(text(drawer.uncollected), amount_text(telephone));
            }
        }
    });
}

TEST_F(RandomDays, CalcCashOfBothCopies) {
    // Transfers are stamped with the time of writing: at the day's end none is counted by the drawers that
    // follow.
    drawers.services.clock.moment = {{2026, 11, 23}, {23, 59, 59, 0}};
    each_shop(2000, [this](const Ledger& ledger, std::mt19937& random) {
        const long start = any_moment(ledger, random);
        drawers.shop.sql("delete from shift");
        drawers.open_shift(1, common::moment_text(as_moment(start)));
        for (const CalcCopy copy : {CalcCopy::shift_close, CalcCopy::shift_start}) {
            write(drawers, ledger);
            const long until = copy == CalcCopy::shift_start ? start / 60 * 60 : start;
            // A surplus or shortage counts by its bare date.
            const auto before = [&](const test::Movement& row) {
                return (row.table == test::Movement::mor_les ? row.day * 86400L : row.moment()) < until;
            };
            for (const DrawerPosition& drawer :
                 calc_cash(drawers.shop.connection(), drawers.session, drawers.services.all(), copy, {})) {
                EXPECT_EQ(text(drawer.position),
                          amount_text(ledger.cash(1, drawer.drawer, Rule::calc, before)));
            }
        }
    });
}

TEST_F(RandomDays, StatementAndItsRows) {
    each_shop(3000, [this](const Ledger& ledger, std::mt19937& random) {
        const long day = 86400L * static_cast<long>(random() % 3);
        const common::Date date = as_moment(day).date;
        const auto in_day = [&](const test::Movement& row) {
            return row.moment() > day && row.moment() < day + 86400;
        };
        const auto before = [&](const test::Movement& row) { return row.moment() <= day; };
        const auto up_to_end = [&](const test::Movement& row) { return row.moment() < day + 86400; };
        for (const Drawer& drawer : all_drawers) {
            const Figures figures = compute_figures(drawers.shop.connection(), drawer, date);
            EXPECT_EQ(figures[Figure::previous_balance].text(),
                      amount_text(ledger.cash(drawer.store, drawer.code, Rule::previous, before)));
            EXPECT_EQ(figures[Figure::current_balance].text(),
                      amount_text(ledger.cash(drawer.store, drawer.code, Rule::previous, up_to_end)));
            EXPECT_EQ(figures[Figure::net].text(),
                      amount_text(ledger.cash(drawer.store, drawer.code, Rule::previous, in_day) -
                                  ledger.copen(drawer.store, drawer.code)));
            long account = 0;
            for (const auto& row : ledger.rows) {
                if (row.table == test::Movement::sales && row.store == drawer.store &&
                    row.drawer == drawer.code && row.vcode != -1 && row.ctype < 2 && in_day(row))
                    account += row.counted();
            }
            EXPECT_EQ(figures[Figure::account_sales].text(), amount_text(account));
            for (std::size_t i = 0; i < figure_count; ++i) {
                const auto figure = static_cast<Figure>(i);
                const FigureRows rows = rows_behind(drawers.shop.connection(), drawer, date, figure);
                EXPECT_EQ(text(rows.sum), figures[figure].text()) << figure_headings[i];
                double sum = 0;
                for (const FigureRow& row : rows.rows)
                    sum += row.amount;
                EXPECT_EQ(text(sum), figures[figure].text()) << figure_headings[i];
            }
        }
    });
}

// Whatever happens on one drawer, the others' figures stay as they were.
TEST_F(RandomDays, DrawersAreIsolated) {
    const auto all_figures = [this](const Drawer& drawer) {
        std::string seen;
        CashPosition position(drawers.shop.connection(), drawers.session, drawers.services.clock);
        position.compute(drawer.store, {middle_day, {}}, {middle_day, {20, 0, 0, 0}});
        for (const DrawerPosition& computed : position.drawers()) {
            if (computed.drawer == drawer.code) seen += text(computed.position);
        }
        const Figures figures = compute_figures(drawers.shop.connection(), drawer, middle_day);
        for (const common::Amount value : figures.values)
            seen += " " + text(value);
        const Window window = until({middle_day, {20, 0, 0, 0}});
        for (const Procedure* procedure : {&calc_of_shift_close, &calc_of_shift_start})
            seen += " " + text(total_of(read_sums(drawers.shop.connection(), *procedure, drawer, window)));
        for (const std::string& cell : compute_summary(drawers.shop.connection(), drawer, middle_day).cells())
            seen += " " + cell;
        return seen;
    };
    for (int round = 0; round < 40; ++round) {
        std::mt19937 random(4000 + static_cast<unsigned>(round));
        Ledger ledger = test::random_ledger(random, 30);
        write(drawers, ledger);
        const Drawer moved = all_drawers[round % 3];
        std::vector<std::string> seen;
        for (const Drawer& drawer : all_drawers)
            seen.push_back(all_figures(drawer));

        for (auto row : test::random_ledger(random, 30).rows) {
            row.store = row.to_store = moved.store;
            row.drawer = row.to_drawer = moved.code;
            ledger.rows.push_back(row);
        }
        write(drawers, ledger);
        for (std::size_t i = 0; i < seen.size(); ++i) {
            if (all_drawers[i] == moved) continue;
            EXPECT_EQ(all_figures(all_drawers[i]), seen[i]) << "round " << round;
        }
    }
}

}  // namespace
}  // namespace cash
