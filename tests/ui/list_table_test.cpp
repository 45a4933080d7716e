// Long lists: quick at any length, and their rows keep their numbers while a search narrows them.
#include "ui/widgets/list_table.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <ctime>

#include "ui/widgets/search_pause.h"
#include "ui/widgets/style.h"

namespace {

std::vector<QStringList> rows_of(int count) {
    std::vector<QStringList> rows;
    for (int row = 0; row < count; ++row)
        rows.push_back({"\u200e" + QString::number(row), "مبيعات : إذن رقم " + QString::number(row),
                        "\u200e" + QString::number(row) + ".25", "نقدي"});
    return rows;
}

void press(QWidget& widget, int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

double seconds(const std::function<void()>& work) {
    const std::clock_t before = std::clock();
    work();
    return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

class LongList : public testing::Test {
  protected:
    LongList() {
        ui::apply_style(*qApp, QSize(1366, 768));
        list.setLayoutDirection(Qt::RightToLeft);
        list.resize(1366, 700);
        list.show();
        list.grab();  // fonts are loaded once
    }
    QString text(int place, int column) const { return list.model()->index(place, column).data().toString(); }

    ui::ListTable list{"list", {"رقم", "البيان", "القيمة", "الدفع"}, 1};
};

// The limits are processor time and leave room for a slow machine; a list that builds or measures something
// for every cell takes seconds.
TEST_F(LongList, OfTwentyThousandRowsOpensAndIsLeafedThroughWithoutStutter) {
    auto rows = rows_of(20000);
    EXPECT_LT(seconds([&] {
                  list.show_rows(std::move(rows));
                  list.grab();
              }),
              0.15);
    const auto leafed = seconds([&] {
        for (int screen = 0; screen <= 40; ++screen) {
            QScrollBar* bar = list.verticalScrollBar();
            bar->setValue(bar->maximum() * screen / 40);
            list.grab();
        }
    });
    EXPECT_LT(leafed / 40, 0.04);
    EXPECT_LT(seconds([&] {
                  list.narrow([](int row) { return row % 2 == 1; });
                  list.grab();
              }),
              0.05);
    EXPECT_EQ(list.shown_count(), 10000);
}

TEST_F(LongList, HasRoomForItsWidestFigureWhereverItIs) {
    auto rows = rows_of(5000);
    rows[4321][2] = "\u200e1234567890.25";
    rows[10][3] = QString("نقدي ").repeated(90);
    list.show_rows(rows);
    const QModelIndex widest = list.model()->index(4321, 2);
    EXPECT_GE(list.columnWidth(2), list.sizeHintForIndex(widest).width());
    // A long text leaves the others their room.
    EXPECT_LE(list.horizontalHeader()->length(), list.viewport()->width());
    const int width = list.columnWidth(2);
    list.narrow([](int row) { return row < 10; });
    EXPECT_EQ(list.columnWidth(2), width);
}

TEST_F(LongList, KeepsTheNumbersOfItsRows) {
    list.show_rows(rows_of(100));
    EXPECT_EQ(list.current_row(), 0);
    list.narrow([](int row) { return row % 10 == 3; });
    EXPECT_EQ(list.current_row(), 3);
    QList<int> chosen;
    QList<int> taken;
    int left = 0;
    QObject::connect(&list, &ui::ListTable::row_chosen, [&](int row) { chosen << row; });
    QObject::connect(&list, &ui::ListTable::row_taken, [&](int row) { taken << row; });
    QObject::connect(&list, &ui::ListTable::left_upwards, [&] { ++left; });
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_End, Qt::Key_Return, Qt::Key_Home, Qt::Key_Up})
        press(list, key);
    EXPECT_EQ(chosen, (QList<int>{13, 93, 3}));
    EXPECT_EQ(taken, QList<int>{93});
    EXPECT_EQ(left, 2);
    emit list.doubleClicked(list.model()->index(2, 1));
    EXPECT_EQ(taken.back(), 23);
    list.choose_row(43);
    EXPECT_EQ(list.currentIndex().row(), 4);
    list.choose_row(44);  // not shown
    EXPECT_EQ(list.current_row(), -1);
    list.narrow([](int) { return false; });
    EXPECT_EQ(list.current_row(), -1);
    press(list, Qt::Key_Return);
    EXPECT_EQ(taken.size(), 2);
}

TEST(SearchPause, AnswersOnceAfterTheLastLetterOrForTheKeyThatTakesTheRow) {
    int answered = 0;
    ui::SearchPause pause([&] { ++answered; });
    pause.end();
    EXPECT_EQ(answered, 0);
    for (int letter = 0; letter < 3; ++letter)
        pause.begin();
    pause.end();
    EXPECT_EQ(answered, 1);
    pause.begin();
    const QDeadlineTimer longest(2000);
    while (answered < 2 && !longest.hasExpired())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(answered, 2);
    pause.end();
    EXPECT_EQ(answered, 2);
}

}  // namespace
