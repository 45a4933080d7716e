// The form of a barcode, without regard to its item, and the barcodes that a shop prints itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace goods {

// Why no scanner sends a text as a barcode, or why the till would take it for something else.
enum class BarcodeFault {
    none,
    empty,
    blank,
    apostrophe,   // a spreadsheet may have put it before the text
    rounded,      // by a spreadsheet
    receipt,      // read as the barcode of a receipt
    scale_label,  // read as a label of the scale
    check_digit,  // of the length of an EAN, but its last digit is another
};
BarcodeFault barcode_fault(std::string_view barcode);
// The same for people; of a wrong check digit it is a question.
std::string_view words_for(BarcodeFault fault);

// Two barcodes are the same if these texts are: the database ignores case and trailing blanks.
std::string comparable_barcode(std::string_view barcode);

// Returns true if the last of 8 or 13 digits is the check digit of those before it.
bool is_true_ean(std::string_view digits);

// The EAN-13 barcodes that the shop may print for an item's unit, the first to be used first. They begin with
// 21 to 29: these are free for a shop's own use, and no label of the scale has them. Each item and unit has
// barcodes of its own, so that two offices never draw the same one.
std::vector<std::string> own_barcodes(std::int64_t item, int unit_level);

}  // namespace goods
