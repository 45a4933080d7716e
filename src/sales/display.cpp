#include "sales/display.h"

#include "common/numbers.h"

namespace sales {

std::string display_text(double amount, double change) {
    constexpr std::size_t line_length = 20;
    std::string text = "Total  " + common::format_amount(amount);
    if (text.size() < line_length) text.resize(line_length, ' ');
    return text + "Change  " + common::format_amount(change);
}

void show_on_display(common::Devices& devices, std::string_view text) {
    std::string bytes = "\x1F\x11";
    bytes += text;
    devices.write_file(display_file, bytes);
}

void kick_drawer(common::Devices& devices, std::string_view port) {
    if (!port.empty()) devices.write_port(port, "\x07");
}

}  // namespace sales
