// A receipt as plain data: everything that any of its printed forms shows, taken from the sales screen as it
// stands.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "common/text.h"

namespace printing {

enum class Kind { sale, return_, third };
enum class Payment { account, cash, card, tips };

struct ReceiptLine {
    std::string item_code;  // empty for a general item
    std::string item_name;
    std::string unit_name;
    double quantity = 0;   // in the chosen unit
    double price = 0;      // as entered, per unit
    double discount = 0;   // of the line, as a value
    common::Amount total;  // quantity × price − discount
};

struct Receipt {
    std::string store_name;         // basic.aname
    std::string second_store_name;  // basic.ename
    std::string telephone;
    std::array<std::string, 3> credit_lines;
    std::string logo;  // picture file, relative to the program folder

    std::int64_t cash_point = 0;
    std::string user_name;
    std::int64_t shift_number = 0;
    std::string salesman;
    std::string customer;  // the account or walk-in customer's name; empty for an unnamed buyer

    std::int64_t number = 0;
    std::string code;        // its key for a barcode; empty for none
    common::Date date;       // the invoice date
    common::TimeOfDay time;  // of saving; a reprint shows the time at which it is printed
    Kind kind = Kind::sale;
    Payment payment = Payment::cash;

    std::vector<ReceiptLine> lines;
    common::Amount total;     // before the invoice discount
    common::Amount discount;  // the invoice discount
    common::Amount net;
    common::Amount paid;
    common::Amount remaining;               // the change
    std::optional<common::Amount> balance;  // what an account customer owes after this invoice
};

// The line with the shop's telephone, on every printed page: "Tel : 02-2574 1234".
inline std::string telephone_line(const std::string& telephone) {
    return "Tel : " + telephone;
}

// The width of a roll: characters in a line of text, and for drawn receipts its paper and what the print head
// reaches, in millimetres.
struct RollWidth {
    int columns;
    double paper;
    double printed;
};
inline constexpr RollWidth wide_roll{48, 80, 72};
inline constexpr RollWidth narrow_roll{40, 58, 48};

// The roll of a printer with lines of that many characters.
constexpr const RollWidth& roll_of(int columns) {
    return columns == narrow_roll.columns ? narrow_roll : wide_roll;
}

// How receipts go to a port: as text, or as a picture by one of two commands of roll printers.
enum class ReceiptPicture { none, raster, bit_image };  // raster: GS v 0, bit_image: ESC *

// Where receipts go: chosen on the printer-choice screen, else the port of the settings.
struct PrinterChoice {
    // The port that means the system's printer.
    static constexpr const char* system_printer = "win";

    std::string receipt_port;  // system_printer in any case, or empty: pages; any other: to that port
    int line_width = wide_roll.columns;
    ReceiptPicture picture = ReceiptPicture::none;  // how they go to a port

    bool is_text_port() const {
        const std::string_view port = common::trim(receipt_port);
        return !port.empty() && !common::equal_ignoring_case(port, system_printer);
    }
    bool prints_pictures() const { return is_text_port() && picture != ReceiptPicture::none; }
};

}  // namespace printing
