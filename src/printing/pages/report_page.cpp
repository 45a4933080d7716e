#include "printing/pages/report_page.h"

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

namespace {

constexpr QSizeF a4(210, 297);
constexpr QSizeF a5(148, 210);
constexpr double foot_height = 9;
constexpr double heading_logo_height = 20;
constexpr double table_points = 9;

QSizeF paper(const Report& report) {
    const QSizeF size = report.paper == Paper::a5 ? a5 : a4;
    return report.orientation == Orientation::landscape ? size.transposed() : size;
}

Canvas measuring() {
    return Canvas(nullptr, "");
}

}  // namespace

ReportPage::ReportPage(Report report)
    : report_(std::move(report)),
      table_(report_, measuring(), margin, paper(report_).width() - 2 * margin, table_points) {
    if (!report_.logo.empty()) logo_.load(qstring(report_.logo.string()));
    break_pages();
}

QSizeF ReportPage::size() const {
    return paper(report_);
}

double ReportPage::bottom() const {
    return size().height() - margin - foot_height;
}

void ReportPage::break_pages() {
    const Canvas canvas = measuring();
    const double heading = report_.columns.empty() ? 0 : table_.heading_height(canvas);
    double y = captions(canvas, letterhead(canvas, margin)) + heading;
    const double next_top = continued(canvas, margin) + heading;
    Sheet sheet;
    const std::size_t rows = report_.columns.empty() ? 0 : report_.rows.size();
    for (std::size_t row = 0; row < rows; ++row) {
        const double height = table_.row_height(canvas, row);
        if (y + height > bottom() && row > sheet.first_row) {
            sheet.last_row = row;
            pages_.push_back(sheet);
            sheet.first_row = row;
            y = next_top;
        }
        y += height;
    }
    sheet.last_row = rows;
    if (closing(canvas, y) > bottom() && rows > sheet.first_row) {
        // The totals move to a new page together with the last row.
        if (sheet.last_row - sheet.first_row > 1) --sheet.last_row;
        pages_.push_back(sheet);
        sheet.first_row = sheet.last_row;
        sheet.last_row = rows;
    }
    sheet.closing = true;
    pages_.push_back(sheet);
}

void ReportPage::draw(QPainter& painter, double dots_per_mm, int page) const {
    if (page < 0 || page >= count()) return;
    painter.save();
    Canvas::prepare(painter, dots_per_mm);
    const Canvas canvas(&painter, "");
    const Sheet& sheet = pages_[static_cast<std::size_t>(page)];
    double y = page == 0 ? captions(canvas, letterhead(canvas, margin)) : continued(canvas, margin);
    const bool has_rows = sheet.last_row > sheet.first_row;
    if (!report_.columns.empty() && (has_rows || page == 0)) {
        table_.draw_heading(canvas, y);
        y += table_.heading_height(canvas);
    }
    for (std::size_t row = sheet.first_row; row < sheet.last_row; ++row) {
        table_.draw_row(canvas, y, row);
        y += table_.row_height(canvas, row);
    }
    if (sheet.closing) closing(canvas, y);
    foot(canvas, page);
    painter.restore();
}

double ReportPage::letterhead(const Canvas& canvas, double y) const {
    double text_width = width();
    if (!logo_.isNull()) {
        const double logo_width = std::min(width() / 3, heading_logo_height * logo_.width() / logo_.height());
        const double height = logo_width * logo_.height() / logo_.width();
        canvas.picture({margin, y, logo_width, height}, logo_);
        text_width -= logo_width + 5;
    }
    const double left = right() - text_width;
    double text_bottom = y;
    const auto put = [&](const std::string& text, double points, bool bold, const QColor& colour) {
        text_bottom +=
            canvas.text(left, text_bottom, text_width, qstring(text), {points, bold, Side::right, colour});
    };
    put(report_.store_name, 17, true, colour::ink);
    put(report_.second_store_name, 11, false, colour::label);
    put(report_.telephone, 9, false, colour::label);
    y = std::max(text_bottom, logo_.isNull() ? y : y + heading_logo_height) + 2.5;
    canvas.rule(margin, right(), y, 0.8, colour::ink);
    y += 4;
    y += canvas.text(margin, y, width(), qstring(report_.title), {15, true, Side::centre, colour::ink});
    return y + 4;
}

