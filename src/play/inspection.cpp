#include "play/inspection.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QTableView>
#include <algorithm>
#include <map>
#include <unordered_map>

#include "play/screen_reader.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"

namespace play {

namespace {

constexpr int magnified = 3;  // so that the strokes of small letters reach their full colour
constexpr int border = 4;     // at the edge of a field or button; not part of the text

struct Colours {
    QColor background;
    QColor ink;
    bool has_text = false;
};

// The background is the most frequent colour; the ink is the one that differs most from it, stray pixels
// excepted.
Colours colours_of(const QImage& picture, const QRect& place) {
    std::unordered_map<QRgb, int> counted;
    const QRect inside = place.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++counted[picture.pixel(x, y)];
    }
    if (counted.size() < 2) return {};
    const auto most = std::max_element(counted.begin(), counted.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second < b.second : a.first < b.first;
    });
    Colours found{QColor(most->first), QColor(most->first), false};
    constexpr int stray = 2 * magnified;
    for (const auto& [rgb, count] : counted) {
        if (count < stray) continue;
        if (ui::contrast(QColor(rgb), found.background) <= ui::contrast(found.ink, found.background))
            continue;
        found.ink = QColor(rgb);
        found.has_text = true;
    }
    return found;
}

class ContrastCheck {
  public:
    ContrastCheck(QWidget* front, std::vector<std::string>& faults)
        : window_(front->window()),
          faults_(faults),
          picture_(window_->size() * magnified, QImage::Format_RGB32) {
        QPixmap drawn(window_->size() * magnified);
        drawn.setDevicePixelRatio(magnified);
        window_->render(&drawn);
        picture_ = drawn.toImage();
        picture_.setDevicePixelRatio(1);
    }

    // Checks the text in the rectangle of the widget.
    void check(const QWidget* on, const QRect& rect, const QString& what) {
        const QRect visible = rect.intersected(on->rect()).translated(on->mapTo(window_, QPoint()));
        const Colours colours =
            colours_of(picture_, QRect(visible.topLeft() * magnified, visible.size() * magnified));
        const double seen = ui::contrast(colours.ink, colours.background);
        if (!colours.has_text || seen >= ui::readable_contrast) return;
        faults_.push_back("contrast " + QString::number(seen, 'f', 1).toStdString() + " of " +
                          colours.ink.name().toStdString() + " on " +
                          colours.background.name().toStdString() + ": " + name_of(on) + " \"" +
                          what.left(30).toStdString() + "\"");
    }

  private:
    QWidget* window_;
    std::vector<std::string>& faults_;
    QImage picture_;
};

bool is_figure(const QString& text) {
    static const QRegularExpression figure(R"(^[\x{200e}\x{200f}\s]*[-−+]?[\d][\d.,/:\s]*$)");
    return figure.match(text).hasMatch();
}

void inspect_table(const QTableView* table, std::vector<std::string>& faults) {
    const QAbstractItemModel* model = table->model();
    const QHeaderView* header = table->horizontalHeader();
    for (int column = 0; column < model->columnCount(); ++column) {
        if (table->isColumnHidden(column) || !header->isVisible()) continue;
        if (header->sectionSizeHint(column) > header->sectionSize(column) + 1)
            faults.push_back("the heading \"" +
                             model->headerData(column, Qt::Horizontal).toString().simplified().toStdString() +
                             "\" of " + name_of(table) + " is cut");
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex cell = model->index(row, column);
            const QRect seen = table->visualRect(cell);
            if (!table->viewport()->rect().intersects(seen)) continue;
            const QString text = cell.data().toString();
            if (column == header->logicalIndex(0) &&
                (seen.top() < 0 || seen.bottom() > table->viewport()->height()))
                faults.push_back("row " + std::to_string(row + 1) + " of " + name_of(table) +
                                 " is cut in half");
            if (is_figure(text) && table->sizeHintForIndex(cell).width() > seen.width())
                faults.push_back("the figure " + text.toStdString() + " in " + name_of(table) + " is cut");
        }
    }
    if (model->rowCount() == 0 && table->property(ui::empty_property).toString().isEmpty())
        faults.push_back("the empty table " + name_of(table) + " says nothing");
    if (header->length() > table->viewport()->width() + 1)
        faults.push_back("the table " + name_of(table) + " is wider than its place");
}

