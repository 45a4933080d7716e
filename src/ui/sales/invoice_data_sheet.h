// The data of the invoice besides its lines: store, date, salesman, note, and whether a receipt is printed.
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

// run() returns 1 if the data were taken over and 0 if the invoice stays as it was.
class InvoiceDataSheet : public Sheet {
    Q_OBJECT
  public:
    InvoiceDataSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void enter() override;

  private:
    const Context& context_;
    sales::SalesDesk& desk_;
    QComboBox* store_;
    QLineEdit* date_;
    QComboBox* worker_;
    QLineEdit* note_;
    QCheckBox* no_receipt_;
};

}  // namespace ui
