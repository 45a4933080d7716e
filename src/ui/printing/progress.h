// Shows the progress of long work such as a print or an import.
#pragma once

#include <string>

#include "printing/pages/page_set.h"

namespace ui {

// Shows a bar over the window in use once the work has taken a moment; Esc or its button ends the work. The
// bar disappears with the last copy of what this returns.
struct ProgressWords {
    const char* state = "صفحة %1 من %2";          // page … of …
    const char* end = "جار التسليم إلى الطابعة";  // handing over to the printer
};
printing::pages::Progress show_progress(const std::string& title, const ProgressWords& words = {});

}  // namespace ui
