// A page of a roll printer: lines of a fixed width and the printer's control bytes.
#pragma once

#include <string>
#include <string_view>

#include "common/ports.h"

namespace printing {

namespace control {
inline constexpr std::string_view initialise = common::printer_reset;
inline constexpr std::string_view arabic_page = "\x1BT0864";
inline constexpr std::string_view shift_out = "\x0E";
inline constexpr std::string_view double_width_on = "\x1B\x0E";
inline constexpr std::string_view double_width_off = "\x1B\x14";
inline constexpr std::string_view shift_off = "\x14";
inline constexpr std::string_view feed_one_line = "\x1B\x64\x01";
}  // namespace control

// Divides and rounds to a whole number, halves to the even neighbour. Returns 0 instead of a negative number.
std::size_t blanks(int dividend, int divisor);
std::string spaces(std::size_t count);
// Pads with spaces on the left to the width, or cuts to the rightmost characters.
std::string right_aligned(std::string_view bytes, std::size_t width);
// Pads with spaces on the right to the width, or cuts to the leftmost characters.
std::string left_aligned(std::string_view bytes, std::size_t width);

class TextPage {
  public:
    // No roll printer has fewer than 32 columns; a smaller width counts as 32.
    explicit TextPage(int width);

    int width() const { return width_; }
    std::size_t columns() const { return static_cast<std::size_t>(width_); }
    // Resets the printer and selects its Arabic page; every page begins so.
    void begin();
    // Feeds the paper to the cutter; every page ends so.
    void end();
    // A line of text, cut to the width.
    void line(std::string_view bytes);
    // A line with (width − length) / 2 spaces on each side. `length` is the length of the text before its
    // conversion.
    void centred(std::string_view bytes, std::size_t length);
    void rule();
    // Control bytes, on a line of their own and without a line end.
    void control_line(std::string_view bytes);
    void control(std::string_view bytes);

    const std::string& bytes() const { return bytes_; }

  private:
    int width_;
    std::string bytes_;
};

}  // namespace printing
