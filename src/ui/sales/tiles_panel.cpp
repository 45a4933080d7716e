#include "ui/sales/tiles_panel.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "sales/items.h"
#include "sales/sales_desk.h"
#include "ui/sales/search_panel.h"
#include "ui/sales/tile_sheets.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double tile_width = 128;
constexpr double tile_height = 88;
constexpr double small_screen_height = 72;  // with two rows of these, two lines are seen as well
constexpr double low_height = 60;           // where not even one row of the others fits
constexpr double between = 6;
constexpr int most_rows = 3;
constexpr double tab_height = 44;

// Passes the arrows on to the panel, which knows the rows; the scroll area between would take them.
class GridButton : public QPushButton {
  public:
    GridButton(const QString& caption, QWidget* panel) : QPushButton(caption), panel_(panel) {
        setMinimumWidth(px(tile_width));
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down)
            QCoreApplication::sendEvent(panel_, event);
        else
            QPushButton::keyPressEvent(event);
    }
    // The scroll area follows the focus only where it moves within.
    void focusInEvent(QFocusEvent* event) override {
        QPushButton::focusInEvent(event);
        if (auto* scroll = panel_->findChild<QScrollArea*>()) scroll->ensureWidgetVisible(this, 0, 0);
    }

  private:
    QWidget* panel_;
};

// The name on two lines at most, and below it the price, with the unit if it is not the piece.
class TileButton : public GridButton {
  public:
    TileButton(std::size_t at, const sales::Tile& tile, QWidget* panel)
        : GridButton({}, panel), colour_(tile_colour(tile.colour)) {
        setObjectName("tile_" + QString::number(at + 1));
        if (tile.price) price_ = figure(common::format_amount(*tile.price));
        if (tile.unit != 1) price_ = qt(sales::unit_name(tile.unit)) + "  " + price_;
        setEnabled(tile.price.has_value());
        setAccessibleName(qt(tile.name));
        setToolTip(accessibleName());
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(hasFocus() ? colour::focus : colour::edge), px(hasFocus() ? 3 : 1)));
        painter.setBrush(QColor(!isEnabled() ? colour::still : isDown() ? colour::cap : colour_));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), px(8), px(8));
        painter.setPen(QColor(isEnabled() ? colour::ink : colour::off));
        QFont small = font();
        small.setPixelSize(px(14));
        painter.setFont(small);
        const QRect inside = rect().adjusted(px(7), px(4), -px(7), -px(4));
        QRect line(inside.left(), inside.top(), inside.width(), inside.height() / 3);
        for (const QString& text : two_lines(QFontMetrics(small), inside.width())) {
            painter.drawText(line, Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, text);
            line.translate(0, line.height());
        }
        small.setBold(true);
        painter.setFont(small);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, price_);
    }

  private:
    // The first words that fit, and below them the others; a longer name ends with dots.
    QStringList two_lines(const QFontMetrics& metrics, int room) const {
        QStringList rest = accessibleName().split(' ', Qt::SkipEmptyParts);
        QString first;
        while (!rest.isEmpty() && metrics.horizontalAdvance(first + rest.front()) <= room)
            first += rest.takeFirst() + ' ';
        if (first.isEmpty() && !rest.isEmpty()) first = rest.takeFirst();
        return {metrics.elidedText(first.trimmed(), Qt::ElideRight, room),
                metrics.elidedText(rest.join(' '), Qt::ElideRight, room)};
    }

    const char* colour_;
    QString price_;
};

void remove_all(QLayout* layout) {
    while (QLayoutItem* item = layout->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            widget->hide();
            widget->deleteLater();  // one of them may be the button that was pressed
        }
        delete item;
    }
}

}  // namespace

TilesPanel::TilesPanel(sales::SalesDesk& desk, const Context& context, QWidget* before)
    : desk_(desk),
      context_(context),
      before_(before),
      tabs_(new QHBoxLayout),
      scroll_(new QScrollArea),
      area_(new QWidget) {
    setObjectName("tiles_panel");
    set_role(this, "grid");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(px(8), px(6), px(8), px(6));
    column->setSpacing(px(6));
    tabs_->setSpacing(px(between));
    column->addLayout(tabs_);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setWidgetResizable(true);
    scroll_->setWidget(area_);
    area_->setObjectName("tiles");
    set_role(area_, "tiles");
    set_role(scroll_, "tiles");
    auto* grid = new QGridLayout(area_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(px(between));
    column->addWidget(scroll_, 1);
    hide();
}

void TilesPanel::toggle() {
    const QWidget* focus = focusWidget();
    if (isVisible() && focus != nullptr && focus->hasFocus()) {
        close_tiles();
        return;
    }
    end_editing();
    read();
    show();
    show_pages();
    focus_tile(0);
}

void TilesPanel::refresh() {
    if (!isVisible()) return;
    read();
    show_pages();
}

void TilesPanel::read() {
    pages_ = desk_.tiles().pages();
    page_ = std::min(page_, pages_.empty() ? 0 : pages_.size() - 1);
}

QPushButton* TilesPanel::tab(const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setFixedHeight(px(tab_height));
    tabs_->addWidget(button);
    return button;
}

void TilesPanel::show_pages() {
    remove_all(tabs_);
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        QPushButton* button = tab("tile_page_" + QString::number(i + 1), qt(pages_[i].name));
        if (i == page_) set_role(button, "main");
        connect(button, &QPushButton::clicked, this, [this, i] { choose_page(i); });
    }
    if (editing_ && pages_.size() < sales::most_tile_pages)
        connect(tab("tile_page_add", "+ صفحة"), &QPushButton::clicked, this, [this] { edit_page(true); });
    tabs_->addStretch(1);
    connect(tab("tiles_edit", editing_ ? "انتهى التعديل" : "تعديل"), &QPushButton::clicked, this,
            [this] { set_editing(!editing_); });
    connect(tab("tiles_close", "إغلاق"), &QPushButton::clicked, this, &TilesPanel::close_tiles);
    show_tiles();
}

