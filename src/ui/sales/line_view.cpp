#include "ui/sales/line_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <array>

#include "sales/invoice.h"
#include "ui/sales/line_delegate.h"
#include "ui/sales/line_model.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

namespace column = sales::column;

bool can_be_edited(int source) {
    return source >= column::quantity && source <= column::discount_percent;
}

constexpr auto empty_text = "اكتب كود الصنف أو مرر الباركود · Ctrl F للبحث بالاسم";

// Widths of the shown columns on a wide and on a narrow screen; the name takes what is left.
constexpr std::array<int, LineModel::shown_count> wide = {36, 68, 0, 128, 82, 84, 74, 74, 92, 80};
constexpr std::array<int, LineModel::shown_count> narrow = {32, 58, 0, 0, 68, 70, 74, 74, 78, 70};

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
    verticalHeader()->setDefaultSectionSize(px(53));
    horizontalHeader()->setFixedHeight(px(45));
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(px(20));
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    setProperty(empty_property, empty_text);
    // Tab passes by a grid without lines.
    const auto follow = [this] {
        setFocusPolicy(this->model()->rowCount() > 0 ? Qt::StrongFocus : Qt::ClickFocus);
    };
    connect(model, &QAbstractItemModel::rowsInserted, this, follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, follow);
    follow();
}

void LineView::set_ground(const QColor& environment) {
    static_cast<LineDelegate*>(itemDelegate())->set_ground(environment);
    environment_ = environment;
    viewport()->update();
}

void LineView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), environment_);
    if (model()->rowCount() == 0) {
        painter.setPen(QColor(colour::quiet));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, empty_text);
    }
    painter.end();
    QTableView::paintEvent(event);
}

void LineView::set_widths() {
    const auto& widths = width() >= px(880) ? wide : narrow;
    for (int at = 0; at < LineModel::shown_count; ++at) {
        if (at != 2) setColumnWidth(at, px(widths[static_cast<std::size_t>(at)]));
    }
    // On a narrow screen the name needs the place more than the group, which the search shows as well.
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
    setTabOrder(this, field_);  // from the cell Tab leads on as from the grid
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
    if (!text.isEmpty() && (text.front().isDigit() || text == "." || text == "٫")) {
        want_edit(text);
        return;
    }
    QTableView::keyPressEvent(event);
}

// The frame around the grid shows the focus, besides the cell.
void LineView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    light_frame(true);
}

void LineView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    light_frame(false);
}

void LineView::light_frame(bool lit) {
    QWidget* frame = parentWidget();
    frame->setProperty("lit", lit);
    frame->style()->unpolish(frame);
    frame->style()->polish(frame);
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
    // The frame around the grid has round corners; the heading and the lines keep within them.
    QPainterPath rounded;
    rounded.addRoundedRect(QRectF(rect()), px(7), px(7));
    setMask(QRegion(rounded.toFillPolygon().toPolygon()));
    if (field_ != nullptr) {
        field_->setGeometry(visualRect(model()->index(edited_row_, LineModel::shown_column(edited_column_))));
    }
}

bool LineView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_) {
        // Taken here, because a field passes Enter on to the grid below it, which would open the cell again.
        if (event->type() == QEvent::KeyPress) {
            switch (static_cast<QKeyEvent*>(event)->key()) {
                case Qt::Key_Escape:
                    close_cell();
                    emit edit_cancelled();
                    return true;
                case Qt::Key_Return:
                case Qt::Key_Enter:
                    commit(true);
                    return true;
                default:
                    break;
            }
        }
        // Leaving the field commits it; a box or the window losing the focus does not.
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
