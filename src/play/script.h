// A play: what a cashier does and what must then be seen, one step per line.
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

// A play that cannot be read; what() names the file.
class ScriptError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Script {
    std::filesystem::path file;
    std::vector<Step> steps;
};

// Skips blank lines and lines that begin with "#".
Script read_script(const std::filesystem::path& file);

// Splits "A word B" at the first " word ". If there is none, A is the whole text and `found` is false.
struct Halves {
    std::string before;
    std::string after;
    bool found = false;
};
Halves split_at(std::string_view text, std::string_view word);

// The words of a text, separated by blanks.
std::vector<std::string> words(std::string_view text);

}  // namespace play
