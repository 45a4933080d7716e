// The direct receipt: an account customer pays at the till without an invoice.
#pragma once

#include <cstdint>

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLineEdit;

namespace sales {
class SalesDesk;
}

namespace ui {

class Figure;

// Enter in the amount saves; the drawer is opened and the paper offered. run() returns 1 when it was saved.
class DirectReceipt : public Sheet {
    Q_OBJECT
  public:
    // The customer of the invoice on the screen is the one who pays, unless another is chosen.
    DirectReceipt(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void take_focus() override;

  private:
    void show_balance();
    void save();
    void offer_paper(const std::string& number, double amount, double before);

    Context context_;
    sales::SalesDesk& desk_;
    QComboBox* customer_;
    Figure* balance_;
    Figure* after_;
    QLineEdit* amount_;
    double owed_ = 0;
};

}  // namespace ui
