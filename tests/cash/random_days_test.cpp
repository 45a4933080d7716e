// Hundreds of random shop days: each procedure against an independent ledger of plain rows in memory, summed
// by hand from the shop's table of signs.
#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "cash/cash_position.h"
#include "cash/cash_sums.h"
#include "cash/figures.h"
#include "database/till_settings.h"
#include "drawers.h"

namespace cash {
namespace {

constexpr int rounds = 250;
constexpr common::Date middle_day{2026, 11, 21};
constexpr Drawer all_drawers[] = {{1, 1}, {1, 2}, {2, 1}};

struct Movement {
    enum Table { sales, vencuspay, btran, cach_t, in_out, dailyexp, mor_les } table = sales;
    std::int64_t store = 1, drawer = 1;
    std::int64_t to_store = 1, to_drawer = 1;        // cach_t
    int day = 0;                                     // 0, 1, 2: 2026/11/20 and the days after
    int second = -1;                                 // of the day; -1 a null time
    int ctype = 0, stype = 0, vcode = -1, safe = 0;  // safe -1: null
    int type = 1, kind = 1;  // vencuspay.type and ptype, btran.type1 and Type, in_out.type1
    long amount = 0;         // hundredths
    long paid_out = 0;       // disboun, hundredths
    long discount = 0;       // pdis, hundredths
    bool null_amount = false;

    // Seconds since the first day's midnight; a null time is midnight.
    long moment() const { return day * 86400L + (second < 0 ? 0 : second); }
    long counted() const { return null_amount ? 0 : amount; }
};

class Ledger {
  public:
    std::vector<Movement> rows;
    int net_from = 0;  // the first day without discounts in the drawer; 3 is none of the three days
    static long copen(std::int64_t store, std::int64_t drawer) { return 1000L * store + 10L * drawer; }
    static long salary(std::int64_t store, std::int64_t drawer) { return 700L * store + 30L * drawer; }

    enum class Rule { store_wide, calc, previous };

    // The hundredths of cash in a drawer, of the movements that `counts` accepts by their moment.
    template <typename Counts>
    long cash(std::int64_t store, std::int64_t drawer, Rule rule, const Counts& counts) const {
        long total = rule == Rule::calc ? salary(store, drawer) : copen(store, drawer);
        for (const Movement& row : rows) {
            const bool mine = row.store == store && row.drawer == drawer;
            if (row.table == Movement::cach_t) {
                if (!counts(row)) continue;
                if (mine) total -= row.counted();
                if (row.to_store == store && row.to_drawer == drawer) total += row.counted();
                continue;
            }
            if (!mine || !counts(row)) continue;
            total += row.table == Movement::sales ? of_invoice(row, rule) : of_other(row);
        }
        return total;
    }

    // What the drawer did not take in of a discounted sale, less what a return did not give back.
    static long discount_of(const Movement& row, Rule rule) {
        const bool uncollected = row.stype == 4 && row.safe == 0;
        const bool taken_in = row.stype != 1 && row.stype != 2 && !uncollected;
        const bool given_back =
            rule == Rule::store_wide ? row.ctype > 1 && row.stype != 1 : row.ctype == 1 || row.ctype == 2;
        return (row.ctype < 2 && taken_in ? row.discount : 0) - (given_back ? row.discount : 0);
    }

    long of_invoice(const Movement& row, Rule rule) const {
        if (row.vcode != -1) return 0;
        const bool sale = row.ctype == 0 || row.ctype == 1;
        long effect = row.day >= net_from ? -discount_of(row, rule) : 0;
        if (rule == Rule::store_wide) {
            // Sales but card, less tips, coupons and uncollected orders; returns but card; their coupons come
            // back.
            if (sale && row.stype != 1) effect += row.counted();
            if (!sale && row.stype != 1) effect -= row.counted();
            if (!sale && row.stype == 3) effect += row.paid_out;
        } else {
            if (sale) effect += row.counted();
            if (sale && row.stype == 1) effect -= row.counted();
            if (row.ctype == 1 || row.ctype == 2) effect -= row.counted();
        }
        if (sale && (row.stype == 2 || row.stype == 3)) effect -= row.paid_out;
        if (sale && row.stype == 4 && row.safe == 0) effect -= row.counted();
        return effect;
    }

