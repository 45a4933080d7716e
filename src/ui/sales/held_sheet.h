// The invoices that the store's tills have put aside.
#pragma once

#include <optional>
#include <vector>

#include "sales/held_invoices.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// run() returns 1 if an invoice was brought to the sales window.
class HeldSheet : public Sheet {
    Q_OBJECT
  public:
    HeldSheet(QWidget* host, sales::SalesDesk& desk, const Context& context);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void read();
    // Shows what the row of the cursor does not: its goods, and who has it on his screen.
    void show_details();
    QString details(std::size_t row) const;
    // The row of the cursor; null if there is none or a box is open.
    const sales::HeldInvoice* chosen();
    void resume();
    void discard();

    sales::SalesDesk& desk_;
    const Context& context_;
    std::vector<sales::HeldInvoice> held_;
    std::vector<std::optional<sales::KeptInvoice>> invoices_;  // of held_, as far as they can be read
    ListTable* table_;
    QLabel* details_;
};

}  // namespace ui
