// The shift screens: one starts and closes shifts, a lighter one only starts them; and the drawer's shifts
// beside the sales screen.
#pragma once

#include "cash/shift.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class CashPanel;
class ListTable;

// The part that both screens share: the state of the drawer's last shift, and the form of the change.
class ShiftForm : public QWidget {
    Q_OBJECT
  public:
    ShiftForm();
    // Reads the drawer's shift and shows it; returns false after a message if the drawer does not exist.
    bool open(cash::ShiftStart& logic, const Context& context);
    // Start the shift or close it, and print the report of the closed one if the settings want it. Return
    // true if that was done; after a refusal the focus is on the field at fault.
    bool start(cash::ShiftStart& logic, const Context& context);
    bool close_current(cash::ShiftChange& logic, const Context& context);
    // Counts the drawer by notes and coins and takes over the sum.
    void count(cash::ShiftStart& logic, const Context& context);
    // Where Enter in the last field leads to.
    void lead_to(QWidget* last);
    QWidget* first_field() const { return form_.field("shift_worker"); }

  signals:
    void count_wanted();

  private:
    void show_number(const cash::ShiftStart& logic);

    QLabel* state_;
    QLabel* discounts_;
    QPushButton* count_;
    Form<cash::ShiftEntry> form_;
};

// run() returns 1 if a shift was started or closed.
class ShiftScreen : public Sheet {
    Q_OBJECT
  public:
    ShiftScreen(QWidget* host, const Context& context);
    // Reads the shift; returns false after a message if the drawer does not exist.
    bool open() { return form_->open(logic_, context_); }
    // What the drawer was expected to hold when the shift was closed, and what was counted; empty if none was
    // closed, or if the shop wants no report of it.
    QString closing() const;

  protected:
    void take_focus() override { form_->first_field()->setFocus(); }

  private:
    Context context_;
    cash::ShiftChange logic_;
    ShiftForm* form_;
};

// Opened from the list of the drawer's shifts. run() returns 1 if a shift was started.
class ShiftStartScreen : public Sheet {
    Q_OBJECT
  public:
    ShiftStartScreen(QWidget* host, const Context& context);
    bool open() { return form_->open(logic_, context_); }

  protected:
    void take_focus() override { form_->first_field()->setFocus(); }

  private:
    Context context_;
    cash::ShiftStart logic_;
    ShiftForm* form_;
};

// The drawer's shifts, narrowed to those of a user, and the cash panel.
class ShiftSide : public Sheet {
    Q_OBJECT
  public:
    ShiftSide(QWidget* host, sales::SalesDesk& desk, const Context& context);

  private:
    QWidget* build_shifts();
    void show_shifts();
    void start_shift();

    Context context_;
    sales::SalesDesk& desk_;
    QComboBox* users_;
    ListTable* shifts_;
    CashPanel* panel_;
};

}  // namespace ui
