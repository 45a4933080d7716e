// The screen of walk-in customers: finds one, or takes in a new one, for the invoice being rung up.
#pragma once

#include "accounts/cash_customer.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLineEdit;
class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// Enter in the name, phone or e-mail searches: with something found the list has the focus, otherwise typing
// goes on in the next field. run() returns 1 when the invoice's customer was chosen or taken away.
class Cust_cash : public Sheet {
    Q_OBJECT
  public:
    Cust_cash(QWidget* host, const Context& context, sales::SalesDesk& desk);
    // Proposes the next code, or shows the customer that the invoice has already. False for an account
    // invoice, which has its own customer (the message has been shown).
    bool open();

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    using Search = void (accounts::CashCustomer::*)();
    void search(Search by, QLineEdit* field, QWidget* next);
    void read_fields();
    void show_fields();
    void show_results();
    void enter_code();
    void choose(int row);
    void confirm();

    Context context_;
    sales::SalesDesk& desk_;
    accounts::CashCustomer logic_;
    QLineEdit* code_;
    QLineEdit* name_;
    QLineEdit* phone_;
    QLineEdit* mail_;
    ListTable* results_;
    QPushButton* confirm_;
    QPushButton* without_;
};

}  // namespace ui
