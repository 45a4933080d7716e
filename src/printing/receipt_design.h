// The receipt of a shop as its keeper designs it: the shop's lines, letters, logo and columns, and what is
// printed at a save. The logic of the screen receipt_designer.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"
#include "printing/receipt.h"
#include "printing/receipt_printer.h"
#include "printing/receipt_settings.h"
#include "signin/session.h"

namespace printing {

struct ReceiptDesign {
    std::string store_name;
    std::string second_store_name;
    std::string telephone;
    std::string note;
    std::string font;       // empty for the default
    std::string font_size;  // as it was typed
    std::string logo;       // a name in the program folder, or the path of a picture that was chosen
    bool unit = true;
    bool item_code = false;
    bool as_entered = false;
    bool barcode = true;
    bool qr = true;
    bool text_unit = false;
    bool text_barcode = false;
    bool full_page = false;    // at a save, instead of a receipt
    bool cash_form = false;    // of the full page
    bool second_copy = false;  // compact
    bool preview = false;

    bool operator==(const ReceiptDesign&) const = default;

    // What is printed at a save.
    Form form() const { return cash_form ? Form::cash_page : Form::standard_page; }
    // The settings as the printers will read them after a save.
    ReceiptSettings settings() const;
    // The receipt with the shop's lines and logo as designed.
    Receipt applied_to(Receipt receipt) const;
};

// The shop's lines and letters; what pages and pictures show; what text shows; what is printed at a save.
common::FormTable<ReceiptDesign> shop_lines_form();
common::FormTable<ReceiptDesign> page_form();
common::FormTable<ReceiptDesign> text_form();
common::FormTable<ReceiptDesign> save_form();

// A receipt to show before the first sale.
Receipt example_receipt();

class ReceiptDesigner {
  public:
    ReceiptDesigner(database::Connection& connection, signin::Session& session)
        : connection_(connection), session_(session) {}

    // Reads the design in use. Throws database::Error.
    void open();
    bool is_changed() const { return design != stored_; }
    // Writes what was changed, or nothing if it is refused. The shop's lines and logo are on this till's next
    // receipt, and on other tills' after their next sign-in; everything else counts from the next receipt of
    // every till.
    std::optional<common::Refusal> save();

    void remove_logo();
    // The file of the logo, if this machine has it.
    std::filesystem::path logo() const;
    // Returns true if a picture was chosen at another machine and is missing on this one.
    bool misses_logo() const;

    ReceiptDesign design;

  private:
    void write(const ReceiptDesign& wanted);

    database::Connection& connection_;
    signin::Session& session_;
    ReceiptDesign stored_;
};

}  // namespace printing
