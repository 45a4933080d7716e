// The side place of the sales screen: the drawer's shifts and the user filter.
#pragma once

#include "ui/sheet.h"

namespace sales {
class SalesScreen;
}

namespace ui {

class ShiftSide : public Sheet {
    Q_OBJECT
  public:
    ShiftSide(QWidget* host, const sales::SalesScreen& screen);
};

}  // namespace ui
