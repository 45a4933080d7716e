// A play: what a cashier does and what must then be seen, one step a line.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace play {

struct Step {
    int line = 0;
    std::string text;  // the whole line, trimmed
    std::string verb;  // its first word
    std::string rest;  // what follows the verb, trimmed
};

// A play that cannot be read; what() names file and line.
class ScriptError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Script {
    std::filesystem::path file;
    std::vector<Step> steps;
};

// Blank lines and lines that begin with "#" are no steps.
Script read_script(const std::filesystem::path& file);

// "A word B" split at the first " word "; B is empty and `found` false when the word is not there.
struct Halves {
    std::string before;
    std::string after;
    bool found = false;
};
Halves split_at(std::string_view text, std::string_view word);

// Words of a step, separated by blanks.
std::vector<std::string> words(std::string_view text);

}  // namespace play
