// The program tallvex-play, as far as it does not depend on what plays are played on.
#pragma once

#include <optional>

#include "play/stage.h"

namespace play {

// Plays the files that the command line names, each in a shop file of its own, or on the server if there is
// one. Returns the exit code.
int run_program(int argc, char** argv, std::optional<Server> server = {});

}  // namespace play
