// The expense screen: adds a daily expense paid from a drawer.
#pragma once

#include "cash/expenses.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLineEdit;

namespace ui {

class AmountField;

// Enter walks from field to field and ends on the button that saves.
class Form41ca : public Sheet {
    Q_OBJECT
  public:
    Form41ca(QWidget* host, const Context& context);
    void open();

  protected:
    void take_focus() override;

  private:
    void connect_parts();
    void read_fields();
    void save();
    // The field that the next typing belongs to after a refusal.
    QWidget* missing_field() const;

    Context context_;
    cash::Expenses logic_;
    QComboBox* store_;
    QComboBox* drawer_;
    QComboBox* main_heading_;
    QComboBox* sub_heading_;
    QLineEdit* date_;
    AmountField* value_;
    QLineEdit* notes_;
    QWidget* save_;
};

}  // namespace ui
