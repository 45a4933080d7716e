#include "ui/sales/line_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

#include "sales/invoice.h"
#include "sales/sales_desk.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"
#include "ui/widgets/whole_rows.h"

namespace ui {

namespace {

namespace column = sales::column;

constexpr std::array<int, LineModel::shown_count> shown = {
    column::number,           column::code,     column::name,   column::group,
    column::unit_name,        column::quantity, column::price,  column::discount_value,
    column::discount_percent, column::total,    column::balance};

bool waits_for_typing(const sales::Line& line, int source) {
    const bool discount = source == column::discount_value || source == column::discount_percent;
    if (line.is_general()) return discount || source == column::quantity || source == column::price;
    return line.marked && discount;
}

}  // namespace

LineModel::LineModel(const sales::SalesDesk& desk, QObject* parent)
    : QAbstractTableModel(parent), desk_(desk) {}

int LineModel::source_column(int at) {
    return at < 0 || at >= shown_count ? -1 : shown[static_cast<std::size_t>(at)];
}

int LineModel::shown_column(int source) {
    for (int at = 0; at < shown_count; ++at) {
        if (shown[static_cast<std::size_t>(at)] == source) return at;
    }
    return -1;
}

void LineModel::refresh() {
    const int now = static_cast<int>(desk_.invoice().lines.size());
    if (now > rows_) {
        beginInsertRows({}, rows_, now - 1);
        rows_ = now;
        endInsertRows();
    } else if (now < rows_) {
        beginRemoveRows({}, now, rows_ - 1);
        rows_ = now;
        endRemoveRows();
    }
    if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, shown_count - 1));
}

int LineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}
int LineModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_count;
}

QVariant LineModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    // Until refresh() runs after an action, the invoice may be shorter than the grid.
    if (!index.isValid() || row >= desk_.invoice().lines.size()) return {};
    const int source = source_column(index.column());
    if (role == open_role) return waits_for_typing(desk_.invoice().lines[row], source);
    if (role == Qt::DisplayRole) {
        const QString text = qt(desk_.invoice().cells(row)[static_cast<std::size_t>(source)]);
        const sales::Line& line = desk_.invoice().lines[row];
        if (source != column::name || line.source_kind != sales::SourceKind::other_store) return text;
        return text + " (من " + qt(common::name_of(desk_.lists().stores, line.source_store)) + ")";
    }
    return {};
}

QVariant LineModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return qt(sales::line_heading(source_column(section)));
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return {};
}

