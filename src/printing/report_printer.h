// Printing of reports as screens see it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "printing/labels.h"
#include "printing/report.h"

namespace printing {

// Returns `program_folder`/Receipts/name-yyyymmdd-HHmmss and the extension, with a number before the
// extension if that file exists already.
std::filesystem::path kept_file(const std::filesystem::path& program_folder, const std::string& name,
                                const common::Moment& moment, std::string_view extension = ".pdf");

// Nothing here throws. A function returns false after showing and logging what went wrong.
class ReportPrinter {
  public:
    virtual ~ReportPrinter() = default;
    // Prints on the system's printer. If none is installed, writes a PDF into the folder `Receipts`.
    virtual bool print(const Report& report) = 0;
    // Prints a report without a table, such as a voucher, like a receipt: as text if the workstation's
    // receipts go to a text port, otherwise with print().
    virtual bool print_slip(const Report& report) { return print(report); }
    // The files that reports were kept in since the last call, because there is no printer.
    virtual std::vector<std::filesystem::path> take_kept() { return {}; }
    // Shows the pages on the screen, where they can also be printed.
    virtual void preview(const Report& report) = 0;
    // Prints labels on the system's printer, or shows them first.
    virtual bool print_labels(const LabelJob& labels) = 0;
    virtual void preview_labels(const LabelJob& labels) = 0;
    virtual bool save_pdf(const Report& report, const std::filesystem::path& file) = 0;
    virtual bool save_csv(const Report& report, const std::filesystem::path& file) = 0;
};

}  // namespace printing
