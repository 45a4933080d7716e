// The workstation's printers: text to a port, or pages to the system's printer.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/services.h"
#include "database/connection.h"
#include "printing/layouts.h"
#include "printing/pages/page_set.h"
#include "printing/qr.h"
#include "printing/receipt_printer.h"
#include "printing/report_printer.h"

namespace printing {
class PrinterCodes;
}

namespace printing::pages {

// What both printers work with. `choice` may be changed at any time on the printer-choice screen. The logo
// and "qr.bmp" are in `program_folder`, and PDF files go to its folder `Receipts`.
struct Workstation {
    // Shows pages until the user closes them. Calls `print` when he wants them printed, and closes them when
    // it returns true.
    using ShowPages = std::function<void(std::shared_ptr<const PageSet>, std::function<bool()> print)>;

    database::Connection& connection;
    common::Services services;
    const PrinterChoice& choice;
    std::filesystem::path program_folder;
    ShowPages show_pages;
    // Shows the progress of printing the document with this title as long as the result is held. Only with it
    // may long reports take as long as they need.
    std::function<Progress(const std::string& title)> show_progress = {};
    bool is_training = false;  // every page is marked as one of a training
};

// The pages of a receipt with those rows; null without rows. A relative name of the logo is taken from the
// program folder.
std::shared_ptr<const PageSet> receipt_pages(const Receipt& receipt, Form form, int line_width,
                                             const ReceiptSettings& settings, std::vector<LayoutRow> rows,
                                             const std::filesystem::path& program_folder,
                                             std::optional<QrCode> qr = {});

class SystemReceiptPrinter final : public ReceiptPrinter {
  public:
    explicit SystemReceiptPrinter(Workstation workstation) : workstation_(std::move(workstation)) {}

    bool print(const Receipt& receipt, Form form) override;
    std::vector<std::filesystem::path> take_kept() override { return std::exchange(kept_, {}); }
    bool is_printing() const override;
    bool prints_text() const override { return workstation_.choice.is_text_port(); }
    // Printers that take receipts as pictures do not know the bell; a drawer at their port gets their own
    // command.
    std::string drawer_command(std::string_view port) const override;

    // Returns the pages that print() would send to the system's printer, or null if the receipt has no lines.
    // Replaces the workstation's rows in `print`. Throws database::Error.
    std::shared_ptr<const PageSet> pages(const Receipt& receipt, Form form) {
        return pages(receipt, form, read_receipt_settings(workstation_.connection));
    }

  private:
    std::shared_ptr<const PageSet> pages(const Receipt& receipt, Form form, const ReceiptSettings& settings);
    bool print_text(const Receipt& receipt, Form form);
    bool print_pages(const Receipt& receipt, Form form);
    bool send(const std::shared_ptr<const PageSet>& pages);
    bool send_to_port(const std::string& bytes, const Receipt& receipt);
    // The code of electronic invoicing; its picture is also kept as "qr.bmp". Returns nothing if one of the
    // two cannot be made.
    std::optional<QrCode> electronic_code(const Receipt& receipt);
    bool failed(std::string_view message, std::string_view reason);

    Workstation workstation_;
    std::vector<std::filesystem::path> kept_;
};

class SystemReportPrinter final : public ReportPrinter {
  public:
    explicit SystemReportPrinter(Workstation workstation) : workstation_(std::move(workstation)) {}

    bool print(const Report& report) override;
    bool print_slip(const Report& report) override;
    std::vector<std::filesystem::path> take_kept() override { return std::exchange(kept_, {}); }
    void preview(const Report& report) override;
    bool print_labels(const LabelJob& labels) override;
    void preview_labels(const LabelJob& labels) override;
    bool save_pdf(const Report& report, const std::filesystem::path& file) override;
    bool save_csv(const Report& report, const std::filesystem::path& file) override;

  private:
    std::shared_ptr<const PageSet> pages_of(const Report& report) const;
    bool print(const std::shared_ptr<const PageSet>& made, const std::string& title);
    bool print_on_receipts(const LabelJob& labels);
    Progress progress(const std::string& title) const;
    // Writes a file; a failure is shown and logged, an end by the cashier is not.
    bool kept(const std::filesystem::path& file, const std::function<bool()>& write);
    bool not_printed(std::string_view message, std::string_view reason);
    bool failed(std::string_view message, std::string_view reason);

    Workstation workstation_;
    std::vector<std::filesystem::path> kept_;
};

}  // namespace printing::pages
