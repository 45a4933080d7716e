// The receipts that this drawer saved today, to look at, print again, or start a return from.
#pragma once

#include <vector>

#include "sales/recall.h"
#include "ui/widgets/sheet.h"

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// run() returns 1 if a receipt was brought to the sales window.
class ReceiptsSheet : public Sheet {
    Q_OBJECT
  public:
    ReceiptsSheet(QWidget* host, sales::SalesDesk& desk);

  protected:
    void take_focus() override;

  private:
    // The row of the cursor; null if there is none or a box is open.
    const sales::ReceiptRow* chosen();
    void show_receipt();
    void reprint();
    void start_return();

    sales::SalesDesk& desk_;
    std::vector<sales::ReceiptRow> rows_;
    ListTable* table_;
};

}  // namespace ui
