// What this workstation chose for its screen, kept in a file beside the program.
#pragma once

#include <cstdint>
#include <filesystem>

namespace ui {

struct ScreenChoice {
    bool compact_rows = false;  // lower lines of an invoice, so that more of them are seen
    bool keypad = false;        // the keypad is open from the start
    bool sounds = false;
};

// Reads the choice from a common::screen_file: "rows = compact", "keypad = on" and "sounds = on". Whatever
// the file does not name is off.
ScreenChoice read_screen_choice(const std::filesystem::path& file);

// Throws std::system_error if the file cannot be written; the one before then stays.
void keep_screen_choice(const std::filesystem::path& file, const ScreenChoice& choice);

}  // namespace ui
