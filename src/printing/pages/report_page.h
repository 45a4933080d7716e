// Reports and full-page invoices drawn on sheets, with a right-to-left table that may run over several pages.
#pragma once

#include <QColor>
#include <QImage>
#include <vector>

#include "printing/pages/canvas.h"
#include "printing/pages/page_set.h"
#include "printing/report.h"

namespace printing::pages {

// The colours of full pages; they keep their contrast on a printer that has only black.
namespace colour {
inline const QColor ink(0x16, 0x32, 0x4A);  // headings, bands
inline const QColor text(0x1B, 0x24, 0x2C);
inline const QColor label(0x52, 0x63, 0x73);  // captions' labels, notes
inline const QColor line(0xB9, 0xC4, 0xCE);
inline const QColor stripe(0xF3, 0xF6, 0xF8);  // every second row
}  // namespace colour

class Table {
  public:
    // The columns share the width; each gets at least what its figures need.
    Table(const Report& report, const Canvas& measure, double left, double width, double points);

    double heading_height(const Canvas& canvas) const;
    void draw_heading(const Canvas& canvas, double y) const;
    double row_height(const Canvas& canvas, std::size_t row) const;
    void draw_row(const Canvas& canvas, double y, std::size_t row) const;

    double right() const { return left_ + width_; }

  private:
    struct Place {
        double left = 0;
        double width = 0;
        Side side = Side::right;
    };
    double cells_height(const Canvas& canvas, const std::vector<std::string>& cells, bool bold) const;
    void draw_cells(const Canvas& canvas, double y, const std::vector<std::string>& cells, bool bold,
                    const QColor& colour) const;

    const Report& report_;
    double left_;
    double width_;
    double points_;
    std::vector<Place> places_;
};

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
