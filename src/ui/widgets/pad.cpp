#include "ui/widgets/pad.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <limits>
#include <map>

#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr double key_size = 56;
constexpr double gap = 5;
constexpr double some_buttons = 200;  // it is not moved for less than a row of so many pixels

// Keys that do more than type their caption.
const std::map<QString, Qt::Key>& named_keys() {
    static const std::map<QString, Qt::Key> keys = {
        {"⌫", Qt::Key_Backspace}, {"Enter", Qt::Key_Return}, {"Esc", Qt::Key_Escape}, {"Tab", Qt::Key_Tab},
        {"↑", Qt::Key_Up},        {"↓", Qt::Key_Down},       {"←", Qt::Key_Left},     {"→", Qt::Key_Right}};
    return keys;
}

constexpr auto to_figures = "123";
constexpr auto to_arabic = "أبت";
constexpr auto to_latin = "abc";
constexpr auto shift = "⇧";
constexpr auto away = "✕";
constexpr auto blank = "␣";

// The rows of a page from top to bottom, keys from left to right.
const std::vector<QStringList>& rows_of_figures() {
    static const std::vector<QStringList> rows = {{"7", "8", "9", "*", "⌫", away},
                                                  {"4", "5", "6", "+", "/", "Esc"},
                                                  {"1", "2", "3", "%", to_arabic, "Tab"},
                                                  {"0", "00", ".", "↑", "↓", "Enter"}};
    return rows;
}
const std::vector<QStringList>& rows_of_arabic() {
    static const std::vector<QStringList> rows = {
        {"ض", "ص", "ث", "ق", "ف", "غ", "ع", "ه", "خ", "ح", "ج"},
        {"ش", "س", "ي", "ب", "ل", "ا", "ت", "ن", "م", "ك", "ط"},
        {"ئ", "ء", "ؤ", "ر", "ى", "ة", "و", "ز", "ظ", "د", "ذ"},
        {to_figures, to_latin, "أ", "إ", "آ", blank, "←", "→", "⌫", "Enter", away}};
    return rows;
}
const std::vector<QStringList>& rows_of_latin() {
    static const std::vector<QStringList> rows = {
        {"q", "w", "e", "r", "t", "y", "u", "i", "o", "p", "-"},
        {"a", "s", "d", "f", "g", "h", "j", "k", "l", "@", "_"},
        {shift, "z", "x", "c", "v", "b", "n", "m", ".", ",", "⌫"},
        {to_figures, to_arabic, "!", "#", "&", blank, "←", "→", "Tab", "Enter", away}};
    return rows;
}

QRect place_in_window(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

// Where typing goes; in a grid, the row whose cell is or would be opened.
QRect place_of_typing(const QWidget* field) {
    const auto* grid = qobject_cast<const QAbstractItemView*>(field);
    if (grid == nullptr) grid = qobject_cast<const QAbstractItemView*>(field->parentWidget()->parentWidget());
    if (grid == nullptr) return place_in_window(field);
    QRect row = grid->visualRect(grid->currentIndex());
    row.setLeft(0);
    row.setRight(grid->viewport()->width());
    return {grid->viewport()->mapTo(grid->window(), row.topLeft()), row.size()};
}

// The rows that are there, as far as they are in sight.
QRect place_of_rows(const QAbstractItemView* grid) {
    const int rows = grid->model() == nullptr ? 0 : grid->model()->rowCount();
    if (rows == 0) return {};
    QRect all = grid->viewport()->rect();
    all.setBottom(std::min(all.bottom(), grid->visualRect(grid->model()->index(rows - 1, 0)).bottom()));
    return {grid->viewport()->mapTo(grid->window(), all.topLeft()), all.size()};
}

qint64 common_area(const QRect& one, const QRect& other) {
    const QRect both = one.intersected(other);
    return both.isEmpty() ? 0 : qint64(both.width()) * both.height();
}

}  // namespace

Pad::Pad(QWidget* window, std::function<void()> close) : QFrame(window), close_(std::move(close)) {
    setObjectName("keypad");
    set_role(this, "keypad");
    // Keys stand as on a keyboard.
    setLayoutDirection(Qt::LeftToRight);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(px(8), px(8), px(8), px(8));
    show_page(Page::figures);
}

void Pad::show_page(Page page) {
    page_ = page;
    if (keys_ != nullptr) {
        keys_->hide();
        layout()->removeWidget(keys_);
        keys_->deleteLater();  // the key that was pressed is one of them
    }
    keys_ = new QWidget;
    auto* grid = new QGridLayout(keys_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(px(gap));
    const auto& rows = page == Page::figures  ? rows_of_figures()
                       : page == Page::arabic ? rows_of_arabic()
                                              : rows_of_latin();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (qsizetype column = 0; column < rows[row].size(); ++column)
            add_key(grid, rows[row][column], static_cast<int>(row), static_cast<int>(column));
    }
    layout()->addWidget(keys_);
    keys_->show();
    front_ = nullptr;  // its size is another
    setFixedSize(keys_->sizeHint() + QSize(px(16), px(16)));
}

