#include "ui/cash/figure_ledger.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>

#include "cash/figures.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int side = 10;       // from the edge of a cell to its text
constexpr int sign_room = 18;  // for the sign before the caption
constexpr int gap = 6;         // between caption and figure

}  // namespace

FigureCell::FigureCell(const QString& name, const QString& sign, const QString& caption, Kind kind)
    : sign_(sign), caption_(caption), kind_(kind), caption_pixels_(px(14)), figure_pixels_(px(16)) {
    setObjectName(name);
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFixedHeight(px(least_target));
    setToolTip(caption);
    setAccessibleName(caption);
}

QFont FigureCell::sized(int pixels) const {
    QFont font = this->font();
    font.setPixelSize(pixels);
    font.setBold(kind_ == Kind::total);
    return font;
}

void FigureCell::show_figure(const QString& text) {
    setText(text);
    setAccessibleDescription(text);
    update();
}

int FigureCell::figure_width(int figure_pixels) const {
    return QFontMetrics(sized(figure_pixels)).horizontalAdvance(text());
}

int FigureCell::caption_width(int caption_pixels) const {
    return QFontMetrics(sized(caption_pixels)).horizontalAdvance(caption_);
}

int FigureCell::caption_room(int cell_width, int figure_width) {
    return cell_width - px(2 * side) - px(sign_room) - px(gap) - figure_width;
}

void FigureCell::set_measures(int caption_pixels, int figure_pixels, int figure_width) {
    caption_pixels_ = caption_pixels;
    figure_pixels_ = figure_pixels;
    figure_width_ = figure_width;
    update();
}

QSize FigureCell::sizeHint() const {
    return {px(120), height()};
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
    painter.setFont(sized(caption_pixels_));
    painter.drawText(QRect(inside.right() - px(sign_room), 0, px(sign_room), height()),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, sign_);
    // Zeros are painted pale, so that the day's movements are seen at a glance.
    const bool nothing = text() == "0.00" && !total;
    const QRect captioned(inside.left() + figure_width_ + px(gap), 0, caption_room(width(), figure_width_),
                          height());
    painter.setPen(QColor(kind_ == Kind::carried ? colour::quiet : colour::ink));
    painter.drawText(captioned,
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextForceRightToLeft,
                     painter.fontMetrics().elidedText(caption_, Qt::ElideRight, captioned.width()));
    painter.setFont(sized(kind_ == Kind::total ? figure_pixels_ + px(1) : figure_pixels_));
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
                    stack->addSpacing(px(2));
                    stack->addStretch(1);
                }
                auto* cell = new FigureCell(entry.name, entry.sign, entry.caption, entry.kind);
                stack->addWidget(cell);
                const std::size_t at = columns_[column].size();
                columns_[column].push_back({entry.id, cell});
                if (current_ == nullptr && entry.kind != FigureCell::Kind::carried) make_current(cell);
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
    for (const auto& column : columns_)
        align_column(column);
}

// If a column's widest caption does not fit beside its widest figure, all captions of the column become
// smaller, then its figures.
void FigureLedger::align_column(const std::vector<Placed>& column) {
    constexpr std::pair<int, int> sizes[] = {{14, 16}, {13, 16}, {12, 15}, {12, 14}, {11, 13}};
    for (const auto& [caption, figure] : sizes) {
        int figure_width = px(60);
        int caption_width = 0;
        for (const Placed& placed : column) {
            // A total is written one size larger.
            figure_width = std::max(figure_width, placed.cell->figure_width(px(figure) + px(1)) + px(2));
            caption_width = std::max(caption_width, placed.cell->caption_width(px(caption)));
        }
        for (const Placed& placed : column)
            placed.cell->set_measures(px(caption), px(figure), figure_width);
        if (caption_width <= FigureCell::caption_room(column.front().cell->width(), figure_width)) return;
    }
}

void FigureLedger::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The cells have their new widths once the layout has been carried out.
    layout()->activate();
    align_figures();
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

