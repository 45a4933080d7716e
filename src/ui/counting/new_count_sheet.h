// Asks which goods a new count covers.
#pragma once

#include "counting/counts.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

namespace ui {

// run() returns the number of the count that was opened.
class NewCountSheet : public Sheet {
    Q_OBJECT
  public:
    NewCountSheet(QWidget* host, const Context& context);
    // Reads the lists. May throw.
    void open();

  private:
    void save();

    Context context_;
    counting::NewCount fields_;
    Form<counting::NewCount> form_;
};

}  // namespace ui