namespace {

namespace column = sales::column;

bool can_be_edited(int source) {
    return source >= column::quantity && source <= column::discount_percent;
}

constexpr auto empty_text = "اكتب كود الصنف أو مرر الباركود · Ctrl F للبحث بالاسم";

// Widths of the shown columns on a wide and a narrow screen; the name takes the rest.
constexpr std::array<int, LineModel::shown_count> wide_columns = {36, 68, 0, 112, 60, 78, 82, 72, 72, 92, 80};
constexpr std::array<int, LineModel::shown_count> narrow_columns = {30, 54, 0, 0, 54, 64, 64, 70, 70, 74, 66};

// The number of characters in the whole words that fit a width; at least the first word.
qsizetype fitting(const QString& text, const QFontMetrics& metrics, int width) {
    qsizetype taken = -1;
    for (qsizetype blank = text.indexOf(' '); blank >= 0; blank = text.indexOf(' ', blank + 1)) {
        if (taken >= 0 && metrics.horizontalAdvance(text.left(blank)) > width) break;
        taken = blank;
    }
    return taken < 0 ? text.size() : taken;
}

constexpr double smallest = 9;      // pixels of the 1366×768 screen
constexpr double blank_before = 4;  // beside a figure
constexpr double blank_behind = 10;

QFont fitted(QFont font, const QString& text, int width) {
    while (font.pixelSize() > px(smallest) && QFontMetrics(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

// Paints a long name in two lines; an even longer one is cut.
void paint_two_lines(QPainter& painter, const QFont& font, const QString& text, const QRect& place) {
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const qsizetype first = fitting(text, metrics, place.width());
    const int middle = place.center().y();
    const auto draw = [&](int top, const QString& part) {
        painter.drawText(QRect(place.left(), top, place.width(), metrics.height()),
                         Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                         metrics.elidedText(part, Qt::ElideRight, place.width()));
    };
    draw(middle - std::min(metrics.height(), place.height() / 2), text.left(first).trimmed());
    draw(middle, text.mid(first).trimmed());
}

// Paints a cell of the grid.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    // The width of the text in the smallest font.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    void set_background(const QColor& colour) { background_ = colour; }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    QColor background_;
};

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QFont font = option.font;
    font.setPixelSize(px(smallest));
    return {
        QFontMetrics(font).horizontalAdvance(index.data().toString()) + px(blank_before) + px(blank_behind),
        option.fontMetrics.height()};
}

void LineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    const bool current_row = view != nullptr && view->currentIndex().row() == index.row();
    const QColor open_background = colour::from_blue_first(sales::colour_editable_cell);
    // Cells that wait for a value show it on the current row too.
    const QColor background = index.data(LineModel::open_role).toBool() ? open_background
                              : current_row                             ? QColor(colour::current)
                                                                        : background_;
    painter->save();
    painter->fillRect(option.rect, background);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      background_.darker(108));
    const int column = LineModel::source_column(index.column());
    const QString text = index.data(Qt::DisplayRole).toString();
    const QRect place = option.rect.adjusted(px(blank_before), 0, -px(blank_behind), 0);
    const int right = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
    const bool narrow = view != nullptr && view->width() < px(880);
    const bool compact = view != nullptr && view->property(compact_property).toBool();
    const double size = narrow || compact ? 15 : 17;
    QFont font = option.font;
    font.setPixelSize(px(column == sales::column::group ? 14 : size));
    painter->setPen(QColor(column == sales::column::group ? colour::slate : colour::ink));
    painter->setFont(font);
    if (column == sales::column::name || column == sales::column::group) {
        painter->setLayoutDirection(Qt::RightToLeft);
        const QFontMetrics one_line(font);
        if (column == sales::column::group || compact || one_line.horizontalAdvance(text) <= place.width()) {
            painter->drawText(place, right | Qt::TextSingleLine,
                              one_line.elidedText(text, Qt::ElideRight, place.width()));
        } else {
            font.setPixelSize(px(narrow ? 13 : 14));
            paint_two_lines(*painter, font, text, place);
        }
    } else {
        // Digits are never cut off: long figures get a smaller font.
        font = fitted(font, text, place.width());
        painter->setFont(font);
        painter->setLayoutDirection(Qt::LeftToRight);
        painter->drawText(place, right | Qt::TextSingleLine, text);
    }
    if (view != nullptr && view->hasFocus() && view->currentIndex() == index) {
        painter->setPen(QPen(QColor(colour::focus), px(2)));
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

}  // namespace

LineView::LineView(LineModel* model, QWidget* parent) : QTableView(parent) {
    setObjectName("lines");
    setProperty(keys_property, keys_no_scans);
    setModel(model);
    setItemDelegate(new LineDelegate(this));
    setShowGrid(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);  // compact rows are lower than the style's
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(px(20));
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    setProperty(empty_property, empty_text);
    // Tab skips a grid without lines.
    const auto follow = [this] {
        setFocusPolicy(this->model()->rowCount() > 0 ? Qt::StrongFocus : Qt::ClickFocus);
        set_heights();
    };
    connect(model, &QAbstractItemModel::rowsInserted, this, follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, follow);
    follow();
}

void LineView::set_background(const QColor& background) {
    static_cast<LineDelegate*>(itemDelegate())->set_background(background);
    background_ = background;
    viewport()->update();
}

void LineView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), background_);
    if (model()->rowCount() == 0 && viewport()->height() > painter.fontMetrics().height()) {
        painter.setPen(QColor(colour::quiet));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, empty_text);
    }
    painter.end();
    QTableView::paintEvent(event);
}

void LineView::set_compact(bool compact) {
    if (compact == property(compact_property).toBool()) return;
    setProperty(compact_property, compact);
    set_heights();
    if (currentIndex().isValid()) scrollTo(currentIndex());
}

// Compact rows are low enough for 15 of them on a plain sale.
void LineView::set_heights() {
    const bool compact = property(compact_property).toBool();
    const int row = px(compact ? 26 : 53);
    const int headings = px(compact ? 28 : 45);
    setMinimumHeight(headings + std::min(model()->rowCount(), compact ? 2 : 1) * row);
    show_whole_rows(this, row, headings);
}

void LineView::set_widths() {
    const auto& widths = width() >= px(880) ? wide_columns : narrow_columns;
    for (int at = 0; at < LineModel::shown_count; ++at) {
        if (at != 2) setColumnWidth(at, px(widths[static_cast<std::size_t>(at)]));
    }
    // On a narrow screen the name needs the space more than the group, which the search shows as well.
    setColumnHidden(LineModel::shown_column(column::group), width() < px(880));
}

