// Printing of reports as screens see it.
#pragma once

#include <filesystem>
#include <string>

#include "printing/report.h"

namespace printing {

// Nothing here throws: what went wrong is told to the user, logged, and answered with false.
class ReportPrinter {
  public:
    virtual ~ReportPrinter() = default;
    // Prints on the system's printer; where none is installed, writes a PDF into the folder `Receipts`.
    virtual bool print(const Report& report) = 0;
    // The file that the last `print` went to for want of a printer; empty when it went to paper.
    virtual std::filesystem::path kept_file() const { return {}; }
    // Shows the pages on the screen, from where they can be printed.
    virtual void preview(const Report& report) = 0;
    virtual bool save_pdf(const Report& report, const std::filesystem::path& file) = 0;
    virtual bool save_csv(const Report& report, const std::filesystem::path& file) = 0;
};

}  // namespace printing
