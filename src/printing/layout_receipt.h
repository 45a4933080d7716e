// The fields and texts of a layout receipt, ready to be placed on the paper.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "printing/layout_rows.h"
#include "printing/receipt_printer.h"

namespace printing {

struct LayoutReceipt {
    using Field = std::pair<std::string, std::string>;  // label, value

    ReceiptSettings settings;
    double paper_width = 80;  // mm: 80, or 58 for printers of 40 columns
    std::string store_name;
    std::string second_store_name;
    std::string telephone;  // "Tel : …"; empty for none
    std::string kind;       // "فاتورة مبيعات نقدي"
    Field number;
    std::vector<Field> details;  // date, time, user, shift, salesman
    std::vector<LayoutRow> rows;
    std::vector<Field> totals;  // the net among them
    std::size_t net = 0;        // which of the totals it is
    std::string note;
    std::array<std::string, 3> credit_lines;
    std::filesystem::path logo;  // empty for none
    std::filesystem::path qr;    // empty for none
};

// The layout that `form` stands for. The compact one has the header, the rows and the net total only.
LayoutReceipt layout_receipt(const Receipt& receipt, Form form, int line_width,
                             const ReceiptSettings& settings, std::vector<LayoutRow> rows);

// "فاتورة", then return or sales, then the payment's word.
std::string invoice_kind(const Receipt& receipt);

// The logo's file; a relative name is taken from the program folder. Empty when there is no such file.
std::filesystem::path logo_file(const Receipt& receipt, const std::filesystem::path& program_folder);

}  // namespace printing
