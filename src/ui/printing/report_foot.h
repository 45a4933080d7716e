// What the foot of a list offers to do with it: paper, preview, CSV.
#pragma once

#include <QString>
#include <functional>

#include "printing/report.h"
#include "ui/widgets/context.h"

class QHBoxLayout;
class QLabel;

namespace ui {

// Adds the three buttons to a row, named `name` and "_print", "_preview", "_csv". `paper` is what is on the
// screen as a page; where it went is said in `note`.
void add_report_buttons(QHBoxLayout* row, const QString& name, const Context& context,
                        std::function<printing::Report()> paper, QLabel* note);

}  // namespace ui
