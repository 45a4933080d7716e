// How far long work has come: a print, an import.
#pragma once

#include <string>

#include "printing/pages/page_set.h"

namespace ui {

// Shows a bar over the window in use once the work has taken a moment; Esc or its button ends the work. The
// bar goes when the last copy of what this returns is gone.
struct ProgressWords {
    const char* state = "صفحة %1 من %2";          // page … of …
    const char* end = "جار التسليم إلى الطابعة";  // handing over to the printer
};
printing::pages::Progress show_progress(const std::string& title, const ProgressWords& words = {});

}  // namespace ui
