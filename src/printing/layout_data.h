// What the layouts of a receipt are bound to: settings of the shop, and the rows in the scratch table
// `print`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/receipt_printer.h"

namespace printing {

// Read from the settings row each time a receipt is printed.
struct ReceiptSettings {
    std::string rec_note;           // printed in the footer
    bool preview = false;           // bon_prv
    bool price_as_entered = false;  // aft_dsc
    bool show_item_code = false;    // item_code
    std::string font = "Tahoma";    // bon_font
    int font_size = 7;              // bon_font_s, in points; sizes that do not fit on a roll count as 7
};

ReceiptSettings read_receipt_settings(database::Connection& connection);

// One row as it is printed.
struct LayoutRow {
    std::string item_name;  // f1, cut to the 100 characters of the column
    std::string price;      // F2, "0.00": as entered, or line total ÷ quantity (as entered where that is 0)
    std::string quantity;   // f3: without decimals if it has none
    std::string total;      // f4, "0.00"
    std::string unit;       // f5, of the forms that show it
    std::string item_code;  // f6
};

// The rows of one workstation and user, or of one user alone (full pages and reports).
class LayoutRows {
  public:
    LayoutRows(database::Connection& connection, std::optional<int> cash_point, std::string user)
        : connection_(connection), cash_point_(cash_point), user_(std::move(user)) {}

    // Replaces the rows by the lines of the receipt in that form. Rows of other workstations and users stay
    // untouched.
    void write(const Receipt& receipt, Form form, const ReceiptSettings& settings);
    // Returns the rows in the order of the receipt.
    std::vector<LayoutRow> read();

  private:
    database::Sql condition() const;
    database::Connection& connection_;
    std::optional<int> cash_point_;
    std::string user_;
};

}  // namespace printing
