// The password screen: the signed-in user changes his password.
#pragma once

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLineEdit;

namespace ui {

class Form63 : public Sheet {
    Q_OBJECT
  public:
    Form63(QWidget* host, const Context& context);

  private:
    void confirm();

    Context context_;
    QLineEdit* old_;
    QLineEdit* new_;
    QLineEdit* again_;
};

}  // namespace ui
