// Numbers to text and back, the same on every machine whatever its locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace common {

// An amount of money with two decimals ("0.00"), a quantity with three ("0.000"): the shortest decimal form
// of the double is rounded half away from zero, so 2.675 gives "2.68" and -0.004 gives "0.00". Infinities and
// not-a-number give "0.00" and "0.000".
std::string format_amount(double amount);
std::string format_quantity(double quantity);

// The same rounding to any number of decimals from 0 to 9.
std::string format_decimals(double value, int decimals);
// The value that format_decimals shows, as a number.
double round_decimals(double value, int decimals);

// The shortest decimal form, without decimals for a whole number ("2", "0.45").
std::string shortest_text(double value);

// Reads a decimal number that a person typed: Western, Arabic-Indic (U+0660..) or Eastern Arabic-Indic
// (U+06F0..) digits; "." or the Arabic decimal mark (U+066B) before the decimals; an optional sign;
// surrounding blanks. Exponents, commas, grouping and values that are not finite are refused.
std::optional<double> parse_number(std::string_view text);
// The same for a whole number that fits 64 bits.
std::optional<long long> parse_integer(std::string_view text);
// The number of a text, or 0 if it is not a number.
double numeric_value(std::string_view text);

// Returns true if a text holds nothing but Western digits, or nothing at all.
bool all_digits(std::string_view text);
// Replaces Arabic-Indic digits and decimal marks by Western ones.
std::string western_digits(std::string_view text);

}  // namespace common
