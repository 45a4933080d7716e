#include "ui/reports/chart.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>

#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr std::size_t most_names = 8;    // of a table that is not in time
constexpr std::size_t most_marked = 40;  // more columns have no marks below them
constexpr int longest_name = 14;         // letters that fit below a column
constexpr double chart_height = 190;

QFont small_font() {
    QFont font;
    font.setPixelSize(px(13));
    return font;
}

// What stands below a column; axes need texts that differ.
QString mark_of(const reports::TableRow& row, std::size_t at, bool is_marked) {
    const QString distinct(static_cast<int>(at), QChar(0x200b));
    if (!is_marked) return distinct;
    QString mark = qt(row.mark.empty() ? row.label : row.mark);
    if (mark.size() > longest_name) mark = mark.left(longest_name - 1) + "…";
    return mark + distinct;
}

void style_axis(QAbstractAxis* axis) {
    axis->setLabelsFont(small_font());
    axis->setLabelsColor(QColor(colour::slate));
    axis->setLinePenColor(QColor(colour::edge));
    axis->setGridLineColor(QColor(colour::line));
}

}  // namespace

Chart::Chart(const QString& name) : view_(new QChartView) {
    setObjectName(name);
    setFixedHeight(px(chart_height));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    view_->setRenderHint(QPainter::Antialiasing);
    view_->setFocusPolicy(Qt::NoFocus);
    view_->setFrameShape(QFrame::NoFrame);
    column->addWidget(view_);
}

void Chart::show_table(const reports::Table& table) {
    setVisible(!table.rows.empty());
    if (table.rows.empty()) return;
    auto* chart = new QChart;
    chart->setMargins({px(4), px(2), px(4), px(2)});
    chart->setBackgroundRoundness(px(8));
    chart->setBackgroundBrush(QColor(colour::paper));
    chart->legend()->hide();
    const std::size_t count = table.is_in_time ? table.rows.size() : std::min(table.rows.size(), most_names);
    auto* set = new QBarSet(QString());
    set->setColor(QColor(colour::focus));
    set->setBorderColor(QColor(colour::focus));
    QStringList marks;
    // The axis runs from the left, so the first row is added last.
    for (std::size_t i = count; i-- > 0;) {
        *set << table.rows[i].figures[table.charted];
        marks << mark_of(table.rows[i], i, count <= most_marked);
    }
    auto* series = new QBarSeries;
    series->append(set);
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
    connect(set, &QBarSet::clicked, this,
            [this, count](int at) { emit row_taken(static_cast<int>(count) - 1 - at); });
    QChart* former = view_->chart();
    view_->setChart(chart);
    delete former;
}

}  // namespace ui
