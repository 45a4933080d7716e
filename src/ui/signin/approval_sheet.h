// A refusal that a supervisor can lift: the box that says it, and the sheet on which he types his password or
// scans his badge. What is on the screen below stays as it is.
#pragma once

#include "signin/supervisors.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace ui {

// Shows the refusal. Returns who allows the action, or nothing if nobody does.
std::optional<audit::Person> ask_supervisor(const Context& context, const signin::Refused& refused);

class ApprovalSheet : public Sheet {
    Q_OBJECT
  public:
    ApprovalSheet(QWidget* host, const Context& context, const signin::Refused& refused);
    // Returns false after a message if nobody else may allow the action.
    bool open();
    // Returns false after showing why the badge allows nothing.
    bool take_badge(const std::string& badge);
    const std::optional<audit::Person>& approver() const { return approver_; }

  protected:
    void take_focus() override;

  private:
    void confirm();

    Context context_;
    signin::Supervisors logic_;
    QComboBox* user_;
    QLineEdit* password_;
    QLabel* pause_;
    std::optional<audit::Person> approver_;
};

}  // namespace ui
