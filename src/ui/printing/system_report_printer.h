// Reports on the system's printer.
#pragma once

#include <filesystem>

#include "common/services.h"
#include "printing/report_printer.h"

namespace printing::pages {

// PDF files of a workstation without a printer go to the folder `Receipts` of `program_folder`.
class SystemReportPrinter final : public ReportPrinter {
  public:
    SystemReportPrinter(common::Services services, std::filesystem::path program_folder)
        : services_(services), folder_(std::move(program_folder)) {}

    bool print(const Report& report) override;
    std::filesystem::path kept_file() const override { return kept_; }
    void preview(const Report& report) override;
    bool save_pdf(const Report& report, const std::filesystem::path& file) override;
    bool save_csv(const Report& report, const std::filesystem::path& file) override;

  private:
    bool failed(std::string_view message, std::string_view reason);
    common::Services services_;
    std::filesystem::path folder_;
    std::filesystem::path kept_;
};

}  // namespace printing::pages
