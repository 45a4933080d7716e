#include "printing/pages/page_set.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <future>
#include <stdexcept>
#include <thread>

#include "common/files.h"

namespace printing::pages {

namespace fs = std::filesystem;

namespace {

constexpr auto patience = std::chrono::seconds(3);
constexpr int pdf_dots_per_inch = 1200;
constexpr double mm_per_inch = 25.4;
constexpr double most_dots = 32000;  // QPainter cannot draw on a picture with a longer side

// A sheet of a known size may be in landscape. A roll is always upright, however short the receipt.
QPageLayout layout_of(const PageSet& pages) {
    const QSizeF size = pages.size();
    const auto is_sheet = [](const QSizeF& paper) {
        return QPageSize::id(paper, QPageSize::Millimeter, QPageSize::FuzzyMatch) != QPageSize::Custom;
    };
    const bool landscape = size.width() > size.height() && is_sheet(size.transposed());
    const QSizeF upright = landscape ? size.transposed() : size;
    const QPageSize paper(upright, QPageSize::Millimeter, QString(),
                          is_sheet(upright) ? QPageSize::FuzzyMatch : QPageSize::ExactMatch);
    return {paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0),
            QPageLayout::Millimeter};
}

// Returns false if the device cannot begin or continue.
bool draw_all(const PageSet& pages, QPagedPaintDevice& device, QPainter& painter, int dots_per_inch) {
    if (!painter.begin(&device)) return false;
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0 && !device.newPage()) return false;
        pages.draw(painter, dots_per_inch / mm_per_inch, page);
    }
    return true;
}

// A print job; `given_up` is set when nobody waits for it any more.
struct Job {
    std::promise<Printed> answer;
    std::atomic<bool> given_up = false;
};

Printed print_now(const PageSet& pages, const Job& job) {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return Printed::no_printer;
    if (job.given_up) return Printed::failed;
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setPageLayout(layout_of(pages));
    printer.setDocName(pages.name());
    printer.setCreator("Tallvex");
    if (!printer.isValid()) return Printed::failed;
    QPainter painter;
    const bool drawn = draw_all(pages, printer, painter, printer.resolution());
    // A job that was reported as failed must not come out later.
    if (!drawn || job.given_up) {
        printer.abort();
        return Printed::failed;
    }
    return painter.end() && printer.printerState() != QPrinter::Error ? Printed::on_printer : Printed::failed;
}

}  // namespace

std::vector<QImage> pictures(const PageSet& pages, double dots_per_mm) {
    std::vector<QImage> images;
    const double longest = std::max(pages.size().width(), pages.size().height());
    dots_per_mm = std::min(dots_per_mm, most_dots / longest);
    for (int page = 0; page < pages.count(); ++page) {
        const QSizeF size = pages.size() * dots_per_mm;
        QImage image(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())),
                     QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        pages.draw(painter, dots_per_mm, page);
        painter.end();
        images.push_back(std::move(image));
    }
    return images;
}

void save_pdf(const PageSet& pages, const fs::path& file) {
    if (file.has_parent_path()) fs::create_directories(file.parent_path());
    QBuffer drawn;
    drawn.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&drawn);
        writer.setResolution(pdf_dots_per_inch);
        writer.setPageLayout(layout_of(pages));
        writer.setTitle(pages.name());
        writer.setCreator("Tallvex");
        QPainter painter;
        if (!draw_all(pages, writer, painter, pdf_dots_per_inch) || !painter.end())
            throw std::runtime_error("the pages cannot be drawn");
    }
    const QByteArray& bytes = drawn.data();
    common::replace_file(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())},
                         common::shop_file_mode);
}

Printed print_on_system_printer(std::shared_ptr<const PageSet> pages) {
    // The print system may never answer, and a call to it cannot be cancelled. So a thread of its own makes
    // the call, and is abandoned when its time is over; it shares the ownership of everything that it uses.
    auto job = std::make_shared<Job>();
    std::future<Printed> printed = job->answer.get_future();
    std::thread([job, pages = std::move(pages)] {
        try {
            job->answer.set_value(print_now(*pages, *job));
        } catch (...) {
            job->answer.set_value(Printed::failed);
        }
    }).detach();
    if (printed.wait_for(patience) == std::future_status::ready) return printed.get();
    job->given_up = true;
    return Printed::failed;
}

}  // namespace printing::pages
