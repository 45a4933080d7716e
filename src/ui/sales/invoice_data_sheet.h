// What the invoice carries beside its lines: store, date, salesman, note, delivery permit, and whether a
// receipt is wanted.
#pragma once

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace sales {
class SalesDesk;
}

namespace ui {

// run() returns 1 when the data were taken over, 0 when the invoice stays as it was.
class InvoiceDataSheet : public Sheet {
    Q_OBJECT
  public:
    InvoiceDataSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void confirm();

    const Context& context_;
    sales::SalesDesk& desk_;
    QComboBox* store_;
    QLineEdit* date_;
    QComboBox* worker_;
    QLineEdit* note_;
    QCheckBox* no_receipt_;
};

}  // namespace ui
