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
constexpr auto look = std::chrono::milliseconds(20);
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

// Returns false if the device cannot begin or continue, or if `may_go_on` with the number of pages drawn
// returns false.
bool draw_all(const PageSet& pages, QPagedPaintDevice& device, QPainter& painter, int dots_per_inch,
              const std::function<bool(int)>& may_go_on) {
    if (!painter.begin(&device)) return false;
    for (int page = 0; page < pages.count(); ++page) {
        if (!may_go_on(page) || (page > 0 && !device.newPage())) return false;
        pages.draw(painter, dots_per_inch / mm_per_inch, page);
    }
    return may_go_on(pages.count());
}

// A print job; `given_up` is set when nobody waits for it any more.
struct Job {
    std::promise<Printed> answer;
    std::atomic<bool> given_up = false;
    std::atomic<int> drawn = not_begun;  // pages
    static constexpr int not_begun = -1;
};

Printed print_now(const PageSet& pages, Job& job) {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return Printed::no_printer;
    if (job.given_up) return Printed::failed;
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setPageLayout(layout_of(pages));
    printer.setDocName(pages.name());
    printer.setCreator("Tallvex");
    if (!printer.isValid()) return Printed::failed;
    // Draw in the printer's own dots, so that the modules of codes are whole dots.
    if (const auto resolutions = printer.supportedResolutions(); resolutions.size() == 1)
        printer.setResolution(resolutions.front());
    QPainter painter;
    const bool drawn = draw_all(pages, printer, painter, printer.resolution(), [&job](int page) {
        job.drawn = page;
        return !job.given_up;
    });
    // A job that was reported as failed must not come out later.
    if (!drawn) {
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

bool save_pdf(const PageSet& pages, const fs::path& file, const Progress& progress) {
    if (file.has_parent_path()) fs::create_directories(file.parent_path());
    bool is_ended = false;
    QBuffer drawn;
    drawn.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&drawn);
        writer.setResolution(pdf_dots_per_inch);
        writer.setPageLayout(layout_of(pages));
        writer.setTitle(pages.name());
        writer.setCreator("Tallvex");
        QPainter painter;
        const bool all = draw_all(pages, writer, painter, pdf_dots_per_inch, [&](int page) {
            is_ended = progress && !progress(page, pages.count());
            return !is_ended;
        });
        if (is_ended) return false;
        if (!all || !painter.end()) throw std::runtime_error("the pages cannot be drawn");
    }
    const QByteArray& bytes = drawn.data();
    common::replace_file(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())},
                         common::shop_file_mode);
    return true;
}

Printed print_on_system_printer(std::shared_ptr<const PageSet> pages, const Progress& progress) {
    // The print system may never answer, and a call to it cannot be cancelled. So a thread of its own makes
    // the call, and is abandoned when it is given up; it shares the ownership of everything that it uses.
    auto job = std::make_shared<Job>();
    std::future<Printed> printed = job->answer.get_future();
    const int total = pages->count();
    std::thread([job, pages = std::move(pages)] {
        try {
            job->answer.set_value(print_now(*pages, *job));
        } catch (...) {
            job->answer.set_value(Printed::failed);
        }
    }).detach();
    int drawn = Job::not_begun;
    auto moved = std::chrono::steady_clock::now();
    for (;;) {
        if (printed.wait_for(look) == std::future_status::ready) return printed.get();
        if (job->drawn != drawn) {
            drawn = job->drawn;
            moved = std::chrono::steady_clock::now();
        }
        if (progress && drawn != Job::not_begun) {
            if (progress(drawn, total)) continue;
            job->given_up = true;
            return Printed::cancelled;
        }
        if (std::chrono::steady_clock::now() - moved < patience) continue;
        job->given_up = true;
        return Printed::failed;
    }
}

}  // namespace printing::pages