void Pad::add_key(QGridLayout* grid, const QString& key, int row, int column) {
    const bool is_capital = capital_ && page_ == Page::latin && key.size() == 1 && key.front().isLetter();
    auto* made = new QPushButton(is_capital ? key.toUpper() : QString(key).replace("&", "&&"));
    made->setObjectName("pad_" + (key == "⌫" ? QString("backspace") : key == away ? QString("close") : key));
    made->setAccessibleName(key);
    made->setFocusPolicy(Qt::NoFocus);
    made->setFixedSize(px(key_size), px(key_size));
    made->setAutoRepeat(key == "⌫");
    set_role(made, key == "Enter" ? "padenter" : named_keys().contains(key) ? "padcontrol" : "padkey");
    connect(made, &QPushButton::clicked, this,
            [this, typed = is_capital ? key.toUpper() : key] { press(typed); });
    grid->addWidget(made, row, column);
}

void Pad::press(const QString& key) {
    if (key == away) return close_();
    if (key == shift) capital_ = !capital_;
    const std::map<QString, Page> pages = {{to_figures, Page::figures},
                                           {to_arabic, Page::arabic},
                                           {to_latin, Page::latin},
                                           {shift, Page::latin}};
    if (const auto page = pages.find(key); page != pages.end()) {
        show_page(page->second);
        if (const QWidget* field = QApplication::focusWidget()) make_way_for(field);
        return;
    }
    // Sends the keys as a keyboard would, so that the same rules hold for waiting, scanning and answering.
    QWindow* keyboard = window()->windowHandle();
    const auto send = [keyboard](int code, const QString& text) {
        QKeyEvent down(QEvent::KeyPress, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(keyboard, &down);
        QKeyEvent up(QEvent::KeyRelease, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(keyboard, &up);
    };
    if (const auto named = named_keys().find(key); named != named_keys().end()) {
        send(named->second, {});
        // An arrow may have led to a row behind the pad.
        const QWidget* field = QApplication::focusWidget();
        if (qobject_cast<const QAbstractItemView*>(field) != nullptr) make_way_for(field);
        return;
    }
    for (const QChar letter : key == blank ? QString(" ") : key)
        send(letter.toUpper().unicode(), letter);
}

void Pad::begin() {
    if (page_ != Page::figures) show_page(Page::figures);
    front_ = nullptr;
    show();
}

void Pad::make_way_for(const QWidget* field) {
    const QWidget* top = Sheet::top_of(parentWidget());
    if (top == nullptr) top = parentWidget();
    if (qobject_cast<const QComboBox*>(field->parentWidget()) != nullptr) field = field->parentWidget();
    const QRect typed_into = place_of_typing(field);
    raise();
    std::vector<QRect> pressed;
    std::vector<QRect> read;
    for (const auto* widget : top->findChildren<QWidget*>()) {
        const bool acts = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                          qobject_cast<const QLineEdit*>(widget) != nullptr;
        if (!widget->isVisible() || isAncestorOf(widget)) continue;
        if (acts) pressed.push_back(place_in_window(widget));
        if (const auto* grid = qobject_cast<const QAbstractItemView*>(widget))
            pressed.push_back(place_of_rows(grid));
        if (widget->property(read_property).toBool()) read.push_back(place_in_window(widget));
    }
    const auto cost_of = [&](const QRect& here) {
        constexpr qint64 never = 1'000'000;
        constexpr qint64 hardly = 100;
        qint64 cost = never * common_area(here, typed_into);
        for (const QRect& one : read)
            cost += hardly * common_area(here, one);
        for (const QRect& one : pressed)
            cost += common_area(here, one);
        return cost;
    };
    constexpr int steps = 16;
    const QRect room = parentWidget()->contentsRect();
    const QSize spare = room.size() - size();
    qint64 least = std::numeric_limits<qint64>::max();
    QPoint best = room.topLeft();
    for (int down = steps; down >= 0; --down) {
        for (int along = 0; along <= steps; ++along) {
            const QRect here(
                room.topLeft() + QPoint(spare.width() * along / steps, spare.height() * down / steps),
                size());
            const qint64 cost = cost_of(here);
            if (cost >= least) continue;
            least = cost;
            best = here.topLeft();
        }
    }
    const bool is_near_best = cost_of(geometry()) < least + qint64(px(some_buttons)) * px(key_size);
    if (top == front_ && is_near_best) return;
    front_ = top;
    move(best);
}

}  // namespace ui
