// The receipts list: what this drawer saved today, to look at, print again, or start a return from.
#pragma once

#include <vector>

#include "sales/recall.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// run() returns 1 when a receipt was brought to the sales screen.
class ReceiptsSheet : public Sheet {
    Q_OBJECT
  public:
    ReceiptsSheet(QWidget* host, sales::SalesDesk& desk);

  protected:
    void take_focus() override;

  private:
    // The row of the cursor; null, after saying so, on an empty list.
    const sales::ReceiptRow* chosen();
    void show_receipt();
    void reprint();
    void start_return();

    sales::SalesDesk& desk_;
    std::vector<sales::ReceiptRow> rows_;
    ListTable* table_;
};

}  // namespace ui
