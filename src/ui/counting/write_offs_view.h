// Reports of goods that were written off, over a period.
#pragma once

#include <QWidget>

#include "counting/write_off.h"
#include "printing/report.h"
#include "ui/counting/columns.h"
#include "ui/widgets/context.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;

class WriteOffsView : public QWidget {
    Q_OBJECT
  public:
    explicit WriteOffsView(const Context& context);
    // Reads the reports of the period; at first that of the current month. May throw.
    void open();
    void take_focus();

  private:
    void show_period();
    void reverse();
    // Without the last column for who may not see costs.
    std::span<const Column> columns() const;
    std::vector<std::string> texts_of(const counting::WriteOffRow& row) const;
    std::vector<std::vector<std::string>> texts_of_rows() const;
    printing::Report paper() const;

    Context context_;
    bool sees_cost_;
    common::Date from_;
    common::Date to_;
    bool is_open_ = false;
    std::vector<counting::WriteOffRow> rows_;
    QLineEdit* start_;
    QLineEdit* end_;
    ListTable* table_;
    QPushButton* reverse_;
    QLabel* note_;
};

}  // namespace ui
