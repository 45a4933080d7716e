#include "printing/pages/receipt_page.h"

#include <algorithm>
#include <array>

#include "printing/pages/canvas.h"

namespace printing::pages {

namespace {

// *_letters: sizes relative to the receipt's own letters (bon_font_s); all others in millimetres.
constexpr double store_name_letters = 2.0;
constexpr double second_name_letters = 1.4;
constexpr double kind_letters = 1.35;
constexpr double net_letters = 1.7;
constexpr double logo_height = 18;
constexpr double qr_size = 28;
constexpr double column_gap = 1.6;
constexpr double widest_column = 0.3;  // of the width; longer figures are written smaller
constexpr double top = 3;
constexpr double feed = 8;  // below the last line, for the cutter

// The receipt's table in millimetres from the paper's left edge; the first column is at the right.
struct Columns {
    double name_left = 0;
    double name_width = 0;
    double code_right = 0;
    double code_width = 0;
    std::array<double, 3> right{};  // right edges of quantity, price, total
    std::array<double, 3> width{};
    bool name_apart = false;  // whether the name has a line of its own above the figures
};

constexpr std::array headings = {"كمية", "سعر", "الاجمالي"};
constexpr const char* name_heading = "اسم الصنف";
constexpr const char* code_heading = "كود";

const std::string& figure(const LayoutRow& row, std::size_t column) {
    return column == 0 ? row.quantity : column == 1 ? row.price : row.total;
}

TextStyle letters(const LayoutReceipt& receipt, double scale = 1, bool bold = false) {
    return {receipt.settings.font_size * scale, bold, Side::right, Qt::black};
}

Columns columns_of(const Canvas& canvas, const LayoutReceipt& receipt, double left, double width) {
    const TextStyle plain = letters(receipt);
    const TextStyle bold = letters(receipt, 1, true);
    Columns columns;
    double right = left;
    for (std::size_t i = headings.size(); i-- > 0;) {
        double needed = canvas.text_width(headings[i], bold);
        for (const LayoutRow& row : receipt.rows)
            needed = std::max(needed, canvas.text_width(qstring(figure(row, i)), plain));
        columns.width[i] = std::min(needed, width * widest_column);
        columns.right[i] = right + columns.width[i];
        right += columns.width[i] + column_gap;
    }
    if (receipt.settings.show_item_code) {
        columns.code_width = canvas.text_width(code_heading, bold);
        for (const LayoutRow& row : receipt.rows)
            columns.code_width =
                std::max(columns.code_width, canvas.text_width(qstring(row.item_code), plain));
        columns.code_width = std::min(columns.code_width, width * widest_column);
        columns.code_right = left + width;
    }
    const double code_space = columns.code_width > 0 ? columns.code_width + column_gap : 0;
    columns.name_left = right;
    columns.name_width = left + width - right - code_space;
    columns.name_apart = columns.name_width < width * 0.3;
    if (columns.name_apart) {
        columns.name_left = left;
        columns.name_width = width - code_space;
    }
    return columns;
}

}  // namespace

ReceiptPage::ReceiptPage(LayoutReceipt receipt) : receipt_(std::move(receipt)) {
    if (!receipt_.logo.empty()) logo_.load(qstring(receipt_.logo.string()));
    if (!receipt_.qr.empty()) qr_.load(qstring(receipt_.qr.string()));
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
        TextStyle style = letters(receipt_, scale, bold);
        style.side = Side::centre;
        y += canvas.text(left_, y, width_, qstring(text), style);
    };
    centred(receipt_.store_name, store_name_letters, true);
    centred(receipt_.second_store_name, second_name_letters, false);
    centred(receipt_.telephone, 1.1, false);
    return y + 1.5;
}