void TilesPanel::show_tiles() {
    auto* grid = static_cast<QGridLayout*>(area_->layout());
    remove_all(grid);
    tiles_.clear();
    columns_ = std::max(1, (width() - px(24)) / px(tile_width + between));
    const auto place = [&](QPushButton* button) {
        const int at = static_cast<int>(tiles_.size());
        grid->addWidget(button, at / columns_, at % columns_);
        tiles_.push_back(button);
    };
    const sales::TilePage* shown = page();
    for (std::size_t i = 0; shown != nullptr && i < shown->tiles.size(); ++i) {
        auto* button = new TileButton(i, shown->tiles[i], this);
        if (editing_) button->setEnabled(true);
        connect(button, &QPushButton::clicked, this, [this, i] { press_tile(i); });
        place(button);
    }
    if (editing_ && shown != nullptr && shown->tiles.size() < sales::most_tiles) {
        auto* add = new GridButton("+ صنف", this);
        add->setObjectName("tile_add");
        connect(add, &QPushButton::clicked, this, &TilesPanel::add_tile);
        place(add);
    }
    if (tiles_.empty()) {
        auto* empty = label(editing_ ? "اضغط + صفحة واكتب اسمها"
                            : pages_.empty() ? "لا توجد صفحات أصناف. اضغط تعديل ثم + صفحة"
                                             : "الصفحة فارغة. اضغط تعديل ثم + صنف",
                            "side", "tiles_empty");
        grid->addWidget(empty, 0, 0, 1, columns_, Qt::AlignCenter);
    }
    // Tab leads through the pages and then through the tiles.
    QWidget* before = before_;
    std::vector<QWidget*> stops;
    for (int i = 0; i < tabs_->count(); ++i)
        if (QWidget* widget = tabs_->itemAt(i)->widget()) stops.push_back(widget);
    stops.insert(stops.end(), tiles_.begin(), tiles_.end());
    for (QWidget* stop : stops) {
        setTabOrder(before, stop);
        before = stop;
    }
    fit();
    for (int i = 0; i < std::max(columns_, grid->columnCount()); ++i)
        grid->setColumnStretch(i, i < columns_ ? 1 : 0);
    for (int i = 0; i < grid->rowCount(); ++i)
        grid->setRowStretch(i, 0);
    grid->setRowStretch(static_cast<int>(tiles_.size()) / columns_ + 1, 1);
}

bool TilesPanel::is_cramped() const {
    return isVisible() && window()->height() < px(900);
}

void TilesPanel::fit() {
    QLayout* column = parentWidget()->layout();
    const int width = parentWidget()->width();
    const int others = (column->hasHeightForWidth() ? column->minimumHeightForWidth(width)
                                                    : column->totalMinimumSize().height()) -
                       (isVisible() ? minimumHeight() : 0);
    const int tabs = px(tab_height) + px(20);
    const int room = parentWidget()->height() - others - tabs;
    const double usual = is_cramped() ? small_screen_height : tile_height;
    const int row = px((room < px(usual + between) ? low_height : usual) + between);
    for (QPushButton* tile : tiles_)
        tile->setFixedHeight(row - px(between));
    const int needed = (static_cast<int>(tiles_.size()) + columns_ - 1) / columns_;
    const int height = tabs + std::clamp(needed, 1, std::clamp(room / row, 1, most_rows)) * row;
    if (height == minimumHeight()) return;
    setFixedHeight(height);
    scroll_->verticalScrollBar()->setValue(0);
}

// Parts above the lines come and go, also by themselves.
bool TilesPanel::eventFilter(QObject* watched, QEvent* event) {
    if (isVisible() && (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)) fit();
    return QFrame::eventFilter(watched, event);
}

