// The form of a barcode, whatever item it belongs to.
#pragma once

#include <string>
#include <string_view>

namespace admin {

// Why no scanner sends this text as a barcode, or why the till would take it for something else; empty if it
// is good.
std::string barcode_fault(std::string_view barcode);

// Returns true if the last of 13 digits is the check digit of the other 12.
bool is_true_ean13(std::string_view digits);

bool all_digits(std::string_view text);

}  // namespace admin
