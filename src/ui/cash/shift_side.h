// The side place of the sales screen: the drawer's shifts, the user filter and the cash panel.
#pragma once

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;

namespace sales {
class SalesDesk;
}

namespace ui {

class CashPanel;
class ListTable;

class ShiftSide : public Sheet {
    Q_OBJECT
  public:
    ShiftSide(QWidget* host, sales::SalesDesk& desk, const Context& context);

  private:
    QWidget* build_shifts();
    void show_shifts();
    void start_shift();

    Context context_;
    sales::SalesDesk& desk_;
    QComboBox* users_;
    ListTable* shifts_;
    CashPanel* panel_;
};

}  // namespace ui
