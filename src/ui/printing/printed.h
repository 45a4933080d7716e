// What is said after something was sent to a printer.
#pragma once

#include <QString>

#include "ui/widgets/context.h"

namespace ui {

// After a report's `print` that was answered with true: that it is on paper, or in which file it was kept
// because the workstation has no printer.
QString printed_text(const Context& context);

// The same as a message, for a report that was printed from no screen of its own; nothing when it is on
// paper.
void say_where_kept(const Context& context);

}  // namespace ui
