#include "printing/pages/table.h"

#include <algorithm>
#include <numeric>

namespace printing::pages {

namespace {

constexpr double padding = 1.6;    // left and right of a cell
constexpr double row_space = 1.1;  // above and below its text

// Figures are aligned to the right too, so that their decimals line up.
Side side_of(Align align) {
    return align == Align::centre ? Side::centre : Side::right;
}

}  // namespace

Table::Table(const Report& report, const Canvas& measure, double left, double width, double points)
    : report_(report), left_(left), width_(width), points_(points) {
    // A column of figures gets the width it needs, so that no figure is broken over two lines.
    std::vector<double> widths(report.columns.size());
    const TextStyle plain{points, false, Side::right, Qt::black};
    const TextStyle bold{points, true, Side::right, Qt::black};
    double shares = 0;
    for (const ReportColumn& column : report.columns)
        shares += column.share;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        widths[i] = width * report.columns[i].share / shares;
        double needed = measure.text_width(qstring(report.columns[i].heading), bold);
        if (report.columns[i].align == Align::end) {
            for (const auto& row : report.rows) {
                if (i < row.size()) needed = std::max(needed, measure.text_width(qstring(row[i]), plain));
            }
        }
        widths[i] = std::max(widths[i], std::min(needed + 2 * padding + 0.3, width / 3));
    }
    // The columns of text make up for what the figures took, in proportion to their width.
    const double excess = std::accumulate(widths.begin(), widths.end(), 0.0) - width;
    double elastic = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (report.columns[i].align == Align::start) elastic += widths[i];
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (elastic > excess * 1.2 && report.columns[i].align == Align::start)
            widths[i] -= excess * widths[i] / elastic;
        else if (elastic <= excess * 1.2)
            widths[i] *= width / (width + excess);
    }
    double right = left + width;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        right -= widths[i];
        places_.push_back({right, widths[i], side_of(report.columns[i].align)});
    }
}

double Table::cells_height(const Canvas& canvas, const std::vector<std::string>& cells, bool bold) const {
    const TextStyle style{points_, bold, Side::right, colour::text};
    double height = canvas.text_height(width_, "فا", style);
    for (std::size_t i = 0; i < std::min(cells.size(), places_.size()); ++i)
        height =
            std::max(height, canvas.text_height(places_[i].width - 2 * padding, qstring(cells[i]), style));
    return height + 2 * row_space;
}

void Table::draw_cells(const Canvas& canvas, double y, const std::vector<std::string>& cells, bool bold,
                       const QColor& colour) const {
    for (std::size_t i = 0; i < std::min(cells.size(), places_.size()); ++i) {
        const Place& place = places_[i];
        canvas.text(place.left + padding, y + row_space, place.width - 2 * padding, qstring(cells[i]),
                    {points_, bold, place.side, colour});
    }
}

double Table::heading_height(const Canvas& canvas) const {
    return cells_height(canvas, report_.headings(), true);
}

void Table::draw_heading(const Canvas& canvas, double y) const {
    canvas.fill({left_, y, width_, heading_height(canvas)}, colour::ink);
    draw_cells(canvas, y, report_.headings(), true, Qt::white);
}

double Table::row_height(const Canvas& canvas, std::size_t row) const {
    return cells_height(canvas, report_.rows[row], false);
}

void Table::draw_row(const Canvas& canvas, double y, std::size_t row) const {
    const double height = row_height(canvas, row);
    if (row % 2 == 1) canvas.fill({left_, y, width_, height}, colour::stripe);
    draw_cells(canvas, y, report_.rows[row], false, colour::text);
    canvas.rule(left_, left_ + width_, y + height, 0.12, colour::line);
}

}  // namespace printing::pages
