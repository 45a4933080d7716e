// How far a long print has come.
#pragma once

#include <string>

#include "printing/pages/page_set.h"

namespace ui {

// Shows a bar over the window in use once the work has taken a moment; Esc or its button ends the work. The
// bar goes when the last copy of what this returns is gone.
printing::pages::Progress show_progress(const std::string& title);

}  // namespace ui
