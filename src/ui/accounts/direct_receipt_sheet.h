// The direct receipt: an account customer pays at the till without an invoice.
#pragma once

#include "accounts/direct_receipt.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

namespace sales {
class SalesDesk;
}

namespace ui {

// Enter in the amount saves; then the drawer opens and the paper is offered. run() returns 1 when it was
// saved.
class DirectReceiptSheet : public Sheet {
    Q_OBJECT
  public:
    // The customer of the invoice on the screen pays, unless another is chosen.
    DirectReceiptSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void take_focus() override;

  private:
    void show_balance();
    void show_balance_after();
    void save();
    void offer_paper(const accounts::PrintedVoucher& paper);

    Context context_;
    sales::SalesDesk& desk_;
    accounts::DirectReceiptFields fields_;
    Form<accounts::DirectReceiptFields> form_;
    double owed_ = 0;
};

}  // namespace ui
