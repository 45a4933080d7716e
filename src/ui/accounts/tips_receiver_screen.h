// The receivers of tips: their list, and the screen that adds or edits one.
#pragma once

#include "accounts/tips_receiver.h"
#include "ui/accounts/people_list.h"
#include "ui/widgets/context.h"

class QLabel;

namespace ui {

// run() returns 1 when the entry was saved.
class Form36 : public Sheet {
    Q_OBJECT
  public:
    Form36(QWidget* host, const Context& context);
    void open_new();
    // False when there is no such receiver (the message has been shown).
    bool open_edit(std::int64_t receiver);

  protected:
    void take_focus() override;

  private:
    void show_entry();
    void save();

    Context context_;
    accounts::TipsReceiver logic_;
    QLabel* title_;
    QLineEdit* code_;
    QLineEdit* name_;
};

class TipsReceivers : public PeopleList {
    Q_OBJECT
  public:
    TipsReceivers(QWidget* host, const Context& context);
};

}  // namespace ui
