// The screens that are opened from the sales screen, each with its key, caption and how it opens.
#pragma once

#include "ui/sales/screens.h"
#include "ui/widgets/context.h"

namespace ui {

// A later screen is added here and nowhere else.
Screens neighbours(const Context& context);

}  // namespace ui
