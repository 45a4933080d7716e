// The customer pole display and the cash drawer: small files and ports that never hold up a sale.
#pragma once

#include <string>
#include <string_view>

#include "common/devices.h"

namespace sales {

// The display reads this file in the working directory.
inline constexpr std::string_view display_file = "xx.txt";
inline constexpr std::string_view welcome_text = "Welcome to Morvin";
// The port of the keyboard's drawer command.
inline constexpr std::string_view keyboard_drawer_port = "com3";

// Two lines in one text: "Total  " and the amount filled up with blanks to 20 characters, then "Change  " and
// the change.
std::string display_text(double amount, double change);

// Replaces what the display shows: control characters 31 (clear) and 17, then the text, without line ends.
// Errors are ignored.
void show_on_display(common::Devices& devices, std::string_view text);

// Writes the character 7 to the port. Errors are ignored.
void kick_drawer(common::Devices& devices, std::string_view port);

}  // namespace sales
