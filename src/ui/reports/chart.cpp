#include "ui/reports/chart.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QGraphicsLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr std::size_t most_names = 8;    // of a table that is not in time
constexpr std::size_t most_marked = 40;  // more columns have no marks below them
constexpr int letters_below = 110;       // the names of all columns together, if they are to fit
constexpr double chart_height = 206;     // with its caption
constexpr double frame = 2;              // around the columns while they have the focus

QFont small_font() {
    QFont font;
    font.setPixelSize(px(13));
    return font;
}

// The mark below a column; the axis needs each mark to differ.
QString mark_of(const reports::TableRow& row, std::size_t at, bool is_marked, std::size_t columns) {
    const QString distinct(static_cast<int>(at), QChar(0x200b));
    if (!is_marked) return distinct;
    QString mark = qt(row.mark.empty() ? row.label : row.mark);
    const int longest = letters_below / static_cast<int>(std::min(columns, most_names));
    if (mark.size() > longest) mark = mark.left(longest - 1) + "…";
    return mark + distinct;
}

void style_axis(QAbstractAxis* axis) {
    axis->setLabelsFont(small_font());
    axis->setLabelsColor(QColor(colour::slate));
    axis->setLinePenColor(QColor(colour::edge));
    axis->setGridLineColor(QColor(colour::line));
}

}  // namespace

Chart::Chart(const QString& name)
    : caption_label_(label({}, "caption", qPrintable(name + "_mark"))), view_(new QChartView) {
    setObjectName(name);
    setFixedHeight(px(chart_height));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(px(frame), 0, px(frame), px(frame));
    column->setSpacing(px(frame));
    column->addWidget(caption_label_);
    view_->setRenderHint(QPainter::Antialiasing);
    view_->setFocusPolicy(Qt::NoFocus);
    view_->setFrameShape(QFrame::NoFrame);
    view_->setBackgroundBrush(QColor(colour::background));
    QSizePolicy keeps_place = view_->sizePolicy();
    keeps_place.setRetainSizeWhenHidden(true);
    view_->setSizePolicy(keeps_place);
    column->addWidget(view_, 1);
}

void Chart::show_table(const reports::Table& table, const QString& caption) {
    const bool any = !table.rows.empty();
    setVisible(any || !when_empty_.isEmpty());
    view_->setVisible(any);
    setFocusPolicy(any ? Qt::StrongFocus : Qt::NoFocus);
    caption_ = caption;
    setAccessibleName(caption);
    texts_.clear();
    set_ = nullptr;
    if (any) {
        QChart* former = view_->chart();
        view_->setChart(chart_of(table));
        delete former;
        marked_ = std::min(marked_, static_cast<int>(texts_.size()) - 1);
    }
    show_mark();
}

QChart* Chart::chart_of(const reports::Table& table) {
    auto* chart = new QChart;
    chart->layout()->setContentsMargins(0, 0, 0, 0);
    chart->setMargins({px(4), px(2), px(4), px(2)});
    chart->setBackgroundRoundness(px(8));
    chart->setBackgroundBrush(QColor(colour::paper));
    chart->legend()->hide();
    const std::size_t count = table.is_in_time ? table.rows.size() : std::min(table.rows.size(), most_names);
    set_ = new QBarSet(QString());
    set_->setColor(QColor(colour::focus));
    set_->setBorderColor(QColor(colour::focus));
    set_->setSelectedColor(QColor(colour::warning));
    QStringList marks;
    // The axis runs from the left, so the first row is added last.
    for (std::size_t i = count; i-- > 0;) {
        const reports::TableRow& row = table.rows[i];
        const double charted = row.figures[table.charted];
        *set_ << charted;
        marks << mark_of(row, i, count <= most_marked, count);
        const auto& column = table.columns[table.charted];
        texts_.prepend(qt(row.label) + "  ·  \u200f" + qt(column.heading) + " " +
                       figure(reports::text_of(charted, column.format)));
    }
    auto* series = new QBarSeries;
    series->append(set_);
    series->setBarWidth(count <= 4 ? 0.25 : 0.7);
    chart->addSeries(series);
    auto* along = new QBarCategoryAxis;
    along->append(marks);
    style_axis(along);
    along->setGridLineVisible(false);
    chart->addAxis(along, Qt::AlignBottom);
    series->attachAxis(along);
    auto* up = new QValueAxis;
    up->setLabelFormat("%.0f");
    up->setTickCount(4);
    style_axis(up);
    chart->addAxis(up, Qt::AlignRight);
    series->attachAxis(up);
    if (up->max() > up->min())
        up->applyNiceNumbers();
    else
        up->setRange(0, 1);  // nothing but zeros
    connect(set_, &QBarSet::clicked, this, [this, count](int at) {
        move_to(static_cast<int>(count) - 1 - at);
        emit row_taken(marked_);
    });
    return chart;
}

void Chart::move_to(int row) {
    marked_ = std::clamp(row, 0, static_cast<int>(texts_.size()) - 1);
    show_mark();
}

void Chart::show_mark() {
    const bool is_marked = hasFocus() && marked_ < texts_.size();
    caption_label_->setText(is_marked ? texts_[marked_] : caption_);
    setAccessibleDescription(is_marked ? texts_[marked_] : QString());
    if (set_ != nullptr) {
        set_->deselectAllBars();
        if (is_marked) set_->selectBar(static_cast<int>(texts_.size()) - 1 - marked_);
    }
    update();
}

void Chart::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Right:
            return move_to(marked_ - 1);
        case Qt::Key_Left:
            return move_to(marked_ + 1);
        case Qt::Key_Home:
            return move_to(0);
        case Qt::Key_End:
            return move_to(static_cast<int>(texts_.size()) - 1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!texts_.isEmpty()) emit row_taken(marked_);
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void Chart::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    show_mark();
}

void Chart::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    show_mark();
}

void Chart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF around = QRectF(rect()).adjusted(1, view_->y() - px(frame) + 1, -1, -1);
    if (texts_.isEmpty()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(colour::paper));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, caption_label_->height(), -1, -1), px(8), px(8));
        painter.setPen(QColor(colour::quiet));
        painter.drawText(rect(), Qt::AlignCenter, when_empty_);
    } else if (hasFocus()) {
        painter.setPen(QPen(QColor(colour::focus), 2 * px(frame)));
        painter.drawRoundedRect(around, px(8), px(8));
    }
}

}  // namespace ui
