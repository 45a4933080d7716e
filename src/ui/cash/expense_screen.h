// The expense screen: adds a daily expense paid from a drawer.
#pragma once

#include "cash/expenses.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

namespace ui {

// Enter walks from field to field and ends on the button that saves.
class ExpenseScreen : public Sheet {
    Q_OBJECT
  public:
    ExpenseScreen(QWidget* host, const Context& context);
    void open();

  protected:
    void take_focus() override;

  private:
    void choose_store();
    void choose_main_heading();
    void save();

    Context context_;
    cash::Expenses logic_;
    Form<cash::Expense> form_;
};

}  // namespace ui
