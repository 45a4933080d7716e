// The ledgers of the daily statement and the day summary add up to their totals with the signs they show.
#include "ui/cash/figure_ledger.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <cmath>
#include <functional>
#include <map>
#include <set>

#include "cash/figures.h"
#include "database/till_settings.h"
#include "support/shop.h"
#include "ui/widgets/style.h"

namespace {

constexpr common::Date day{2026, 11, 21};

// One movement of every kind, each with another amount.
void fill(test::Shop& shop) {
    const struct {
        int vcode, ctype, stype;
        double total, discount, tips;
    } invoices[] = {{101, 0, 0, 1.01, 0, 0}, {101, 2, 0, 2.02, 0, 0},     {-1, 0, 0, 904.04, 90.4, 0},
                    {-1, 0, 1, 8.08, 0, 0},  {-1, 0, 2, 16.16, 0, 3},     {-1, 0, 3, 32.32, 0, 5},
                    {-1, 0, 4, 64.64, 0, 0}, {-1, 2, 0, 128.28, 12.8, 0}, {-1, 1, 0, 56.56, 0, 0}};
    int number = 0;
    for (const auto& row : invoices) {
        shop.sql(
            "insert into sales (pnum, vcode, ctype, stype, ptot, pdis, disboun, safe, stcode, ptype, [date], "
            "time_) "
            "values (" +
            std::to_string(++number) + ", " + std::to_string(row.vcode) + ", " + std::to_string(row.ctype) +
            ", " + std::to_string(row.stype) + ", " + std::to_string(row.total) + ", " +
            std::to_string(row.discount) + ", " + std::to_string(row.tips) +
            ", 0, 1, 1, '2026/11/21', '10:00:00')");
    }
    const auto moved = [&shop](const std::string& table, const std::string& columns,
                               const std::string& values) {
        shop.sql("insert into " + table + " (" + columns + ", time_) values (" + values + ", '11:00:00')");
    };
    moved("vencuspay", "ptype, type, quan, stcode, cash_n, [date]", "1, 1, 7.07, 1, 1, '2026/11/21'");
    moved("vencuspay", "ptype, type, quan, stcode, cash_n, [date]", "2, 1, 9.09, 1, 1, '2026/11/21'");
    moved("btran", "[type], type1, quan, stcode, cash_n, [date]", "1, 1, 11.11, 1, 1, '2026/11/21'");
    moved("btran", "[type], type1, quan, stcode, cash_n, [date]", "0, 1, 13.13, 1, 1, '2026/11/21'");
    moved("cach_t", "caml, cfr, cash_nf, cto, cash_nt, cdate", "15.15, 1, 1, 2, 1, '2026/11/21'");
    moved("cach_t", "caml, cfr, cash_nf, cto, cash_nt, cdate", "17.17, 2, 1, 1, 1, '2026/11/21'");
    moved("in_out", "aml, type1, stcode, cash_n, [date]", "19.19, 0, 1, 1, '2026/11/21'");
    moved("in_out", "aml, type1, stcode, cash_n, [date]", "21.21, 1, 1, 1, '2026/11/21'");
    moved("dailyexp", "[value], stcode, cash_n, expdate", "23.23, 1, 1, '2026/11/21'");
    moved("sales", "vcode, ctype, stype, ptot, stcode, ptype, [date]", "-1, 0, 0, 25.25, 1, 1, '2026/11/20'");
}

// Checks every total against the figures of its column with the signs shown.
void expect_to_add_up(const std::vector<ui::LedgerColumn>& ledger, const std::function<double(int)>& figure) {
    for (const ui::LedgerColumn& column : ledger) {
        for (const ui::LedgerGroup& group : column) {
            double sum = 0;
            for (const ui::LedgerEntry& entry : group.entries) {
                if (entry.sign == "+") sum += figure(entry.id);
                if (entry.sign == "−") sum -= figure(entry.id);
                if (entry.sign != "=") continue;
                EXPECT_NEAR(sum, figure(entry.id), 0.001) << entry.name.toStdString();
                EXPECT_GT(std::abs(sum), 1) << entry.name.toStdString();
            }
        }
    }
}

// How often each figure is shown, not counting figures carried over.
std::map<int, int> counted(const std::vector<ui::LedgerColumn>& ledger) {
    std::map<int, int> found;
    for (const ui::LedgerColumn& column : ledger) {
        for (const ui::LedgerGroup& group : column) {
            for (const ui::LedgerEntry& entry : group.entries)
                found[entry.id] += entry.kind != ui::FigureCell::Kind::carried;
        }
    }
    return found;
}

TEST(StatementLedger, AddsUpWithTheSignsShown) {
    const struct {
        double difference;
        bool with_discounts;
    } cases[] = {{4.04, false}, {-6.06, true}};
    for (const auto& [difference, with_discounts] : cases) {
        test::Shop shop;
        fill(shop);
        if (with_discounts) database::set_till_setting(shop.connection(), "net_from", "2026/11/21");
        shop.sql(
            "insert into mor_les ([date], time_, stcode, ptype, aml) values ('2026/11/21', '20:00:00', 1, "
            "1, " +
            std::to_string(difference) + ")");
        const cash::Figures figures = cash::compute_figures(shop.connection(), {1, 1}, day);
        expect_to_add_up(ui::statement_ledger(with_discounts),
                         [&](int id) { return figures.values[static_cast<std::size_t>(id)].value(); });
        const cash::DaySummary summary = cash::compute_summary(shop.connection(), {1, 1}, day);
        expect_to_add_up(ui::summary_ledger(with_discounts),
                         [&](int id) { return summary.columns[static_cast<std::size_t>(id)].value(); });
    }
}

TEST(StatementLedger, ShowsEveryFigureOnce) {
    const struct {
        std::vector<ui::LedgerColumn> ledger;
        std::size_t figures;
    } cases[] = {{ui::statement_ledger(true), cash::figure_count},
                 {ui::summary_ledger(true), cash::summary_count},
                 {ui::statement_ledger(false), 25},
                 {ui::summary_ledger(false), 11}};
    for (const auto& [ledger, figures] : cases) {
        const auto found = counted(ledger);
        EXPECT_EQ(found.size(), figures);
        for (const auto& [id, times] : found)
            EXPECT_EQ(times, 1) << id;
    }
}

TEST(StatementLedger, LetsTheArrowKeysReachEveryFigure) {
    ui::apply_style(*qApp, {1366, 768});
    ui::FigureLedger ledger("statement", ui::statement_ledger(true));
    ledger.resize(1000, 320);
    ledger.show();
    ledger.activateWindow();
    QApplication::processEvents();
    ledger.take_focus(static_cast<int>(cash::Figure::cash_sales));
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    const auto press = [](int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    std::set<QWidget*> reached;
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 12; ++row) {
            reached.insert(QApplication::focusWidget());
            press(Qt::Key_Down);
        }
        for (int row = 0; row < 12; ++row)
            press(Qt::Key_Up);
        press(Qt::Key_Left);
    }
    EXPECT_EQ(reached.size(), static_cast<std::size_t>(ledger.findChildren<ui::FigureCell*>().size()));
    press(Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "figure_cash_sales");
    // Exactly one figure takes the focus from Tab.
    int tabbed = 0;
    for (const auto* cell : ledger.findChildren<ui::FigureCell*>())
        tabbed += (cell->focusPolicy() & Qt::TabFocus) != 0;
    EXPECT_EQ(tabbed, 1);
}

}  // namespace
