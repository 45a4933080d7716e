// The form of a barcode, without regard to its item.
#pragma once

#include <string>
#include <string_view>

namespace admin {

// Why no scanner sends this text as a barcode, or why the till would take it for something else; empty if it
// is good.
std::string barcode_fault(std::string_view barcode);

// Returns true if the last of 13 digits is the check digit of the other 12.
bool is_true_ean13(std::string_view digits);

}  // namespace admin
