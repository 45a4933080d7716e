#include "ui/figure_ledger.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>

#include "ui/colours.h"
#include "ui/fields.h"
#include "ui/style.h"

namespace ui {

namespace {

constexpr int side = 10;       // from the edge of a cell to its text
constexpr int sign_room = 18;  // for the sign before the caption
constexpr int cell_height = 28;

}  // namespace

FigureCell::FigureCell(const QString& name, const QString& sign, const QString& caption, Kind kind)
    : sign_(sign), caption_(caption), kind_(kind) {
    setObjectName(name);
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFixedHeight(px(kind == Kind::total ? cell_height + 6 : cell_height));
    setToolTip(caption);
    QFont font = this->font();
    font.setPixelSize(px(14));
    if (kind == Kind::total) font.setBold(true);
    setFont(font);
}

QFont FigureCell::figure_font() const {
    QFont larger = font();
    larger.setPixelSize(px(kind_ == Kind::total && width() >= px(260) ? 18 : 16));
    return larger;
}

void FigureCell::show_figure(const QString& text) {
    setText(text);
    setAccessibleName(caption_ + " " + text);
    update();
}

int FigureCell::needed_width() const {
    return QFontMetrics(figure_font()).horizontalAdvance(text());
}

void FigureCell::set_figure_width(int width) {
    figure_width_ = width;
    updateGeometry();
    update();
}

QSize FigureCell::sizeHint() const {
    return {px(2 * side + sign_room + 6) + fontMetrics().horizontalAdvance(caption_) + figure_width_,
            height()};
}

void FigureCell::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
        case Qt::Key_End:
            emit walk(event->key());
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            click();
            break;
        default:
            event->ignore();
    }
}

void FigureCell::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    emit focused();
    update();
}

void FigureCell::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    update();
}

void FigureCell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool total = kind_ == Kind::total;
    if (hasFocus()) {
        painter.setPen(QPen(QColor(colour::focus), px(2)));
        painter.setBrush(QColor(colour::current));
        const double half = px(2) / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), px(6), px(6));
    } else if (total) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(colour::strip));
        painter.drawRoundedRect(rect(), px(6), px(6));
    } else {
        painter.setPen(QColor(colour::cap));
        painter.drawLine(px(side), height() - 1, width() - px(side), height() - 1);
    }
    QRect inside = rect().adjusted(px(side), 0, -px(side), 0);
    painter.setPen(QColor(colour::quiet));
    painter.setFont(font());
    painter.drawText(QRect(inside.right() - px(sign_room), 0, px(sign_room), height()),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, sign_);
    // A figure of nothing stands back, so that the day's movements are seen at a glance.
    const bool nothing = text() == "0.00" && !total;
    const QRect captioned(inside.left() + figure_width_ + px(6), 0,
                          inside.width() - figure_width_ - px(6 + sign_room), height());
    if (painter.fontMetrics().horizontalAdvance(caption_) > captioned.width()) {
        QFont smaller = font();
        smaller.setPixelSize(px(12));
        painter.setFont(smaller);
    }
    painter.setPen(QColor(kind_ == Kind::carried ? colour::quiet : colour::ink));
    painter.drawText(captioned,
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextForceRightToLeft,
                     painter.fontMetrics().elidedText(caption_, Qt::ElideRight, captioned.width()));
    painter.setFont(figure_font());
    const auto ink = text().startsWith('-')              ? colour::alarm
                     : nothing || kind_ == Kind::carried ? colour::quiet
                                                         : colour::ink;
    painter.setPen(QColor(ink));
    painter.drawText(QRect(inside.left(), 0, figure_width_, height()),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextForceLeftToRight,
                     text());
}

FigureLedger::FigureLedger(const QString& name, const std::vector<LedgerColumn>& columns) {
    setObjectName(name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    for (const LedgerColumn& groups : columns) {
        const std::size_t column = columns_.size();
        columns_.emplace_back();
        auto* stack = new QVBoxLayout;
        stack->setSpacing(0);
        for (const LedgerGroup& group : groups) {
            if (&group != &groups.front()) stack->addSpacing(px(8));
            QLabel* title = label(group.title, "caption");
            title->setContentsMargins(px(side), 0, px(side), px(4));
            stack->addWidget(title);
            for (const LedgerEntry& entry : group.entries) {
                if (entry.kind == FigureCell::Kind::total) {
                    stack->addSpacing(px(5));
                    stack->addStretch(1);
                }
                auto* cell = new FigureCell(entry.name, entry.sign, entry.caption, entry.kind);
                stack->addWidget(cell);
                const std::size_t at = columns_[column].size();
                columns_[column].push_back({entry.id, cell});
                connect(cell, &FigureCell::walk, this,
                        [this, column, at](int key) { walk(column, at, key); });
                connect(cell, &FigureCell::focused, this, [this, cell] { make_current(cell); });
                connect(cell, &QAbstractButton::clicked, this, [this, id = entry.id] { emit opened(id); });
            }
        }
        if (groups.back().entries.back().kind != FigureCell::Kind::total) stack->addStretch(1);
        row->addLayout(stack, 1);
    }
}

void FigureLedger::show_figure(int id, const QString& text) {
    for (const auto& column : columns_) {
        for (const Placed& placed : column) {
            if (placed.id == id) placed.cell->show_figure(text);
        }
    }
}

void FigureLedger::align_figures() {
    for (const auto& column : columns_) {
        int width = px(60);
        for (const Placed& placed : column)
            width = std::max(width, placed.cell->needed_width() + px(2));
        for (const Placed& placed : column)
            placed.cell->set_figure_width(width);
    }
}

void FigureLedger::take_focus(int id) {
    FigureCell* wanted = current_;
    for (const auto& column : columns_) {
        for (const Placed& placed : column) {
            if (wanted == nullptr && placed.id == id) wanted = placed.cell;
        }
    }
    if (wanted != nullptr) wanted->setFocus(Qt::OtherFocusReason);
}

// Tab comes to one figure of the ledger and goes on from there; the arrows do the rest.
void FigureLedger::make_current(FigureCell* cell) {
    if (current_ != nullptr) current_->setFocusPolicy(Qt::ClickFocus);
    current_ = cell;
    current_->setFocusPolicy(Qt::StrongFocus);
}

void FigureLedger::walk(std::size_t column, std::size_t row, int key) {
    const auto& here = columns_[column];
    FigureCell* to = nullptr;
    if (key == Qt::Key_Home) to = columns_.front().front().cell;
    if (key == Qt::Key_End) to = columns_.back().back().cell;
    if (key == Qt::Key_Up) {
        if (row == 0) {
            emit left_upwards();
            return;
        }
        to = here[row - 1].cell;
    }
    if (key == Qt::Key_Down) {
        if (row + 1 == here.size()) {
            emit left_downwards();
            return;
        }
        to = here[row + 1].cell;
    }
    // The columns begin at the right.
    const bool onward = key == Qt::Key_Left;
    if (onward || key == Qt::Key_Right) {
        if (onward ? column + 1 == columns_.size() : column == 0) return;
        const int y = here[row].cell->geometry().center().y();
        const auto& there = columns_[onward ? column + 1 : column - 1];
        to = std::min_element(there.begin(), there.end(), [y](const Placed& a, const Placed& b) {
                 return std::abs(a.cell->geometry().center().y() - y) <
                        std::abs(b.cell->geometry().center().y() - y);
             })->cell;
    }
    if (to != nullptr) to->setFocus(Qt::TabFocusReason);
}

}  // namespace ui
