// An invoice on pages: the layout receipt, ready to be placed on a roll, and the full-page invoice as a
// report.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "printing/layout_data.h"
#include "printing/report.h"

namespace printing {

struct LayoutReceipt {
    ReceiptSettings settings;
    RollWidth roll = wide_roll;
    std::string store_name;
    std::string second_store_name;
    std::string telephone;  // telephone_line(), or empty
    std::string kind;       // "فاتورة مبيعات نقدي"
    Caption number;
    std::vector<Caption> details;  // date, time, user, shift, salesman
    std::vector<LayoutRow> rows;
    std::vector<Caption> totals;  // the net among them
    std::size_t net = 0;          // which of the totals it is
    std::string note;
    std::array<std::string, 3> credit_lines;
    std::filesystem::path logo;  // empty for none
    std::filesystem::path qr;    // empty for none
};

// Lays a receipt out for a printer with that line width. Form::no_telephone is compact: it has the header,
// the rows and the net total only.
LayoutReceipt layout_receipt(const Receipt& receipt, Form form, int line_width,
                             const ReceiptSettings& settings, std::vector<LayoutRow> rows);

// The full-page invoice, printed instead of a receipt if the shop has chosen so. Form::cash_page states what
// was paid and the change. Form::standard_page shows the unit of each line instead, and ends with lines to
// sign on. Both state the net in words.
Report invoice_report(const Receipt& receipt, Form form, const ReceiptSettings& settings,
                      const std::vector<LayoutRow>& rows, const std::filesystem::path& logo);

// "فاتورة", then return or sales, then the payment's word.
std::string invoice_kind(const Receipt& receipt);

// The logo's file; a relative name is taken from the program folder. Empty if there is no such file.
std::filesystem::path logo_file(const Receipt& receipt, const std::filesystem::path& program_folder);

}  // namespace printing
