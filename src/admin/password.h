// Passwords come from the keyboard or the standard input, never from the command line, which every user of
// the machine can read while a program runs.
#pragma once

#include <string>
#include <string_view>

#include "admin/tool.h"

namespace admin {

// At a terminal asks twice, unseen; else takes the first line of the standard input. Blanks at its ends are
// dropped. Refused when none comes, when it is empty, or when the two differ. `otherwise` tells what to do
// instead of an empty one.
std::string ask_password(Tool& tool, std::string_view whose, std::string_view otherwise);

}  // namespace admin
