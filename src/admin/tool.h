// What every command of tallvex-admin works with, and the list of the commands.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "common/clock.h"
#include "shop/refused.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace admin {

// The exit codes of all commands.
inline constexpr int done = 0;
inline constexpr int refused = 1;  // the command did not do it and left nothing half done
inline constexpr int usage = 2;    // the command line is wrong

struct Tool {
    std::ostream& out;
    std::ostream& err;
    std::istream& in;
    std::filesystem::path folder;  // the working directory: files are named from there
    common::Clock& clock;
    std::ostream* terminal = nullptr;     // where long work shows its progress; none if err is no terminal
    std::filesystem::path shop = folder;  // holds the shop's connection file
    bool arabic = false;                  // the language of the help

    // A text of the help. What the commands report is in English always.
    std::string help(std::string_view english, std::string_view in_arabic) const {
        return std::string(arabic ? in_arabic : english);
    }
};

// Ends a command with the exit code `refused`.
using shop::Refused;

// Adds a command with its options to the program. The command line then decides whether it runs.
using AddCommand = void (*)(CLI::App& program, Tool& tool);

void add_connect(CLI::App& program, Tool& tool);
void add_new_shop(CLI::App& program, Tool& tool);
void add_sql(CLI::App& program, Tool& tool);
void add_users(CLI::App& program, Tool& tool);
void add_check(CLI::App& program, Tool& tool);
void add_unfinished(CLI::App& program, Tool& tool);
void add_import_items(CLI::App& program, Tool& tool);
void add_backup(CLI::App& program, Tool& tool);
void add_restore(CLI::App& program, Tool& tool);
void add_copy_shop(CLI::App& program, Tool& tool);
void add_show_receipt(CLI::App& program, Tool& tool);
void add_settings(CLI::App& program, Tool& tool);
void add_stamp(CLI::App& program, Tool& tool);

// Reads the command line (without the program's name) and runs its command. Returns the exit code; errors go
// to tool.err.
int run_tool(const std::vector<AddCommand>& commands, const std::vector<std::string>& arguments, Tool& tool);

// Returns true if a user's environment asks for Arabic: the first of LC_ALL, LC_MESSAGES and LANG that is set
// decides. `variable` gives a variable's value, or null.
bool asks_for_arabic(const std::function<const char*(const char*)>& variable);

// A progress bar on tool.terminal, redrawn when its percentage changes and erased at the end. Shows nothing
// without a terminal, so that logs stay clean.
class Progress {
  public:
    Progress(Tool& tool, std::string label, std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void reach(std::size_t amount);  // `amount` of the total is done
    void step() { reach(done_ + 1); }

  private:
    Tool& tool_;
    std::string label_;
    std::size_t total_;
    std::size_t done_ = 0;
    int percent_ = -1;
};

// Asks for a password or badge twice at a terminal, without showing it; otherwise reads the first line of the
// standard input. Never from the command line, because every user of the machine can read that. Blanks at
// both ends are dropped. Refused if there is none, if it is empty or if the two differ. `otherwise` says what
// to do instead of giving an empty one.
std::string ask_secret(Tool& tool, const std::string& what, std::string_view otherwise);

}  // namespace admin
