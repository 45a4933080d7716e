#include "printing/text_page.h"

#include <algorithm>
#include <cmath>

namespace printing {

namespace {

// Ports were always opened as text files for output, which end each line so; roll printers expect both bytes.
constexpr std::string_view line_end = "\r\n";

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

void TextPage::line(std::string_view bytes) {
    bytes_ += bytes.substr(0, static_cast<std::size_t>(width_));
    bytes_ += line_end;
}

void TextPage::centred(std::string_view bytes, std::size_t length) {
    const auto width = static_cast<std::size_t>(width_);
    if (bytes.size() > width) return line(bytes.substr(bytes.size() - width));
    const std::string margin = spaces(blanks(width_ - static_cast<int>(std::min(length, width)), 2));
    line(margin + std::string(bytes) + margin);
}

void TextPage::rule() {
    line(std::string(static_cast<std::size_t>(width_), '-'));
}

void TextPage::control_line(std::string_view bytes) {
    control(bytes);
    bytes_ += line_end;
}

void TextPage::control(std::string_view bytes) {
    bytes_ += bytes;
}

}  // namespace printing
