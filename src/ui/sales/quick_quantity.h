// The small pop-up field for the last line's quantity.
#pragma once

#include "ui/widgets/sheet.h"

namespace ui {

class AmountField;

// run() returns 1 when Enter was pressed, 0 after Esc.
class QuickQuantity : public Sheet {
    Q_OBJECT
  public:
    QuickQuantity(QWidget* host, const QString& item, const QString& quantity);
    QString text() const;

  private:
    AmountField* field_;
};

}  // namespace ui