// Tab stops at one figure of the ledger only; the arrows move between figures.
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

namespace {

using Kind = FigureCell::Kind;

LedgerEntry figure(cash::Figure figure, const char* name, const char* sign, Kind kind = Kind::plain) {
    const auto column = static_cast<std::size_t>(figure);
    return {static_cast<int>(column), name, sign, qt(cash::figure_headings[column]), kind};
}

LedgerEntry sum(std::size_t column, const char* sign, Kind kind = Kind::plain) {
    const QString name = kind == Kind::carried ? QString() : "summary_" + QString::number(column);
    return {static_cast<int>(column), name, sign, qt(cash::summary_headings[column]), kind};
}

}  // namespace

// Each column adds up, with the signs shown, to the total at its foot. Account invoices move no cash and
// stand apart.
std::vector<LedgerColumn> statement_ledger(bool with_discounts) {
    using cash::Figure;
    std::vector<LedgerEntry> sales = {
        figure(Figure::cash_sales, "figure_cash_sales", "+"),
        figure(Figure::card_sales, "figure_card_sales", "−"),
        figure(Figure::tips, "figure_tips", "−"),
        figure(Figure::coupons, "figure_coupons", "−"),
        figure(Figure::uncollected, "figure_uncollected", "−"),
        figure(Figure::cash_returns, "figure_cash_returns", "−"),
        figure(Figure::surplus, "figure_surplus", "+"),
    };
    if (with_discounts) {
        sales.push_back(figure(Figure::discounts, "figure_discounts", "−"));
        sales.push_back(figure(Figure::returned_discounts, "figure_returned_discounts", "+"));
    }
    sales.push_back(figure(Figure::net_cash, "figure_net_cash", "=", Kind::total));
    return {
        {{"المبيعات النقدية", std::move(sales)}},
        {{"الإيداعات",
          {figure(Figure::net_cash, "", "+", Kind::carried), figure(Figure::receipts, "figure_receipts", "+"),
           figure(Figure::transfers_in, "figure_transfers_in", "+"),
           figure(Figure::from_bank, "figure_from_bank", "+"),
           figure(Figure::deposits, "figure_deposits", "+"),
           figure(Figure::total_deposits, "figure_total_deposits", "=", Kind::total)}}},
        {{"المصروفات",
          {figure(Figure::payments, "figure_payments", "+"),
           figure(Figure::transfers_out, "figure_transfers_out", "+"),
           figure(Figure::to_bank, "figure_to_bank", "+"), figure(Figure::expenses, "figure_expenses", "+"),
           figure(Figure::withdrawals, "figure_withdrawals", "+"),
           figure(Figure::shortage, "figure_shortage", "+"),
           figure(Figure::total_outgoings, "figure_total_outgoings", "=", Kind::total)}}},
        {{"آجل (خارج الخزينة)",
          {figure(Figure::account_sales, "figure_account_sales", ""),
           figure(Figure::account_returns, "figure_account_returns", "")}},
         {"الرصيد",
          {figure(Figure::net, "figure_net", "+"),
           figure(Figure::previous_balance, "figure_previous_balance", "+"),
           figure(Figure::current_balance, "figure_current_balance", "=", Kind::total)}}},
    };
}

std::vector<LedgerColumn> summary_ledger(bool with_discounts) {
    std::vector<LedgerEntry> net = {sum(4, "+", Kind::carried), sum(6, "−"), sum(7, "−"), sum(8, "+"),
                                    sum(9, "−")};
    if (with_discounts) {
        net.push_back(sum(11, "−"));
        net.push_back(sum(12, "+"));
    }
    net.push_back(sum(10, "=", Kind::total));
    return {
        {{"المبيعات", {sum(4, "+"), sum(3, "+"), sum(2, "+"), sum(1, "=", Kind::total)}}},
        {{"النقدية", std::move(net)}},
        {{"اليوم", {sum(0, ""), sum(5, "")}}},
    };
}

}  // namespace ui