double ReportPage::captions(const Canvas& canvas, double y) const {
    if (report_.captions.empty()) return y;
    const TextStyle label{9, false, Side::right, colour::label};
    const TextStyle value{9.5, true, Side::right, colour::text};
    const double column = width() / 2;
    double label_width = 0;
    for (const auto& [name, ignored] : report_.captions)
        label_width = std::max(label_width, canvas.text_width(qstring(name), label));
    label_width = std::min(label_width + 3, column * 0.5);
    const double first = y;
    y += 2;
    double row_height = 0;
    for (std::size_t i = 0; i < report_.captions.size(); ++i) {
        const bool at_right = i % 2 == 0;
        const double column_right = right() - (at_right ? 0 : column) - 3;
        const double value_width = column - label_width - 5;
        canvas.text(column_right - label_width, y, label_width, qstring(report_.captions[i].first), label);
        const double height = canvas.text(column_right - label_width - value_width, y, value_width,
                                          qstring(report_.captions[i].second), value);
        row_height = std::max({at_right ? 0 : row_height, height, canvas.text_height(width(), "فا", label)});
        if (!at_right || i + 1 == report_.captions.size()) y += row_height + 1;
    }
    y += 1;
    canvas.frame({margin, first, width(), y - first}, 0.2, colour::line, 1.5);
    return y + 4;
}

double ReportPage::continued(const Canvas& canvas, double y) const {
    const QString title =
        qstring(report_.title) +
        (report_.captions.empty() ? QString() : " - " + qstring(report_.captions[0].second));
    canvas.line(margin + width() / 2, y, width() / 2, qstring(report_.store_name),
                {10, true, Side::right, colour::ink});
    y += canvas.line(margin, y, width() / 2, title, {10, false, Side::left, colour::label});
    canvas.rule(margin, right(), y + 1, 0.4, colour::ink);
    return y + 4;
}

double ReportPage::totals(const Canvas& canvas, double y) const {
    const double box = std::min(90.0, width() * 0.5);
    const auto main =
        report_.main_total < 0 ? report_.totals.size() - 1 : static_cast<std::size_t>(report_.main_total);
    const auto style_of = [main](std::size_t i) {
        const bool is_main = i == main;
        return TextStyle{is_main ? 13.0 : 10.0, true, Side::right,
                         is_main ? QColor(Qt::white) : colour::text};
    };
    double amount = 0;
    for (std::size_t i = 0; i < report_.totals.size(); ++i)
        amount = std::max(amount, canvas.text_width(qstring(report_.totals[i].second), style_of(i)));
    amount = std::min(amount + 0.5, box * 0.6);
    for (std::size_t i = 0; i < report_.totals.size(); ++i) {
        TextStyle style = style_of(i);
        const double inset = 3;
        const double space = i == main ? 1.3 : 0.7;
        const double height = canvas.text_height(box, "فا", style) + 2 * space;
        if (i == main)
            canvas.fill({margin, y, box, height}, colour::ink, 1);
        else
            canvas.rule(margin, margin + box, y + height, 0.12, colour::line);
        canvas.line(margin + inset, y + space, amount, qstring(report_.totals[i].second), style);
        style.bold = i == main;
        canvas.line(margin + inset + amount + 2, y + space, box - amount - 2 - 2 * inset,
                    qstring(report_.totals[i].first), style);
        y += height;
    }
    return y;
}

double ReportPage::closing(const Canvas& canvas, double y) const {
    y += 4;
    if (!report_.totals.empty()) y = totals(canvas, y) + 4;
    if (!report_.words.empty()) {
        const TextStyle style{10.5, true, Side::right, colour::text};
        const double height = canvas.text_height(width() - 8, qstring(report_.words), style) + 3;
        canvas.frame({margin, y, width(), height}, 0.2, colour::line, 1);
        canvas.fill({right() - 1.2, y, 1.2, height}, colour::ink);
        canvas.text(margin + 3, y + 1.5, width() - 8, qstring(report_.words), style);
        y += height + 4;
    }
    for (const std::string& footer : report_.footers)
        y += canvas.text(margin, y, width(), qstring(footer), {9, false, Side::centre, colour::label});
    if (!report_.signatures.empty()) {
        // Room to sign, as much as the page has left.
        constexpr double below_line = 7;
        y += std::clamp(bottom() - y - below_line, 8.0, 16.0);
        const double column = width() / static_cast<double>(report_.signatures.size());
        double column_right = right();
        for (const std::string& signature : report_.signatures) {
            const double line = std::min(60.0, column - 10);
            const double left = column_right - (column + line) / 2;
            canvas.rule(left, left + line, y, 0.2, colour::text);
            canvas.text(left, y + 1, line, qstring(signature), {9.5, false, Side::centre, colour::label});
            column_right -= column;
        }
        y += below_line;
    }
    return y;
}

void ReportPage::foot(const Canvas& canvas, int page) const {
    const double y = size().height() - margin - foot_height + 4;
    canvas.rule(margin, right(), y, 0.15, colour::line);
    const TextStyle style{8, false, Side::centre, colour::label};
    canvas.text(margin, y + 1, width(), QString("صفحة %1 من %2").arg(page + 1).arg(count()), style);
}

}  // namespace printing::pages