bool is_cut(const QLabel* label) {
    if (label->text().isEmpty() || !label->pixmap(Qt::ReturnByValue).isNull()) return false;
    const QFontMetrics metrics = label->fontMetrics();
    const QString text = QString(label->text()).remove('&');
    if (label->wordWrap()) return label->heightForWidth(label->width()) > label->height() + 1;
    int widest = 0;
    for (const QString& line : text.split('\n'))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    const int lines = static_cast<int>(text.count('\n')) + 1;
    const int tall = lines > 1 ? metrics.lineSpacing() * lines : metrics.tightBoundingRect(text).height();
    return widest > label->contentsRect().width() + 1 || tall > label->contentsRect().height() + 1;
}

// Checks that texts have the contrast of 4.5 : 1 that small letters need.
void inspect_contrast(QWidget* front, std::vector<std::string>& faults) {
    ContrastCheck texts(front, faults);
    for (const auto* widget : front->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->visibleRegion().isEmpty()) continue;
        const QRect inside = widget->rect().adjusted(border, border, -border, -border);
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            if (!label->text().isEmpty()) texts.check(label, label->rect(), label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            texts.check(button, inside, button->accessibleName() + button->text());
        } else if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            const QString text = field->text().isEmpty() ? field->placeholderText() : field->text();
            if (!text.isEmpty()) texts.check(field, inside, text);
        } else if (const auto* table = qobject_cast<const QTableView*>(widget)) {
            for (int row = 0; row < std::min(table->model()->rowCount(), 30); ++row) {
                for (int column = 0; column < table->model()->columnCount(); ++column) {
                    const QModelIndex cell = table->model()->index(row, column);
                    const QRect seen = table->visualRect(cell);
                    if (!cell.data().toString().trimmed().isEmpty() &&
                        table->viewport()->rect().contains(seen))
                        texts.check(table->viewport(), seen.adjusted(3, 3, -3, -3), cell.data().toString());
                }
            }
        } else if (const auto* header = qobject_cast<const QHeaderView*>(widget)) {
            texts.check(header->viewport(), header->viewport()->rect(), "headings");
        }
    }
}

// Checks that nothing is cut off or hangs over the edge, and that an empty table says so.
void inspect_room(const QWidget* front, std::vector<std::string>& faults) {
    const QRect whole = front->window()->rect();
    for (const auto* widget : front->findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget); label != nullptr && is_cut(label))
            faults.push_back("the text \"" + label->text().toStdString() + "\" (" + name_of(label) +
                             ") is cut");
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (button != nullptr) {
            const auto* key = dynamic_cast<const ui::KeyButton*>(button);
            const int wanted =
                key != nullptr ? key->sizeHint().width() - ui::px(16)
                               : button->fontMetrics().horizontalAdvance(QString(button->text()).remove('&'));
            if (wanted > button->width())
                faults.push_back("the caption of the button " + name_of(button) + " is cut");
        }
        if (const auto* table = qobject_cast<const QTableView*>(widget)) inspect_table(table, faults);
        const bool acts = button != nullptr || qobject_cast<const QLineEdit*>(widget) != nullptr ||
                          qobject_cast<const QComboBox*>(widget) != nullptr ||
                          qobject_cast<const QLabel*>(widget) != nullptr;
        const bool scrolled =
            qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()->parentWidget()) != nullptr;
        if (acts && !scrolled && !whole.contains(place_of(widget)) && !widget->visibleRegion().isEmpty())
            faults.push_back(name_of(widget) + " hangs over the edge");
        if (acts && !scrolled && !widget->size().isEmpty() &&
            widget->visibleRegion().boundingRect() != widget->rect())
            faults.push_back(name_of(widget) + " is covered in part");
    }
}

