#include "ui/printing/system_report_printer.h"

#include <exception>
#include <fstream>

#include "printing/messages.h"
#include "printing/pages/output.h"
#include "printing/pages/report_page.h"
#include "ui/printing/preview.h"

namespace printing::pages {

bool SystemReportPrinter::print(const Report& report) {
    kept_.clear();
    try {
        const auto pages = std::make_shared<ReportPage>(report);
        switch (print_on_system_printer(pages)) {
            case Printed::on_printer:
                return true;
            case Printed::no_printer:
                break;
            case Printed::failed:
                return failed(message::report_failed, "system printer");
        }
        const auto file = pages::kept_file(folder_, *pages, services_.clock.now());
        if (!save_pdf(report, file)) return false;
        kept_ = file;
        return true;
    } catch (const std::exception& error) {
        return failed(message::report_failed, error.what());
    }
}

void SystemReportPrinter::preview(const Report& report) {
    try {
        Preview shown(std::make_shared<ReportPage>(report), [this, &report] { return print(report); });
        shown.run();
    } catch (const std::exception& error) {
        failed(message::report_failed, error.what());
    }
}

bool SystemReportPrinter::save_pdf(const Report& report, const std::filesystem::path& file) {
    try {
        if (pages::save_pdf(ReportPage(report), file)) return true;
    } catch (const std::exception&) {
        // said below
    }
    return failed(message::naming(message::file_failed, file.string()), file.string());
}

bool SystemReportPrinter::save_csv(const Report& report, const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary);
    out << report_csv(report);
    out.close();
    if (out) return true;
    return failed(message::naming(message::file_failed, file.string()), file.string());
}

bool SystemReportPrinter::failed(std::string_view message, std::string_view reason) {
    services_.log.log_event("report not printed: " + std::string(reason), "print");
    services_.prompts.message(message, common::Icon::exclamation);
    return false;
}

}  // namespace printing::pages
