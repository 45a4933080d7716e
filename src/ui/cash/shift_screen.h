// The shift screen: starts a shift, closes the current one with the counted cash.
#pragma once

#include "cash/shift_screen.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace ui {

class ShiftFields;

// run() returns 1 when a shift was started or closed.
class shift2s : public Sheet {
    Q_OBJECT
  public:
    shift2s(QWidget* host, const Context& context);
    // Reads the shift; false when the drawer does not exist (the message has been shown).
    bool open();
    // What the drawer was expected to hold when the shift was closed, and what was counted; empty when none
    // was closed, or when the shop wants no report of it.
    QString closing() const;

  protected:
    void take_focus() override;

  private:
    void start();
    void close_shift();
    // Runs an action that answers whether it was done; prints the report and leaves when it was.
    template <typename Action>
    void act(std::string_view name, Action action);

    Context context_;
    cash::ShiftScreen logic_;
    ShiftFields* fields_;
    QPushButton* start_;
    QPushButton* close_;
};

}  // namespace ui
