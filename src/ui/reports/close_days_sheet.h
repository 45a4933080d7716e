// Closes days: those that wait, or today once its shifts are closed.
#pragma once

#include "reports/today.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class ListTable;

class CloseDaysSheet : public Sheet {
    Q_OBJECT
  public:
    CloseDaysSheet(QWidget* host, const Context& context);

  protected:
    void take_focus() override;

  private:
    void show_days();
    void close(int row);

    Context context_;
    std::vector<reports::DayToClose> days_;
    ListTable* list_;
    QLabel* note_;
};

}  // namespace ui
