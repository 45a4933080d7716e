// The rows of a receipt in the scratch table `print`, which the layouts are bound to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "printing/receipt_printer.h"
#include "printing/receipt_settings.h"

namespace printing {

// One row as it is printed.
struct LayoutRow {
    std::string item_name;  // f1, cut to the 100 characters of the column
    std::string price;      // F2, "0.00": as entered, or line total ÷ quantity (as entered where that is 0)
    std::string quantity;   // f3: without decimals where it has none
    std::string total;      // f4, "0.00"
    std::string unit;       // f5, of the forms that show it
    std::string item_code;  // f6
};

// The rows of one workstation and user, or of one user alone (full pages and reports).
class LayoutRows {
  public:
    LayoutRows(database::Connection& connection, std::optional<int> cash_point, std::string user)
        : connection_(connection), cash_point_(cash_point), user_(std::move(user)) {}

    // Replaces the rows by the lines of the receipt that is printed in that form. Rows of other workstations
    // and users are not touched.
    void write(const Receipt& receipt, Form form, const ReceiptSettings& settings);
    // The rows in the order of the receipt.
    std::vector<LayoutRow> read();

  private:
    database::Sql condition() const;
    database::Connection& connection_;
    std::optional<int> cash_point_;
    std::string user_;
};

}  // namespace printing
