// Reports and full-page invoices drawn on sheets.
#pragma once

#include <QImage>
#include <vector>

#include "printing/pages/canvas.h"
#include "printing/pages/page_set.h"
#include "printing/pages/table.h"
#include "printing/report.h"

namespace printing::pages {

// The table takes as many pages as it needs, with its heading on each. The totals follow it and are kept
// together.
class ReportPage final : public PageSet {
  public:
    explicit ReportPage(Report report);
    ReportPage(const ReportPage&) = delete;  // the table refers to the report
    ReportPage& operator=(const ReportPage&) = delete;

    QString name() const override { return QString::fromStdString(report_.name); }
    int count() const override { return static_cast<int>(pages_.size()); }
    QSizeF size() const override;
    void draw(QPainter& painter, double dots_per_mm, int page) const override;

  private:
    struct Sheet {
        std::size_t first_row = 0;
        std::size_t last_row = 0;  // one past
        bool closing = false;      // totals and all that follows them
    };
    void break_pages();
    double letterhead(const Canvas& canvas, double y) const;
    double captions(const Canvas& canvas, double y) const;
    double continued(const Canvas& canvas, double y) const;
    double closing(const Canvas& canvas, double y) const;
    double totals(const Canvas& canvas, double y) const;
    void foot(const Canvas& canvas, int page) const;
    double right() const { return size().width() - margin; }
    double width() const { return size().width() - 2 * margin; }
    double bottom() const;

    static constexpr double margin = 15;

    Report report_;
    QImage logo_;
    Table table_;
    std::vector<Sheet> pages_;
};

}  // namespace printing::pages
