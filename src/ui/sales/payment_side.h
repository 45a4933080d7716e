// What the payment dialog shows beside the money: the lines that are paid for, and goods scanned meanwhile.
#pragma once

#include <QLabel>

#include "common/prompts.h"
#include "ui/widgets/list_table.h"

namespace sales {
struct Invoice;
}

namespace ui {

class KeyQueue;

// The lines of the invoice with their units, scrolled to the last one.
class PaymentLines : public ListTable {
    Q_OBJECT
  public:
    explicit PaymentLines(const sales::Invoice& invoice);
};

// Says how many scans wait until the dialog is left. Hidden while there are none.
class WaitingScans : public QLabel {
    Q_OBJECT
  public:
    WaitingScans(KeyQueue& keys, QWidget* parent);
    // On the way back to the invoice: asks whether to add them to it, and drops them if not. Returns false if
    // the dialog should stay open.
    bool may_leave(common::Prompts& prompts);

  private:
    void refresh();

    KeyQueue& keys_;
};

}  // namespace ui
