// The settings of the layout receipt, read from the settings row each time one is printed.
#pragma once

#include <string>

#include "database/connection.h"

namespace printing {

struct ReceiptSettings {
    std::string rec_note;           // printed in the footer
    bool preview = false;           // bon_prv
    bool price_as_entered = false;  // aft_dsc
    bool show_item_code = false;    // item_code
    std::string font = "Tahoma";    // bon_font
    int font_size = 7;              // bon_font_s, in points; sizes no roll could show count as 7
};

ReceiptSettings read_receipt_settings(database::Connection& connection);

}  // namespace printing
