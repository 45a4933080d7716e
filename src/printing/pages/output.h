// Where pages go: pictures, PDF files, the system's printer.
#pragma once

#include <QImage>
#include <filesystem>
#include <memory>
#include <vector>

#include "common/date_time.h"
#include "printing/pages/page_set.h"

namespace printing::pages {

// Each page as a picture on white; a page too long for a picture is drawn smaller.
std::vector<QImage> pictures(const PageSet& pages, double dots_per_mm);

// Writes the pages into one PDF file; its folder is made when missing. False when it cannot be written; then
// no file is left.
bool save_pdf(const PageSet& pages, const std::filesystem::path& file);

enum class Printed {
    on_printer,
    no_printer,  // none is installed, or none is the default
    failed       // the printer refused, or did not answer within 3 s
};
// Prints on the system's default printer; never waits for it longer than 3 s.
Printed print_on_system_printer(std::shared_ptr<const PageSet> pages);

// `folder`/Receipts/name-yyyymmdd-HHmmss.pdf, with a number behind it where such a file is there already.
std::filesystem::path kept_file(const std::filesystem::path& folder, const PageSet& pages,
                                const common::Moment& moment);

}  // namespace printing::pages
