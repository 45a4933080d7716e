#include "printing/pages/receipt_page.h"

#include <algorithm>
#include <vector>

#include "printing/code_128.h"
#include "printing/pages/canvas.h"

namespace printing::pages {

namespace {

// *_letters: sizes relative to the receipt's own letters (bon_font_s); all others in millimetres.
constexpr double store_name_letters = 2.0;
constexpr double second_name_letters = 1.4;
constexpr double kind_letters = 1.35;
constexpr double net_letters = 1.7;
constexpr double logo_height = 18;
constexpr double largest_module = 1;  // of a QR code, where the paper is wide enough
constexpr double widest_bar = 0.5;    // a module of the barcode
constexpr double bar_height = 9;
constexpr double column_gap = 1.6;
constexpr double widest_code = 0.3;     // of the width; longer item codes are written smaller
constexpr double narrowest_name = 0.3;  // of the width
constexpr double slack = 0.4;           // of figures, for letters that reach over their advance
constexpr double top = 3;
constexpr double feed = 8;  // below the last line, for the cutter

// A column of figures with what it shows of a row.
struct Figures {
    const char* heading;
    std::string LayoutRow::*text;
    double right = 0;  // its edges in millimetres from the paper's left edge
    double width = 0;
};

// The receipt's table in millimetres from the paper's left edge; the first column is at the right.
struct Columns {
    double name_left = 0;
    double name_width = 0;
    double code_right = 0;
    double code_width = 0;
    std::vector<Figures> figures;
    double scale = 1;         // of the figures' letters
    bool name_apart = false;  // whether the name has a line of its own above the figures
};

constexpr const char* name_heading = "اسم الصنف";
constexpr const char* code_heading = "كود";

TextStyle letters_of(const LayoutReceipt& receipt, double scale = 1, bool bold = false) {
    return {receipt.settings.font_size * scale, bold, Side::right, Qt::black};
}

// There is a column of units if any row has one.
std::vector<Figures> figures_of(const LayoutReceipt& receipt) {
    std::vector<Figures> figures = {
        {"كمية", &LayoutRow::quantity}, {"سعر", &LayoutRow::price}, {"الاجمالي", &LayoutRow::total}};
    if (std::any_of(receipt.rows.begin(), receipt.rows.end(),
                    [](const LayoutRow& row) { return !row.unit.empty(); }))
        figures.insert(figures.begin(), {"الوحدة", &LayoutRow::unit});
    return figures;
}

double widest(const Canvas& canvas, const LayoutReceipt& receipt, const char* heading,
              std::string LayoutRow::*text) {
    double width = canvas.text_width(heading, letters_of(receipt, 1, true));
    for (const LayoutRow& row : receipt.rows)
        width = std::max(width, canvas.text_width(qstring(row.*text), letters_of(receipt)));
    return width;
}

// Figures get the width they need. If they need more than the whole width, they are written smaller; if they
// leave too little room for the name, it goes above them.
Columns columns_of(const Canvas& canvas, const LayoutReceipt& receipt, double left, double width) {
    Columns columns;
    columns.figures = figures_of(receipt);
    double needed = 0;
    for (Figures& figures : columns.figures)
        needed += figures.width = widest(canvas, receipt, figures.heading, figures.text);
    const double room = width - column_gap * static_cast<double>(columns.figures.size() - 1);
    columns.scale = std::min(1.0, room / needed);
    double right = left;
    for (auto figures = columns.figures.rbegin(); figures != columns.figures.rend(); ++figures) {
        figures->width *= columns.scale;
        figures->right = right + figures->width;
        right = figures->right + column_gap;
    }
    if (receipt.settings.show_item_code) {
        columns.code_width =
            std::min(widest(canvas, receipt, code_heading, &LayoutRow::item_code), width * widest_code);
        columns.code_right = left + width;
    }
    const double code_space = columns.code_width > 0 ? columns.code_width + column_gap : 0;
    columns.name_left = right;
    columns.name_width = left + width - right - code_space;
    columns.name_apart = columns.name_width < width * narrowest_name;
    if (columns.name_apart) {
        columns.name_left = left;
        columns.name_width = width - code_space;
        // The figures have the line to themselves and spread over it.
        const double spread =
            (left + width - columns.figures.front().right) / static_cast<double>(columns.figures.size() - 1);
        double shift = 0;
        for (auto figures = columns.figures.rbegin(); figures != columns.figures.rend(); ++figures) {
            figures->right += shift;
            shift += spread;
        }
    }
    return columns;
}

}  // namespace

ReceiptPage::ReceiptPage(LayoutReceipt receipt) : receipt_(std::move(receipt)) {
    if (!receipt_.logo.empty()) logo_.load(qstring(receipt_.logo.string()));
    width_ = receipt_.roll.printed;
    left_ = (receipt_.roll.paper - width_) / 2;
    height_ = flow(Canvas(nullptr, qstring(receipt_.settings.font)));
}

QString ReceiptPage::name() const {
    return "receipt-" + qstring(receipt_.number.second);
}

void ReceiptPage::draw(QPainter& painter, double dots_per_mm, int) const {
    painter.save();
    Canvas::prepare(painter, dots_per_mm);
    flow(Canvas(&painter, qstring(receipt_.settings.font)));
    painter.restore();
}

double ReceiptPage::flow(const Canvas& canvas) const {
    double y = header(canvas, top);
    y = details(canvas, y);
    y = table(canvas, y);
    y = totals(canvas, y);
    return footer(canvas, y) + feed;
}

double ReceiptPage::header(const Canvas& canvas, double y) const {
    if (!logo_.isNull()) {
        const double width = std::min(width_, logo_height * logo_.width() / logo_.height());
        const double height = width * logo_.height() / logo_.width();
        canvas.picture({left_ + (width_ - width) / 2, y, width, height}, logo_);
        y += height + 1.5;
    }
    const auto centred = [&](const std::string& text, double scale, bool bold) {
        TextStyle style = letters_of(receipt_, scale, bold);
        style.side = Side::centre;
        y += canvas.text(left_, y, width_, qstring(text), style);
    };
    centred(receipt_.store_name, store_name_letters, true);
    centred(receipt_.second_store_name, second_name_letters, false);
    if (!receipt_.telephone.empty()) {
        TextStyle style = letters_of(receipt_, 1.1);
        style.side = Side::centre;
        y += canvas.line(left_, y, width_, qstring(receipt_.telephone), style);
    }
    return y + 1.5;
}

double ReceiptPage::details(const Canvas& canvas, double y) const {
    // The kind and the number in white on black, because the cashier looks for them first.
    TextStyle style = letters_of(receipt_, kind_letters, true);
    style.colour = Qt::white;
    const double inner = width_ - 4;
    const QString kind = qstring(receipt_.kind);
    const QString number = qstring(receipt_.number.first) + "  " + qstring(receipt_.number.second);
    const double needed = canvas.text_width(kind, style) + canvas.text_width(number, style) + 4;
    style.points *= std::min(1.0, inner / needed);
    const double number_width = canvas.text_width(number, style) + 1;
    const double height = canvas.text_height(inner, "فا", style) + 1.6;
    canvas.fill({left_, y, width_, height}, Qt::black, 1);
    canvas.line(left_ + 2 + number_width, y + 0.8, inner - number_width, kind, style);
    style.side = Side::left;
    canvas.line(left_ + 2, y + 0.8, number_width, number, style);
    y += height + 1.2;

    // Two in a row; one that is too long for half a row has a row of its own.
    const TextStyle plain = letters_of(receipt_);
    const double half = width_ / 2 - 1;
    bool at_left = false;
    double row_height = 0;
    for (const auto& [name, value] : receipt_.details) {
        const QString label = qstring(name) + (name.ends_with(' ') ? "" : " : ");
        const double label_width = canvas.text_width(label, plain) + 0.3;
        const bool is_long = label_width + canvas.text_width(qstring(value), plain) > half;
        if (at_left && is_long) {
            y += row_height;
            at_left = false;
        }
        const double right = left_ + (at_left ? half : width_);
        const double value_width = (is_long ? width_ : half) - label_width;
        if (label_width > width_ * 0.6) {
            y += canvas.text(left_, y, width_, label, plain);
            row_height = canvas.text(left_, y, width_, qstring(value), plain);
        } else {
            row_height = canvas.text(right - label_width, y, label_width, label, plain);
            // Dates and times are written smaller rather than on two lines.
            const double left = right - label_width - value_width;
            const bool is_line = canvas.text_width(qstring(value), plain) < 1.5 * value_width;
            row_height =
                std::max(row_height, is_line ? canvas.line(left, y, value_width, qstring(value), plain)
                                             : canvas.text(left, y, value_width, qstring(value), plain));
        }
        if (at_left || is_long) y += row_height;
        at_left = !at_left && !is_long;
    }
    if (at_left) y += row_height;
    return y + 1.2;
}

double ReceiptPage::table(const Canvas& canvas, double y) const {
    if (receipt_.rows.empty()) return y;
    const Columns columns = columns_of(canvas, receipt_, left_, width_);
    const TextStyle bold = letters_of(receipt_, 1, true);
    const TextStyle plain = letters_of(receipt_);
    const auto figures = [&](double at, const auto& text_of, TextStyle style) {
        double height = 0;
        style.points *= columns.scale;
        for (const Figures& column : columns.figures)
            height = std::max(height, canvas.line(column.right - column.width - slack, at,
                                                  column.width + slack, text_of(column), style));
        return height;
    };
    const auto row = [&](const QString& code, const QString& name, const auto& text_of,
                         const TextStyle& style) {
        double height = canvas.text(columns.name_left, y, columns.name_width, name, style);
        if (columns.code_width > 0) {
            const double width = columns.code_width + slack;
            height = std::max(height, canvas.line(columns.code_right - width, y, width, code, style));
        }
        if (columns.name_apart) {
            y += height;
            y += figures(y, text_of, style);
        } else {
            y += std::max(height, figures(y, text_of, style));
        }
    };
    const double right = left_ + width_;
    canvas.rule(left_, right, y, 0.35);
    y += 0.6;
    row(
        code_heading, name_heading, [](const Figures& column) { return QString(column.heading); }, bold);
    y += 0.4;
    canvas.rule(left_, right, y, 0.35);
    y += 0.8;
    for (const LayoutRow& line : receipt_.rows) {
        row(
            qstring(line.item_code), qstring(line.item_name),
            [&line](const Figures& column) { return qstring(line.*column.text); }, plain);
        y += 0.5;
        if (&line != &receipt_.rows.back()) canvas.rule(left_, right, y, 0.1, QColor(120, 120, 120));
        y += 0.5;
    }
    canvas.rule(left_, right, y, 0.35);
    return y + 1;
}

double ReceiptPage::totals(const Canvas& canvas, double y) const {
    // Amounts are under the column of the lines' totals, aligned to the right. All but the net have one size,
    // in which the longest fits; so do their labels.
    const double most = width_ * 0.6;
    TextStyle plain = letters_of(receipt_, 1.15);
    TextStyle net = letters_of(receipt_, net_letters, true);
    double amount_width = 0;
    for (TextStyle* style : {&plain, &net}) {
        double widest = 0;
        for (std::size_t i = 0; i < receipt_.totals.size(); ++i) {
            if ((i == receipt_.net) == (style == &net))
                widest = std::max(widest, canvas.text_width(qstring(receipt_.totals[i].second), *style));
        }
        widest += slack;
        style->points *= std::min(1.0, most / widest * 0.98);
        amount_width = std::max(amount_width, std::min(widest, most));
    }
    constexpr double inset = 1.5;
    const double label_left = left_ + inset + amount_width + 1;
    const double label_width = left_ + width_ - inset - label_left;
    double widest_label = label_width;
    for (std::size_t i = 0; i < receipt_.totals.size(); ++i) {
        if (i != receipt_.net)
            widest_label =
                std::max(widest_label, canvas.text_width(qstring(receipt_.totals[i].first), plain));
    }
    for (std::size_t i = 0; i < receipt_.totals.size(); ++i) {
        const auto& [label, amount] = receipt_.totals[i];
        const bool is_net = i == receipt_.net;
        const TextStyle& style = is_net ? net : plain;
        if (is_net) y += 0.8;
        const double height = canvas.text_height(width_, qstring(amount), style);
        if (is_net) canvas.frame({left_, y, width_, height + 1.2}, 0.35, Qt::black, 1);
        const double text_top = y + (is_net ? 0.6 : 0);
        canvas.line(left_ + inset, text_top, amount_width, qstring(amount), style);
        const double own_width = is_net ? 0 : canvas.text_width(qstring(label), style);
        const double room = is_net ? label_width : own_width * label_width / widest_label;
        canvas.line(label_left + label_width - room, text_top, room, qstring(label), style);
        y += height + (is_net ? 2.2 : 0.2);
    }
    return y + 0.8;
}

double ReceiptPage::barcode(const Canvas& canvas, double y) const {
    const std::vector<bool> bars = code_128(receipt_.code);
    if (bars.empty()) return y;
    // The paper beside what is printed belongs to the quiet zone.
    const int quiet = 3;
    const int modules = static_cast<int>(bars.size()) + 2 * quiet;
    const double width = std::min(width_, modules * widest_bar);
    canvas.modules({left_ + (width_ - width) / 2, y, width, bar_height}, modules, 1, [&](int x, int) {
        const auto bar = static_cast<std::size_t>(x - quiet);
        return x >= quiet && bar < bars.size() && bars[bar];
    });
    y += bar_height + 0.3;
    const TextStyle style{6, false, Side::centre, Qt::black};
    return y + canvas.text(left_, y, width_, qstring(receipt_.code), style) + 1;
}

double ReceiptPage::footer(const Canvas& canvas, double y) const {
    const auto centred = [&](const std::string& text, double scale, bool bold) {
        TextStyle style = letters_of(receipt_, scale, bold);
        style.side = Side::centre;
        y += canvas.text(left_, y, width_, qstring(text), style);
    };
    if (!receipt_.note.empty()) {
        centred(receipt_.note, 1.1, true);
        y += 1;
    }
    if (receipt_.qr) {
        // The paper beside what is printed belongs to the quiet zone.
        const int modules = receipt_.qr->modules;
        const double module = std::min(largest_module, width_ / modules);
        const double side = modules * module;
        const double quiet = QrCode::quiet_modules * module;
        canvas.modules({left_ + (width_ - side) / 2, y + quiet, side, side}, modules, modules,
                       [&](int x, int row) { return receipt_.qr->is_dark(x, row); });
        y += side + 2 * quiet;
    }
    y = barcode(canvas, y);
    const bool credits = std::any_of(receipt_.credit_lines.begin(), receipt_.credit_lines.end(),
                                     [](const std::string& line) { return !line.empty(); });
    if (credits) {
        canvas.rule(left_ + width_ * 0.3, left_ + width_ * 0.7, y, 0.15);
        y += 0.8;
        for (const std::string& line : receipt_.credit_lines)
            centred(line, 0.95, false);
    }
    return y;
}

}  // namespace printing::pages
