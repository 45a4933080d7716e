// The payment dialog: net, paid, change in large figures, and the salesman.
#pragma once

#include "ui/widgets/sheet.h"

class QComboBox;
class QFrame;
class QLabel;

namespace sales {
class Payment;
}

namespace ui {

class AmountField;

// run() returns 1 for confirm (Enter) and 0 for back to the invoice (Esc). `payment` holds what was typed.
class PaymentDialog : public Sheet {
    Q_OBJECT
  public:
    PaymentDialog(QWidget* host, sales::Payment& payment);

  protected:
    void take_focus() override;
    void enter() override;

  private:
    void show_change();

    sales::Payment& payment_;
    AmountField* paid_;
    QLabel* change_;
    QFrame* change_box_;
    QComboBox* worker_;
};

}  // namespace ui
