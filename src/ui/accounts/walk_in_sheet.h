// The sheet of walk-in customers: finds one, or takes in a new one, for the invoice being rung up.
#pragma once

#include "accounts/walk_in_customer.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// Enter in the name, telephone or e-mail searches: if something is found the focus goes to the list,
// otherwise to the next field. run() returns 1 when the customer of the invoice was chosen or taken away.
class WalkInSheet : public Sheet {
    Q_OBJECT
  public:
    WalkInSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);
    // Proposes the next code, or shows the customer that the invoice has already. Refuses an account invoice
    // with a message and returns false, because that has its own customer.
    bool open();

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    using Search = void (accounts::CashCustomer::*)();
    void search(Search by, std::string_view field, QWidget* next);
    void show_results();
    void enter_code();
    void choose(int row);
    void confirm();

    Context context_;
    sales::SalesDesk& desk_;
    accounts::CashCustomer logic_;
    Form<accounts::WalkInFields> form_;
    ListTable* results_;
    QPushButton* confirm_;
    QPushButton* without_;
};

}  // namespace ui