void LineView::show_current(int row) {
    quiet_ = true;
    const int at =
        currentIndex().isValid() ? currentIndex().column() : LineModel::shown_column(column::quantity);
    setCurrentIndex(row < 0 ? QModelIndex() : model()->index(row, at));
    if (row >= 0) scrollTo(currentIndex());
    quiet_ = false;
}

void LineView::open_cell(int row, int source, const QString& value) {
    close_cell();
    const QModelIndex cell = model()->index(row, LineModel::shown_column(source));
    show_current(row);
    quiet_ = true;
    setCurrentIndex(cell);
    quiet_ = false;
    scrollTo(cell);
    field_ = new AmountField("cell_edit", viewport());
    set_role(field_, "celledit");
    field_->setGeometry(visualRect(cell));
    field_->setText(value.isEmpty() ? cell.data().toString() : value);
    field_->installEventFilter(this);
    edited_row_ = row;
    edited_column_ = source;
    field_->show();
    setTabOrder(this, field_);  // Tab leads on from the cell as from the grid
    field_->setFocus();
    field_->selectAll();
}

void LineView::close_cell() {
    if (field_ == nullptr) return;
    AmountField* closing = field_;
    field_ = nullptr;
    closing->removeEventFilter(this);
    closing->hide();
    closing->deleteLater();
}

void LineView::commit(bool by_enter) {
    if (field_ == nullptr) return;
    const QString text = field_->text();
    close_cell();
    emit committed(edited_row_, edited_column_, text, by_enter);
}

void LineView::want_edit(const QString& first) {
    const int source = LineModel::source_column(currentIndex().column());
    if (currentIndex().isValid() && source == column::unit_name && first.isEmpty()) emit next_unit_wanted();
    if (currentIndex().isValid() && can_be_edited(source))
        emit edit_wanted(currentIndex().row(), source, first);
}

void LineView::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            want_edit({});
            return;
        case Qt::Key_Delete:
            if (currentIndex().isValid()) emit delete_wanted(currentIndex().row());
            return;
        case Qt::Key_Escape:
            emit left();
            return;
        case Qt::Key_Up:
            if (currentIndex().row() <= 0) {
                emit left();
                return;
            }
            break;
        case Qt::Key_F1:
        case Qt::Key_F2:
            event->ignore();
            return;
        default:
            break;
    }
    // A minus or comma stays with the number behind it, which is then refused; without it the number would be
    // a different one.
    if (!text.isEmpty() && (text.front().isDigit() || QStringLiteral(".٫-,،٬").contains(text))) {
        want_edit(text);
        return;
    }
    QTableView::keyPressEvent(event);
}

// The frame around the grid shows the focus too.
void LineView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    set_state(parentWidget(), "lit", true);
}

void LineView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    set_state(parentWidget(), "lit", false);
}

void LineView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    want_edit({});
}

void LineView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update();
    if (!quiet_ && current.isValid() && current.row() != previous.row()) emit row_chosen(current.row());
}

void LineView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    set_widths();
    set_heights();
    // The frame around the grid has round corners. Clip the grid to them.
    QPainterPath rounded;
    rounded.addRoundedRect(QRectF(rect()), px(7), px(7));
    setMask(QRegion(rounded.toFillPolygon().toPolygon()));
    if (field_ != nullptr) {
        field_->setGeometry(visualRect(model()->index(edited_row_, LineModel::shown_column(edited_column_))));
    }
}

bool LineView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_) {
        // Handled here, because the field would pass Enter on to the grid, which would open the cell again.
        if (event->type() == QEvent::KeyPress) {
            switch (static_cast<QKeyEvent*>(event)->key()) {
                case Qt::Key_Escape:
                    close_cell();
                    emit edit_cancelled(edited_row_);
                    return true;
                case Qt::Key_Return:
                case Qt::Key_Enter:
                    commit(true);
                    return true;
                default:
                    break;
            }
        }
        // Moving the focus away commits the value; a box, or another window, does not.
        if (event->type() == QEvent::FocusOut) {
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
                reason == Qt::BacktabFocusReason) {
                QMetaObject::invokeMethod(
                    this, [this] { commit(false); }, Qt::QueuedConnection);
            }
        }
    }
    return QTableView::eventFilter(watched, event);
}

}  // namespace ui
