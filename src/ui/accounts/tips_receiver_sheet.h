// The sheet that adds or edits a receiver of tips.
#pragma once

#include "accounts/tips_receiver.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

// run() returns 1 when the entry was saved.
class TipsReceiverSheet : public Sheet {
    Q_OBJECT
  public:
    TipsReceiverSheet(QWidget* host, const Context& context);
    void open_new();
    // Returns false after a message if there is no such receiver.
    bool open_edit(std::int64_t receiver);

  protected:
    void take_focus() override;

  private:
    void show_entry();
    void save();

    Context context_;
    accounts::TipsReceiver logic_;
    Form<accounts::TipsReceiverFields> form_;
    QLabel* title_;
};

}  // namespace ui
