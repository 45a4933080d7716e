// The sheet that chooses how this workstation's screen looks and sounds.
#pragma once

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

namespace ui {

// Each choice holds at once and is kept in a file beside the program.
class ScreenSheet : public Sheet {
    Q_OBJECT
  public:
    ScreenSheet(QWidget* host, const Context& context);

  private:
    void add(const char* name, const QString& caption, const QString& meaning, bool ScreenChoice::*member);
    void keep();

    Context context_;
};

}  // namespace ui
