#include "printing/pages/label_page.h"

#include <algorithm>

#include "printing/code_128.h"

namespace printing::pages {

namespace {

constexpr double label_padding = 1.5;
constexpr double points_per_mm = 72 / 25.4;
constexpr double label_line = 1.5;  // of a line of Arabic letters, against their size

}  // namespace

LabelPages::LabelPages(LabelJob job) : job_(std::move(job)) {
    if (job_.paper.is_sheet()) places_.resize(static_cast<std::size_t>(job_.used), nullptr);
    for (const Label& label : job_.labels)
        places_.insert(places_.end(), static_cast<std::size_t>(label.copies), &label);
}

void LabelPages::draw(QPainter& painter, double dots_per_mm, int page) const {
    painter.save();
    Canvas::prepare(painter, dots_per_mm);
    const Canvas canvas(&painter, "Noto Sans Arabic");
    const LabelPaper& paper = job_.paper;
    const auto on_page = static_cast<std::size_t>(paper.columns * paper.rows);
    for (std::size_t place = 0; place < on_page; ++place) {
        const std::size_t at = static_cast<std::size_t>(page) * on_page + place;
        if (at >= places_.size() || places_[at] == nullptr) continue;
        const auto row = static_cast<double>(place / static_cast<std::size_t>(paper.columns));
        const auto column = static_cast<double>(place % static_cast<std::size_t>(paper.columns));
        const QRectF area(paper.page_width - paper.left - (column + 1) * paper.width,
                          paper.top + row * paper.height, paper.width, paper.height);
        draw_label(canvas, area.adjusted(label_padding, label_padding, -label_padding, -label_padding),
                   *places_[at]);
    }
    painter.restore();
}

// From the top: the shop, the name, the price, the bars and what they say. Heights are shares of the label's.
void LabelPages::draw_label(const Canvas& canvas, const QRectF& area, const Label& label) const {
    const auto points = [&](double share) { return area.height() * share / label_line * points_per_mm; };
    double y = area.top();
    const auto line = [&](const std::string& text, double share, bool bold) {
        if (!text.empty())
            canvas.line(area.left(), y, area.width(), qstring(text), {points(share), bold, Side::centre});
        y += area.height() * share;
    };
    if (!label.shop.empty()) line(label.shop, 0.13, false);
    // A long name takes two lines.
    const TextStyle two_lines{points(0.115), true, Side::centre};
    if (canvas.text_width(qstring(label.name), {points(0.2), true, Side::centre}) > 1.3 * area.width()) {
        canvas.text(area.left(), y, area.width(), qstring(label.name), two_lines);
        y += area.height() * 0.23;
    } else {
        line(label.name, 0.2, true);
    }
    line(label.price + (label.unit.empty() ? "" : "  " + label.unit), 0.26, true);
    const std::vector<bool> bars = code_128(label.barcode);
    if (bars.empty()) return line(label.barcode, 0.2, false);
    const double digits = area.height() * 0.13;
    canvas.modules({area.left(), y, area.width(), area.bottom() - digits - y}, static_cast<int>(bars.size()),
                   1, [&](int column, int) { return bars[static_cast<std::size_t>(column)]; });
    y = area.bottom() - digits;
    line(label.barcode, 0.13, false);
}

}  // namespace printing::pages
