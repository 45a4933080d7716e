// The workstation's receipt printer: text to a port, or pages to the system's printer, as has been chosen.
#pragma once

#include <filesystem>
#include <memory>

#include "common/services.h"
#include "database/connection.h"
#include "printing/pages/page_set.h"
#include "printing/receipt_printer.h"

namespace printing::pages {

// Follows `choice`, which the printer-choice screen may change at any time. The picture of the logo and
// "qr.bmp" are in `program_folder`, and PDF files go to its folder `Receipts`.
class SystemReceiptPrinter final : public ReceiptPrinter {
  public:
    SystemReceiptPrinter(database::Connection& connection, common::Services services,
                         const PrinterChoice& choice, std::filesystem::path program_folder)
        : connection_(connection), services_(services), choice_(choice), folder_(std::move(program_folder)) {}

    bool print(const Receipt& receipt, Form form) override;
    bool prints_text() const override { return choice_.is_text_port(); }

    // The pages that print() would put on the system's printer; none when the receipt has no lines. Replaces
    // the workstation's rows in `print`. Throws database::Error.
    std::shared_ptr<const PageSet> pages(const Receipt& receipt, Form form);

  private:
    bool print_text(const Receipt& receipt, Form form);
    bool print_pages(const Receipt& receipt, Form form);
    bool send(const std::shared_ptr<const PageSet>& pages);
    std::filesystem::path qr_picture(const Receipt& receipt);
    bool failed(std::string_view message, std::string_view reason);

    database::Connection& connection_;
    common::Services services_;
    const PrinterChoice& choice_;
    std::filesystem::path folder_;
};

}  // namespace printing::pages