    static long of_other(const Movement& row) {
        switch (row.table) {
            case Movement::vencuspay:
                if (row.type != 1) return 0;
                return row.kind == 2 ? row.counted() : -row.counted();
            case Movement::btran:
                if (row.type != 1) return 0;
                return row.kind == 1 ? -row.counted() : row.counted();
            case Movement::in_out:
                return row.type == 0 ? -row.counted() : row.counted();
            case Movement::dailyexp:
                return -row.counted();
            default:
                return row.counted();  // a shortage is negative
        }
    }
};

// A random day and the days around it: all kinds of movements on the three drawers, often at midnight, at the
// noon of the middle day, or without a time.
Ledger random_ledger(std::mt19937& random, int size) {
    const auto pick = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    Ledger ledger;
    ledger.net_from = pick(0, 3);
    for (int i = 0; i < size; ++i) {
        Movement row;
        row.table = pick(0, 1) == 0 ? Movement::sales : static_cast<Movement::Table>(pick(1, 6));
        const Drawer& from = all_drawers[pick(0, 2)];
        const Drawer& to = all_drawers[pick(0, 2)];
        row.store = from.store;
        row.drawer = from.code;
        row.to_store = to.store;
        row.to_drawer = to.code;
        row.day = pick(0, 2);
        const int times[] = {-1, 0, 43200, 86399, pick(1, 86398), pick(1, 86398), 43199, 43201};
        row.second = times[pick(0, 7)];
        row.ctype = pick(0, 3);
        row.stype = pick(0, 4);
        row.vcode = pick(0, 3) == 0 ? 7 : -1;
        row.safe = pick(-1, 1);
        row.type = row.table == Movement::vencuspay ? pick(0, 3) : pick(0, 1);
        row.kind = row.table == Movement::vencuspay ? pick(1, 2) : pick(0, 1);
        row.amount = pick(1, 50000);
        if (row.table == Movement::mor_les && pick(0, 1) == 0) row.amount = -row.amount;
        row.paid_out = pick(0, 3000);
        row.discount = pick(0, 2) == 0 ? pick(1, 2000) : 0;
        row.null_amount = pick(0, 14) == 0;
        ledger.rows.push_back(row);
    }
    return ledger;
}

std::string amount_text(long hundredths) {
    return common::format_amount(static_cast<double>(hundredths) / 100);
}

// The columns of each table, in the order of Movement::Table: store, drawer, date, time and amount, then
// those that the table alone has.
constexpr const char* columns[] = {
    "sales (stcode,ptype,[date],time_,ptot,pnum,ctype,stype,vcode,disboun,pdis,safe)",
    "vencuspay (stcode,cash_n,[date],time_,quan,chkno,[type],ptype,ztype,vcode)",
    "btran (stcode,cash_n,[date],time_,quan,ser,type1,[type])",
    "cach_t (cfr,cash_nf,cdate,time_,caml,cnum,cto,cash_nt)",
    "in_out (stcode,cash_n,[date],time_,aml,ser,type1)",
    "dailyexp (stcode,cash_n,expdate,time_,[value])",
    "mor_les (stcode,ptype,[date],time_,aml)",
};

void write_own_values(std::ostream& sql, const Movement& row, int number) {
    if (row.table == Movement::dailyexp || row.table == Movement::mor_les) return;
    sql << "," << number;
    if (row.table == Movement::sales) {
        sql << "," << row.ctype << "," << row.stype << "," << row.vcode << "," << amount_text(row.paid_out)
            << "," << amount_text(row.discount) << "," << (row.safe < 0 ? "null" : std::to_string(row.safe));
    } else if (row.table == Movement::cach_t) {
        sql << "," << row.to_store << "," << row.to_drawer;
    } else {
        sql << "," << row.type;
    }
    if (row.table == Movement::vencuspay) sql << "," << row.kind << ",2,7";
    if (row.table == Movement::btran) sql << "," << row.kind;
}

// Writes the ledger into the shop in place of all movements there.
void write(test::Drawers& drawers, const Ledger& ledger) {
    for (const char* table : {"sales", "vencuspay", "btran", "cach_t", "in_out", "dailyexp", "mor_les"})
        drawers.shop.sql("delete from " + std::string(table));
    for (const Drawer& drawer : all_drawers) {
        drawers.shop.sql("update cash set copen = " + amount_text(ledger.copen(drawer.store, drawer.code)) +
                         ", salary1 = " + amount_text(ledger.salary(drawer.store, drawer.code)) +
                         " where stcode = " + std::to_string(drawer.store) +
                         " and code = " + std::to_string(drawer.code));
    }
    drawers.shop.sql("delete from till_setting");
    if (ledger.net_from < 3)
        database::set_till_setting(drawers.shop.connection(), database::setting::net_from,
                                   "2026/11/" + std::to_string(20 + ledger.net_from));
    int number = 0;
    for (const Movement& row : ledger.rows) {
        std::ostringstream sql;
        sql << "insert into " << columns[row.table] << " select " << row.store << "," << row.drawer
            << ",'2026/11/" << 20 + row.day << "',";
        if (row.second < 0) {
            sql << "null";
        } else {
            sql << "'" << common::time_text({row.second / 3600, row.second / 60 % 60, row.second % 60, 0})
                << "'";
        }
        sql << "," << (row.null_amount ? "null" : amount_text(row.amount));
        write_own_values(sql, row, ++number);
        drawers.shop.sql(sql.str());
    }
}

using Rule = Ledger::Rule;

std::string text(double amount) {
    return common::format_amount(amount);
}
std::string text(common::Amount amount) {
    return amount.text();
}

class RandomDays : public testing::Test {
  protected:
    // Runs a check on many random shops. A failure names its round, with which it can be repeated.
    template <typename Check>
    void each_shop(unsigned seed, const Check& check) {
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            SCOPED_TRACE("round " + std::to_string(round));
            std::mt19937 random(seed + static_cast<unsigned>(round));
            const Ledger ledger = random_ledger(random, 12 + round % 40);
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
        const auto before = [&](const Movement& row) { return row.moment() < until; };
        for (const std::int64_t store : {1, 2}) {
            CashPosition position(drawers.shop.connection(), drawers.session, drawers.services.clock);
            position.compute(store, as_moment(start), as_moment(until));
            for (const DrawerPosition& drawer : position.drawers()) {
                EXPECT_EQ(text(drawer.position),
                          amount_text(ledger.cash(store, drawer.drawer, Rule::store_wide, before)));
                long card = 0;
                long telephone = 0;
                for (const auto& row : ledger.rows) {
                    if (row.table != Movement::sales || row.store != store || row.drawer != drawer.drawer ||
                        row.vcode != -1 || row.moment() <= start || row.moment() > until)
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
            const auto before = [&](const Movement& row) {
                return (row.table == Movement::mor_les ? row.day * 86400L : row.moment()) < until;
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
        const auto in_day = [&](const Movement& row) {
            return row.moment() > day && row.moment() < day + 86400;
        };
        const auto before = [&](const Movement& row) { return row.moment() <= day; };
        const auto up_to_end = [&](const Movement& row) { return row.moment() < day + 86400; };
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
                if (row.table == Movement::sales && row.store == drawer.store && row.drawer == drawer.code &&
                    row.vcode != -1 && row.ctype < 2 && in_day(row))
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

// Nothing that happens on one drawer changes the figures of the others.
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
        const Window window = until({middle_day, {20, 0, 0, 0}}, common::Date{2026, 11, 20});
        for (const Procedure* procedure : {&calc_of_shift_close, &calc_of_shift_start})
            seen += " " + text(total_of(read_sums(drawers.shop.connection(), *procedure, drawer, window)));
        for (const std::string& cell : compute_summary(drawers.shop.connection(), drawer, middle_day).cells())
            seen += " " + cell;
        return seen;
    };
    for (int round = 0; round < 40; ++round) {
        std::mt19937 random(4000 + static_cast<unsigned>(round));
        Ledger ledger = random_ledger(random, 30);
        write(drawers, ledger);
        const Drawer moved = all_drawers[round % 3];
        std::vector<std::string> seen;
        for (const Drawer& drawer : all_drawers)
            seen.push_back(all_figures(drawer));

        for (auto row : random_ledger(random, 30).rows) {
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