void TilesPanel::choose_page(std::size_t page) {
    if (editing_ && page == page_) return edit_page(false);
    read();
    page_ = std::min(page, pages_.empty() ? 0 : pages_.size() - 1);
    show_pages();
    focus_tile(0);
}

void TilesPanel::set_editing(bool editing) {
    if (editing && !desk_.tiles().may_edit()) return;
    if (!editing) end_editing();
    editing_ = editing;
    read();
    show_pages();
    if (!editing) return emit left();
    if (auto* first = findChild<QPushButton*>(pages_.empty() ? "tile_page_add" : "tile_add"))
        first->setFocus();
}

// Also ends what a supervisor allowed.
void TilesPanel::end_editing() {
    editing_ = false;
    desk_.tiles().end_editing();
}

void TilesPanel::close_tiles() {
    end_editing();
    hide();
    emit left();
}

void TilesPanel::press_tile(std::size_t at) {
    if (page() == nullptr || at >= page()->tiles.size()) return;
    if (editing_) return edit_tile(at);
    emit taken(page()->tiles[at].entry());
}

void TilesPanel::store(sales::TilePage changed) {
    const bool is_stored = desk_.tiles().store(changed);
    read();
    if (is_stored) {
        const auto stored = std::find_if(pages_.begin(), pages_.end(), [&](const sales::TilePage& one) {
            return one.number == changed.number;
        });
        page_ = stored == pages_.end() ? 0 : static_cast<std::size_t>(stored - pages_.begin());
    }
    show_pages();
}

void TilesPanel::add_tile() {
    SearchPanel panel(this, desk_, {});
    if (panel.run() != 1) return;
    const auto tile = desk_.tiles().tile_of(panel.entry());
    if (!tile) return;
    sales::TilePage changed = *page();
    changed.tiles.push_back(*tile);
    if (changed.tiles.size() > 1)
        changed.tiles.back().colour = changed.tiles[changed.tiles.size() - 2].colour;
    store(std::move(changed));
    focus_tile(static_cast<int>(tiles_.size()) - 1);
}

void TilesPanel::edit_tile(std::size_t at) {
    sales::TilePage changed = *page();
    TileSheet sheet(this, changed.tiles[at]);
    const int result = sheet.run();
    if (result == TileSheet::back) return;
    changed.tiles[at] = sheet.tile();
    std::size_t now = at;
    if (result == TileSheet::remove) {
        changed.tiles.erase(changed.tiles.begin() + static_cast<std::ptrdiff_t>(at));
    } else if (result == TileSheet::earlier && at > 0) {
        std::swap(changed.tiles[at], changed.tiles[--now]);
    } else if (result == TileSheet::later && at + 1 < changed.tiles.size()) {
        std::swap(changed.tiles[at], changed.tiles[++now]);
    }
    store(std::move(changed));
    focus_tile(static_cast<int>(now));
}

void TilesPanel::edit_page(bool is_new) {
    sales::TilePage changed = is_new ? sales::TilePage() : *page();
    TilePageSheet sheet(this, qt(changed.name), is_new);
    const int result = sheet.run();
    if (result == TilePageSheet::change) {
        changed.name = utf8(sheet.name());
        store(std::move(changed));
    } else if (result == TilePageSheet::remove &&
               context_.services.prompts.question("حذف الصفحة " + changed.name + " بكل ما فيها ؟",
                                                  common::Icon::exclamation)) {
        desk_.tiles().remove(changed);
        read();
        show_pages();
    }
    focus_tile(0);
}

void TilesPanel::focus_tile(int at) {
    if (!tiles_.empty()) {
        tiles_[static_cast<std::size_t>(std::clamp(at, 0, static_cast<int>(tiles_.size()) - 1))]->setFocus();
    } else if (auto* edit = findChild<QPushButton*>("tiles_edit")) {
        edit->setFocus();
    }
}

// The arrows lead from tile to tile, and up from the first row to the pages.
void TilesPanel::keyPressEvent(QKeyEvent* event) {
    const auto focused = std::find(tiles_.begin(), tiles_.end(), focusWidget());
    const int at = focused == tiles_.end() ? -1 : static_cast<int>(focused - tiles_.begin());
    int to = -1;
    if (event->key() == Qt::Key_Left) to = at + 1;
    if (event->key() == Qt::Key_Right) to = at - 1;
    if (event->key() == Qt::Key_Down) to = at < 0 ? 0 : at + columns_;
    if (event->key() == Qt::Key_Up && at >= columns_) to = at - columns_;
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (button != nullptr && is_enter(event->key())) {
        button->click();
    } else if (to >= 0 && to < static_cast<int>(tiles_.size()) && (at >= 0 || event->key() == Qt::Key_Down)) {
        focus_tile(to);
    } else {
        QFrame::keyPressEvent(event);
    }
}

void TilesPanel::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    if (isVisible() && event->oldSize().width() != event->size().width()) show_tiles();
}

}  // namespace ui