// Checks that no two widgets have the same Alt key.
void inspect_mnemonics(const QWidget* front, std::vector<std::string>& faults) {
    std::map<QString, std::string> owners;
    const auto add = [&](const QString& text, const QWidget* owner) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty()) return;
        const auto [at, fresh] = owners.emplace(key, name_of(owner));
        if (!fresh && at->second != name_of(owner))
            faults.push_back(key.toStdString() + " is both " + at->second + "'s and " + name_of(owner) +
                             "'s");
    };
    for (const auto* label : front->findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy() != nullptr && label->buddy()->isEnabled())
            add(label->text(), label->buddy());
    }
    for (const auto* button : front->findChildren<QAbstractButton*>()) {
        if (button->isVisible()) add(button->text(), button);
    }
}

// Checks that a finger meets everything that can be pressed. Rows that the workstation chose compact are its
// choice.
void inspect_targets(const QWidget* front, std::vector<std::string>& faults) {
    const int least = ui::px(ui::least_target);
    const auto check = [&](const QSize& size, const std::string& what) {
        if (size.width() < least || size.height() < least)
            faults.push_back(what + " is too small for a finger: " + std::to_string(size.width()) + " x " +
                             std::to_string(size.height()));
    };
    for (const auto* widget : front->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->size().isEmpty()) continue;
        const bool is_pressed = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                                qobject_cast<const QComboBox*>(widget) != nullptr ||
                                (qobject_cast<const QLineEdit*>(widget) != nullptr &&
                                 qobject_cast<const QComboBox*>(widget->parentWidget()) == nullptr);
        // A field inside a box is as large as the box that leads into it.
        const QWidget* around = widget->parentWidget();
        const bool is_led_to = around->focusProxy() == widget;
        if (is_pressed) check((is_led_to ? around : widget)->size(), name_of(widget));
        const auto* table = qobject_cast<const QTableView*>(widget);
        if (table != nullptr && table->model()->rowCount() > 0 &&
            !table->property(ui::compact_property).toBool())
            check({least, table->rowHeight(0)}, "a row of " + name_of(table));
    }
    if (const auto* menu = qobject_cast<const QMenu*>(front)) {
        for (QAction* entry : menu->actions()) {
            if (!entry->isSeparator())
                check(menu->actionGeometry(entry).size(), entry->objectName().toStdString());
        }
    }
}

}  // namespace

QWidget* screen_in_front() {
    QWidget* window = front_window();
    if (window == nullptr || QApplication::activePopupWidget() != nullptr) return nullptr;
    QWidget* sheet = ui::Sheet::top_of(window);
    return sheet != nullptr ? sheet : window;
}

QRect place_of(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

std::string name_of(const QWidget* widget) {
    for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
        if (at->objectName().isEmpty() || at->objectName().startsWith("qt_")) continue;
        const std::string name = at->objectName().toStdString();
        return at == widget ? name : std::string("a ") + widget->metaObject()->className() + " in " + name;
    }
    return widget->metaObject()->className();
}

std::vector<std::string> faults_of_screen(InputDriver& input) {
    std::vector<std::string> faults;
    if (const auto* menu = qobject_cast<const QMenu*>(QApplication::activePopupWidget()))
        inspect_targets(menu, faults);
    QWidget* front = screen_in_front();
    if (front == nullptr) return faults;
    inspect_targets(front, faults);
    inspect_room(front, faults);
    inspect_mnemonics(front, faults);
    inspect_contrast(front, faults);
    inspect_minus(front, faults);
    inspect_focus(front, input, faults);
    return faults;
}

}  // namespace play
