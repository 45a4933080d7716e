// A report's figures as columns, the first of them on the right.
#pragma once

#include <QStringList>
#include <QWidget>

#include "reports/table.h"

class QBarSet;
class QChart;
class QChartView;
class QLabel;

namespace ui {

// One column has the focus: arrows move it, Enter takes the column.
class Chart : public QWidget {
    Q_OBJECT
  public:
    explicit Chart(const QString& name);
    // The charted column of the table: all rows of one in time, else the largest. Without rows the chart
    // hides, unless it has something to say then.
    void show_table(const reports::Table& table, const QString& caption);
    void say_when_empty(const QString& text) { when_empty_ = text; }

  signals:
    // A column was pressed, or Enter on it: its row in the table.
    void row_taken(int row);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QChart* chart_of(const reports::Table& table);
    void move_to(int row);
    // Marks the column that the focus is on, and says what it stands for.
    void show_mark();

    QLabel* caption_label_;
    QChartView* view_;
    QString caption_;
    QString when_empty_;
    QStringList texts_;  // of the columns: label and figure
    QBarSet* set_ = nullptr;
    int marked_ = 0;  // row
};

}  // namespace ui
