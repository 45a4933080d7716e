#include "ui/widgets/list_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <array>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_model.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"
#include "ui/widgets/whole_rows.h"

namespace ui {

namespace {

// The stretched column gets at least the first, and room for its texts up to the second, at 96 dots an inch.
constexpr int least_stretched = 100;
constexpr int most_stretched = 170;
// The heights of headings on one line and on two.
constexpr int one_heading = 34;
constexpr int two_headings = 58;

// Guesses the widest texts of a column from the widths of their letters. Laying out every text would take
// most of the time that a list needs to open.
class WidestTexts {
  public:
    explicit WidestTexts(const QFontMetrics& metrics) : metrics_(metrics), widths_(0x10000, -1) {}

    std::array<int, 4> rows_of(const std::vector<QStringList>& rows, int column) {
        std::array<std::pair<int, int>, 4> widest;
        widest.fill({-1, -1});
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const std::pair<int, int> next{width_of(rows[row].value(column)), static_cast<int>(row)};
            if (next.first <= widest.back().first) continue;
            widest.back() = next;
            std::sort(widest.rbegin(), widest.rend());
        }
        std::array<int, 4> found;
        std::transform(widest.begin(), widest.end(), found.begin(), [](const auto& of) { return of.second; });
        return found;
    }

  private:
    int width_of(const QString& text) {
        int sum = 0;
        for (const QChar letter : text) {
            int& width = widths_[letter.unicode()];
            if (width < 0) width = metrics_.horizontalAdvance(letter);
            sum += width;
        }
        return sum;
    }
    QFontMetrics metrics_;
    std::vector<int> widths_;
};

}  // namespace

ListTable::ListTable(const QString& name, const QStringList& headings, int stretch, QWidget* parent)
    : QTableView(parent), model_(new ListModel(headings, this)) {
    setObjectName(name);
    set_role(this, "sheet");
    setModel(model_);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(px(least_target));
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(stretch, QHeaderView::Stretch);
    horizontalHeader()->setMinimumSectionSize(px(70));
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& cell) { emit row_taken(model_->row_at(cell.row())); });
}

void ListTable::show_rows(std::vector<QStringList> rows) {
    model_->replace(std::move(rows));
    if (isVisible()) measure_columns();
    choose_first();
}

void ListTable::narrow(const std::function<bool(int row)>& fits) {
    model_->narrow(fits);
    choose_first();
}

int ListTable::shown_count() const {
    return model_->rowCount();
}

int ListTable::current_row() const {
    return model_->row_at(currentIndex().row());
}

void ListTable::choose_row(int row) {
    setCurrentIndex(model_->index(model_->place_of(row), 0));
}

void ListTable::choose_first() {
    setCurrentIndex(model_->index(0, 0));
}

void ListTable::set_look(std::function<CellLook(int row, int column)> look) {
    model_->set_look(std::move(look));
}

void ListTable::say_when_empty(const QString& text) {
    setProperty(empty_property, text);
    viewport()->update();
}

// The font is known when the list is shown.
void ListTable::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    measure_columns();
}

void ListTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    set_widths();
}

// A column is as wide as its heading or its widest text.
void ListTable::measure_columns() {
    const QHeaderView* header = horizontalHeader();
    WidestTexts texts(fontMetrics());
    columns_.assign(static_cast<std::size_t>(model_->columnCount()), {});
    const auto heading_of = [&](int column) {
        return std::max(header->sectionSizeHint(column), header->minimumSectionSize());
    };
    model_->break_headings(std::vector<bool>(columns_.size(), true));
    for (int column = 0; column < model_->columnCount(); ++column)
        columns_[static_cast<std::size_t>(column)].broken_heading = heading_of(column);
    model_->break_headings(std::vector<bool>(columns_.size(), false));
    for (int column = 0; column < model_->columnCount(); ++column) {
        Column& of = columns_[static_cast<std::size_t>(column)];
        of.heading = heading_of(column);
        of.is_stretched = header->sectionResizeMode(column) == QHeaderView::Stretch;
        for (const int row : texts.rows_of(model_->rows(), column)) {
            const int place = model_->place_of(row);
            if (place < 0) continue;
            of.cells = std::max(of.cells, sizeHintForIndex(model_->index(place, column)).width());
            of.is_of_figures |= is_figure(model_->rows()[static_cast<std::size_t>(row)].value(column));
        }
    }
    set_widths();
}

int ListTable::Column::wanted() const {
    return is_stretched ? std::clamp(cells, px(least_stretched), px(most_stretched))
                        : std::max(heading, cells);
}

// If the columns do not fit, headings go on two lines, and columns of texts wider than a third of the table
// give up what is missing, and no more.
void ListTable::set_widths() {
    const int width = viewport()->width();
    int all = 0;
    for (int at = 0; at < static_cast<int>(columns_.size()); ++at)
        if (!isColumnHidden(at)) all += columns_[static_cast<std::size_t>(at)].wanted();
    const int missing = std::max(all - width, 0);
    std::vector<bool> is_broken(static_cast<std::size_t>(model_->columnCount()), false);
    for (std::size_t at = 0; at < columns_.size(); ++at) {
        const Column& column = columns_[at];
        if (column.is_stretched) continue;
        const int cells = column.is_of_figures ? column.cells : std::min(column.cells, width / 3);
        const int least = std::max(column.broken_heading, cells);
        const int given = std::max(least, column.wanted() - missing);
        is_broken[at] = given < column.heading;
        horizontalHeader()->resizeSection(static_cast<int>(at), given);
    }
    const bool any = std::ranges::find(is_broken, true) != is_broken.end();
    model_->break_headings(std::move(is_broken));
    show_whole_rows(this, px(least_target), px(any ? two_headings : one_heading));
}

void ListTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    emit row_chosen(model_->row_at(current.row()));
}

void ListTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (shown_count() > 0) return;
    QPainter painter(viewport());
    painter.setPen(QColor(colour::quiet));
    const int side = px(24);
    painter.drawText(viewport()->rect().adjusted(side, 0, -side, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     property(empty_property).toString());
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    const int place = currentIndex().row();
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (place < 0) break;
            emit row_taken(current_row());
            return;
        case Qt::Key_Up:
            if (place > 0) break;
            emit left_upwards();
            return;
        case Qt::Key_Home:
        case Qt::Key_End:
            // The first and the last row, not column.
            setCurrentIndex(model_->index(event->key() == Qt::Key_Home ? 0 : shown_count() - 1, 0));
            return;
        case Qt::Key_Escape:
            event->ignore();  // for the sheet, which closes
            return;
        default:
            break;
    }
    QTableView::keyPressEvent(event);
}

}  // namespace ui
