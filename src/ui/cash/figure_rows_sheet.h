// The rows that make a figure of the daily statement, and their sum.
#pragma once

#include "cash/figures.h"
#include "ui/widgets/sheet.h"

namespace ui {

class ListTable;

class FigureRowsSheet : public Sheet {
    Q_OBJECT
  public:
    // `caption` is the figure's heading.
    FigureRowsSheet(QWidget* host, const QString& caption, const cash::FigureRows& rows);

  protected:
    void take_focus() override;

  private:
    ListTable* table_;
};

}  // namespace ui
