// The shift screen: starts a shift, closes the current one with the counted cash.
#pragma once

#include "cash/shift_screen.h"
#include "ui/context.h"
#include "ui/sheet.h"

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class AmountField;

class shift2s : public Sheet {
    Q_OBJECT
  public:
    shift2s(QWidget* host, const Context& context);
    // Reads the shift; false when the drawer does not exist (the message has been shown).
    bool open();

  private:
    void show_state();
    void read_fields();
    template <typename Action>
    void act(std::string_view name, Action action);
    void print_report();

    Context context_;
    cash::ShiftScreen logic_;
    QLabel* state_;
    QLabel* number_;
    QComboBox* worker_;
    QDateEdit* date_;
    QLineEdit* time_;
    AmountField* counted_;
    AmountField* leave_;
    QPushButton* start_;
    QPushButton* close_;
};

}  // namespace ui
