// Scrolling through a long account statement.
#include "ui/accounts/account_statement_screen.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <ctime>

#include "ui/widgets/style.h"

namespace {

// Any screenful of an account with twenty thousand movements is painted within two or three frames.
TEST(StatementModel, TwentyThousandRowsAreLeafedThroughWithoutStutter) {
    ui::apply_style(*qApp, QSize(1366, 768));
    std::vector<accounts::StatementRow> rows(20000);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].date = "2026/11/05";
        rows[i].debit = common::Amount(static_cast<double>(i) + 0.25);
        rows[i].balance = rows[i].debit + rows[i].debit;
        rows[i].description = "مبيعات : إذن رقم " + std::to_string(i);
    }
    ui::StatementModel model;
    QTableView view;
    view.setLayoutDirection(Qt::RightToLeft);
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.setModel(&model);
    view.resize(1366, 700);
    view.show();
    model.show(rows);
    ASSERT_FALSE(view.grab().isNull());  // fonts are loaded once

    constexpr int screens = 40;
    const std::clock_t before = std::clock();
    for (int screen = 0; screen <= screens; ++screen) {
        QScrollBar* bar = view.verticalScrollBar();
        bar->setValue(bar->maximum() * screen / screens);
        view.grab();
    }
    const double each = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / screens;
    RecordProperty("seconds_a_screen", std::to_string(each));
    EXPECT_LT(each, 0.04);
    EXPECT_TRUE(view.visualRect(model.index(19999, 0)).intersects(view.viewport()->rect()));
}

}  // namespace
