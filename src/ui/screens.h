// The screens that the sales window opens.
#pragma once

#include <vector>

#include "ui/sales/commands.h"

namespace ui {

// One row for each screen gives it its key and its place on the strip or in the menu.
const std::vector<Command>& screen_commands();

}  // namespace ui
