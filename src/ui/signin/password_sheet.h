// The sheet on which the signed-in user changes his password.
#pragma once

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLineEdit;

namespace ui {

class PasswordSheet : public Sheet {
    Q_OBJECT
  public:
    PasswordSheet(QWidget* host, const Context& context);

  private:
    void confirm();

    Context context_;
    QLineEdit* old_;
    QLineEdit* new_;
    QLineEdit* again_;
};

}  // namespace ui
