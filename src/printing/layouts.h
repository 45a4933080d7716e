// An invoice on pages: the layout receipt, ready to be placed on a roll, and the full-page invoice as a
// report. Both are bound to settings of the shop and to the rows in the scratch table `print`.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/qr.h"
#include "printing/receipt_printer.h"
#include "printing/receipt_settings.h"
#include "printing/report.h"

namespace printing {

// One row as it is printed.
struct LayoutRow {
    std::string item_name;  // f1, cut to the 100 characters of the column
    std::string price;      // F2, "0.00": as entered, or line total ÷ quantity (as entered where that is 0)
    std::string quantity;   // f3: without decimals if it has none
    std::string total;      // f4, "0.00"
    std::string unit;       // f5, of the forms that show it
    std::string item_code;  // f6
};

// The lines of a receipt in that form.
std::vector<LayoutRow> layout_rows(const Receipt& receipt, Form form, const ReceiptSettings& settings);

// The rows of one workstation and user, or of one user alone (full pages and reports).
class LayoutRows {
  public:
    LayoutRows(database::Connection& connection, std::optional<int> cash_point, std::string user)
        : connection_(connection), cash_point_(cash_point), user_(std::move(user)) {}

    // Replaces the rows and returns them as they are stored, on a server in one round trip. Rows of other
    // workstations and users stay untouched.
    std::vector<LayoutRow> write(const std::vector<LayoutRow>& rows);

  private:
    database::Sql condition() const;
    database::Connection& connection_;
    std::optional<int> cash_point_;
    std::string user_;
};

struct LayoutReceipt {
    ReceiptSettings settings;
    RollWidth roll = wide_roll;
    std::string store_name;
    std::string second_store_name;
    std::string telephone;  // telephone_line(), or empty
    std::string kind;       // "فاتورة مبيعات نقدي"
    Caption number;
    std::vector<Caption> details;  // date, time, user, shift, salesman, account customer
    std::vector<LayoutRow> rows;
    std::vector<Caption> totals;  // the net among them
    std::size_t net = 0;          // which of the totals it is
    std::string note;
    std::array<std::string, 3> credit_lines;
    std::filesystem::path logo;  // empty for none
    std::optional<QrCode> qr;
    std::string code;  // for a barcode; empty for none
};

// Lays a receipt out for a printer with that line width. Form::no_telephone is compact: it has the header,
// the rows and the net total only.
LayoutReceipt layout_receipt(const Receipt& receipt, Form form, int line_width,
                             const ReceiptSettings& settings, std::vector<LayoutRow> rows);

// A report without a table, such as a voucher, laid out for a roll like a receipt.
LayoutReceipt slip_layout(const Report& report, int line_width, const ReceiptSettings& settings);

// The test page of a printer that receipts go to as pictures: letters, figures and both kinds of code.
LayoutReceipt test_layout(const std::string& store_name, int line_width, const ReceiptSettings& settings);

// The full-page invoice, printed instead of a receipt if the shop has chosen so. Form::cash_page states what
// was paid and the change. Form::standard_page shows the unit of each line instead, and ends with lines to
// sign on. Both state the net in words.
Report invoice_report(const Receipt& receipt, Form form, const ReceiptSettings& settings,
                      const std::vector<LayoutRow>& rows, const std::filesystem::path& logo);

// "فاتورة", then return or sales, then the payment's word.
std::string invoice_kind(const Receipt& receipt);

// The logo's file; a relative name is taken from the program folder. Empty if there is no such file.
std::filesystem::path logo_file(std::string_view logo, const std::filesystem::path& program_folder);

}  // namespace printing
