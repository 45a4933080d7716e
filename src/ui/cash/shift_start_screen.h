// The lighter shift screen: only starts shifts, from the list of the drawer's shifts.
#pragma once

#include "cash/shift_screen.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace ui {

class ShiftFields;

// run() returns 1 when a shift was started.
class shiftc : public Sheet {
    Q_OBJECT
  public:
    shiftc(QWidget* host, const Context& context);
    // Reads the shift; false when the drawer does not exist (the message has been shown).
    bool open();

  protected:
    void take_focus() override;

  private:
    void start();

    Context context_;
    cash::ShiftStartScreen logic_;
    ShiftFields* fields_;
    QPushButton* start_;
};

}  // namespace ui
