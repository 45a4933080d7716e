// The fields that the two shift screens share: worker, moment of the change, counted cash and what stays in
// the drawer.
#pragma once

#include <QWidget>

#include "ui/widgets/context.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace cash {
class ShiftStartScreen;
}

namespace ui {

class AmountField;

// Enter walks through the fields and asks for the next control at the end.
class ShiftFields : public QWidget {
    Q_OBJECT
  public:
    ShiftFields();
    // Shows the last shift, the next number and the fields of a screen that was opened.
    void show_state(const cash::ShiftStartScreen& screen);
    // Hands what was typed to the screen; false when the date is none, and the focus stands on it.
    bool read_into(cash::ShiftStartScreen& screen);
    // The amounts alone, for an action that is of this moment whatever date and time stand in the fields.
    void read_amounts_into(cash::ShiftStartScreen& screen);
    // After a refusal: what the screen made of the fields, and the focus where typing goes on.
    void show_refused(const cash::ShiftStartScreen& screen);
    QWidget* first_field();

  signals:
    void finished();

  private:
    QLabel* state_;
    QLabel* discounts_;
    QLabel* number_;
    QComboBox* worker_;
    QLineEdit* date_;
    QLineEdit* time_;
    AmountField* counted_;
    AmountField* leave_;
};

// Prints the report of the shift that the screen's last action closed, when the settings want it printed;
// says so when that failed.
void print_shift_report(const cash::ShiftStartScreen& screen, const Context& context);

}  // namespace ui
