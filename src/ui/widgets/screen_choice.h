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

// "screen-1.txt" of cash point 1, in the program's folder. It holds "rows = compact", "keypad = on" and
// "sounds = on", as far as they are chosen.
std::filesystem::path screen_file(const std::filesystem::path& program_folder, std::int64_t cash_point);

// The choice that was kept; what the file does not name is off.
ScreenChoice read_screen_choice(const std::filesystem::path& file);

// Throws std::system_error if the file cannot be written; the one before then stays.
void keep_screen_choice(const std::filesystem::path& file, const ScreenChoice& choice);

}  // namespace ui
