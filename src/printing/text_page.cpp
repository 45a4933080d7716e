#include "printing/text_page.h"

#include <algorithm>
#include <cmath>

namespace printing {

namespace {

// Roll printers expect both bytes.
constexpr std::string_view line_end = "\r\n";
constexpr int fewest_columns = 32;

}  // namespace

std::size_t blanks(int dividend, int divisor) {
    const double whole = std::nearbyint(static_cast<double>(dividend) / divisor);
    return static_cast<std::size_t>(std::max(0.0, whole));
}

std::string spaces(std::size_t count) {
    return std::string(count, ' ');
}

std::string right_aligned(std::string_view bytes, std::size_t width) {
    if (bytes.size() >= width) return std::string(bytes.substr(bytes.size() - width));
    return spaces(width - bytes.size()) + std::string(bytes);
}

std::string left_aligned(std::string_view bytes, std::size_t width) {
    if (bytes.size() >= width) return std::string(bytes.substr(0, width));
    return std::string(bytes) + spaces(width - bytes.size());
}

TextPage::TextPage(int width) : width_(std::max(width, fewest_columns)) {}

void TextPage::begin() {
    control_line(control::initialise);
    control_line(control::arabic_page);
}

void TextPage::end() {
    control("\n\n\n\n\n");
    control_line(control::feed_one_line);
}

void TextPage::line(std::string_view bytes) {
    bytes_ += bytes.substr(0, columns());
    bytes_ += line_end;
}

void TextPage::centred(std::string_view bytes, std::size_t length) {
    if (bytes.size() > columns()) return line(right_aligned(bytes, columns()));
    const std::string margin = spaces(blanks(width_ - static_cast<int>(std::min(length, columns())), 2));
    line(margin + std::string(bytes) + margin);
}

void TextPage::rule() {
    line(std::string(columns(), '-'));
}

void TextPage::control_line(std::string_view bytes) {
    control(bytes);
    bytes_ += line_end;
}

void TextPage::control(std::string_view bytes) {
    bytes_ += bytes;
}

}  // namespace printing
