// What every command of tallvex-admin works with, and how it ends.
#pragma once

#include <filesystem>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/clock.h"

namespace CLI {
class App;
}

namespace admin {

// The exit codes, the same for all commands.
inline constexpr int done = 0;
inline constexpr int refused = 1;  // the command could not or would not do it; nothing half-done is left
inline constexpr int usage = 2;    // the command line is wrong

struct Tool {
    std::ostream& out;
    std::ostream& err;
    std::istream& in;
    std::filesystem::path folder;  // the working directory: the shop whose connection file it holds
    common::Clock& clock;
    bool terminal = false;  // err is a terminal: long work shows how far it is
};

// Ends a command with exit code `refused`; the text says what is wrong and what to do.
class Refused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Adds one command with its options to the program; its work runs when the command line names it.
using AddCommand = void (*)(CLI::App& program, Tool& tool);

// Reads the command line (without the program's name) and runs the command it names. Returns the exit code;
// whatever is wrong has been said on tool.err.
int run_tool(const std::vector<AddCommand>& commands, const std::vector<std::string>& arguments, Tool& tool);

}  // namespace admin
