// A report's figures as columns, the first of them on the right.
#pragma once

#include <QWidget>

#include "reports/table.h"

class QChartView;

namespace ui {

class Chart : public QWidget {
    Q_OBJECT
  public:
    explicit Chart(const QString& name);
    // The charted column of the table: all rows of one in time, else the largest.
    void show_table(const reports::Table& table);

  signals:
    // A column was pressed: its row in the table.
    void row_taken(int row);

  private:
    QChartView* view_;
};

}  // namespace ui
