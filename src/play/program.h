// The program tallvex-play, on a shop file or on a server.
#pragma once

#include <optional>

#include "play/play_shop.h"

namespace play {

// Plays the files on the command line, each in a shop file of its own, or on the server if one is given.
// Returns the exit code.
int run_program(int argc, char** argv, std::optional<Server> server = {});

}  // namespace play
