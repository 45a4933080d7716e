// Pages, and where they can be drawn: pictures, PDF files, the system's printer.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSizeF>
#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace printing::pages {

class PageSet {
  public:
    virtual ~PageSet() = default;
    // The name in a print queue and of a file, in Latin letters: "receipt-123".
    virtual QString name() const = 0;
    virtual int count() const = 0;
    // In millimetres; all pages are of one size.
    virtual QSizeF size() const = 0;
    // Draws one page, counted from 0, with its top left corner at the painter's origin.
    virtual void draw(QPainter& painter, double dots_per_mm, int page) const = 0;
};

// Draws each page as a picture on white. A page that is too long for a picture is drawn smaller.
std::vector<QImage> pictures(const PageSet& pages, double dots_per_mm);

// Called in the calling thread with the number of pages drawn and of all pages; returning false ends the
// work.
using Progress = std::function<bool(int done, int total)>;

// Writes the pages into one PDF file and makes its folder if it is missing. Returns false, and leaves no
// file, if `progress` ended it. Throws std::system_error, and leaves no file, if it cannot be written.
bool save_pdf(const PageSet& pages, const std::filesystem::path& file, const Progress& progress = {});

enum class Printed {
    on_printer,
    no_printer,  // none is installed, or none is the default
    failed,      // the printer refused, or nothing happened for 3 s
    cancelled    // `progress` ended it
};
// Prints on the system's default printer. Fails if the print system does not answer for 3 s, or does not take
// what is drawn; with `progress`, a long report may take as long as nobody ends it.
Printed print_on_system_printer(std::shared_ptr<const PageSet> pages, const Progress& progress = {});

}  // namespace printing::pages
