// What a shop has chosen for its receipts, in `basic` and among the settings of the tills.
#pragma once

#include <string>

#include "database/connection.h"
#include "database/reads.h"

namespace printing {

inline constexpr int smallest_font = 4;
inline constexpr int largest_font = 24;

// Read each time a receipt is printed, so that a change at another till counts from the next receipt on.
struct ReceiptSettings {
    std::string rec_note;           // printed in the footer
    bool preview = false;           // bon_prv
    bool price_as_entered = false;  // aft_dsc
    bool show_item_code = false;    // item_code
    std::string font = "Tahoma";    // bon_font
    int font_size = 7;              // bon_font_s, in points; sizes that do not fit on a roll count as 7
    // Of pages and pictures: receipt_unit, receipt_qr, receipt_barcode.
    bool show_unit = true;
    bool show_qr = true;
    bool show_barcode = true;
    // Of text: text_unit, printer_barcode.
    bool text_unit = false;
    bool text_barcode = false;
};

ReceiptSettings read_receipt_settings(database::Connection& connection);
// Asks for all of them, or for what text receipts need.
void ask_receipt_settings(database::Reads& reads, ReceiptSettings& settings);
void ask_text_settings(database::Reads& reads, ReceiptSettings& settings);

}  // namespace printing