double ReceiptPage::details(const Canvas& canvas, double y) const {
    // The kind and the number in white on black, because the cashier looks for them first.
    TextStyle style = letters(receipt_, kind_letters, true);
    style.colour = Qt::white;
    const double inner = width_ - 4;
    const QString kind = qstring(receipt_.kind);
    const QString number = qstring(receipt_.number.first) + "  " + qstring(receipt_.number.second);
    const double needed = canvas.text_width(kind, style) + canvas.text_width(number, style) + 4;
    if (needed > inner) style.points *= std::max(0.6, inner / needed);
    const double number_width = std::min(inner * 0.6, canvas.text_width(number, style) + 1);
    const double height = canvas.text_height(inner, "فا", style) + 1.6;
    canvas.fill({left_, y, width_, height}, Qt::black, 1);
    canvas.line(left_ + 2 + number_width, y + 0.8, inner - number_width, kind, style);
    style.side = Side::left;
    canvas.line(left_ + 2, y + 0.8, number_width, number, style);
    y += height + 1.2;

    // Two in a row; one that is too long for half a row has a row of its own.
    const TextStyle plain = letters(receipt_);
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
            canvas.text(right - label_width, y, label_width, label, plain);
            row_height =
                canvas.text(right - label_width - value_width, y, value_width, qstring(value), plain);
        }
        if (at_left || is_long) y += row_height;
        at_left = !at_left && !is_long;
    }
    if (at_left) y += row_height;
    return y + 1.2;
}

double ReceiptPage::table(const Canvas& canvas, double y) const {
    const Columns columns = columns_of(canvas, receipt_, left_, width_);
    const TextStyle bold = letters(receipt_, 1, true);
    const TextStyle plain = letters(receipt_);
    const auto figures = [&](double at, const auto& text_of, const TextStyle& style) {
        double height = 0;
        for (std::size_t i = 0; i < headings.size(); ++i) {
            const double width = columns.width[i] + 0.4;
            height = std::max(height, canvas.line(columns.right[i] - width, at, width, text_of(i), style));
        }
        return height;
    };
    const auto row = [&](const QString& code, const QString& name, const auto& text_of,
                         const TextStyle& style) {
        double height = canvas.text(columns.name_left, y, columns.name_width, name, style);
        if (columns.code_width > 0) {
            const double width = columns.code_width + 0.4;
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
        code_heading, name_heading, [](std::size_t i) { return QString(headings[i]); }, bold);
    y += 0.4;
    canvas.rule(left_, right, y, 0.35);
    y += 0.8;
    for (const LayoutRow& line : receipt_.rows) {
        row(
            qstring(line.item_code), qstring(line.item_name),
            [&line](std::size_t i) { return qstring(figure(line, i)); }, plain);
        y += 0.5;
        if (&line != &receipt_.rows.back()) canvas.rule(left_, right, y, 0.1, QColor(120, 120, 120));
        y += 0.5;
    }
    canvas.rule(left_, right, y, 0.35);
    return y + 1;
}

double ReceiptPage::totals(const Canvas& canvas, double y) const {
    // Amounts are under the column of the lines' totals, aligned to the right.
    double amount_width = 0;
    const auto style_of = [this](std::size_t i) {
        return letters(receipt_, i == receipt_.net ? net_letters : 1.15, i == receipt_.net);
    };
    for (std::size_t i = 0; i < receipt_.totals.size(); ++i)
        amount_width =
            std::max(amount_width, canvas.text_width(qstring(receipt_.totals[i].second), style_of(i)));
    amount_width = std::min(amount_width + 0.5, width_ * 0.6);
    for (std::size_t i = 0; i < receipt_.totals.size(); ++i) {
        const auto& [label, amount] = receipt_.totals[i];
        const TextStyle style = style_of(i);
        const bool is_net = i == receipt_.net;
        if (is_net) y += 0.8;
        const double height = canvas.text_height(width_, qstring(amount), style);
        if (is_net) canvas.frame({left_, y, width_, height + 1.2}, 0.35, Qt::black, 1);
        const double inset = 1.5;
        const double text_top = y + (is_net ? 0.6 : 0);
        canvas.line(left_ + inset, text_top, amount_width, qstring(amount), style);
        const double label_left = left_ + inset + amount_width + 1;
        canvas.line(label_left, text_top, left_ + width_ - inset - label_left, qstring(label), style);
        y += height + (is_net ? 2.2 : 0.2);
    }
    return y + 0.8;
}

double ReceiptPage::footer(const Canvas& canvas, double y) const {
    const auto centred = [&](const std::string& text, double scale, bool bold) {
        TextStyle style = letters(receipt_, scale, bold);
        style.side = Side::centre;
        y += canvas.text(left_, y, width_, qstring(text), style);
    };
    if (!receipt_.note.empty()) {
        centred(receipt_.note, 1.1, true);
        y += 1;
    }
    if (!qr_.isNull()) {
        canvas.picture({left_ + (width_ - qr_size) / 2, y, qr_size, qr_size}, qr_);
        y += qr_size + 1;
    }
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
