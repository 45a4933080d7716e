// The page of reports: choice, chart, table, and both on paper, as PDF and as CSV.
#pragma once

#include "reports/desk.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/page.h"

class QLabel;
class QVBoxLayout;

namespace ui {

class Chart;
class ListTable;

class ReportPage : public Page {
    Q_OBJECT
  public:
    explicit ReportPage(const Context& context);
    void open() override;
    void take_focus() override;

  private:
    QWidget* build_choices();
    QWidget* build_foot();
    void take_preset();
    void show_report();
    void repaint_table();
    // The rows behind a row of the table.
    void open_row(int row);

    Context context_;
    reports::Desk logic_;
    Form<reports::DeskFields> form_;
    QLabel* title_;
    Chart* chart_;
    QVBoxLayout* table_place_;
    ListTable* table_ = nullptr;  // made anew for each kind, whose columns differ
    QLabel* note_;
};

}  // namespace ui
