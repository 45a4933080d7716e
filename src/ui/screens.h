// The screens that the sales window opens.
#pragma once

#include <vector>

#include "ui/sales/commands.h"

namespace ui {

// A new screen needs one more row here, and then has its key and its place on the strip or in the menu.
const std::vector<Command>& screen_commands();

}  // namespace ui
