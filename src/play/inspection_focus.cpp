// The inspector's hand: the way of the focus through a screen.
#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <algorithm>

#include "play/inspection.h"
#include "ui/widgets/contrast.h"
#include "ui/widgets/fields.h"

namespace play {

namespace {

constexpr int longest_way = 120;
constexpr double seen_contrast = 2.0;  // between a pixel with the focus and without it

// Whether `next` is read before `from`: above it, or on its line and further to the right. What stands wholly
// to the left of it may begin higher, as the next column does.
bool goes_back(const QRect& from, const QRect& next) {
    const bool above = next.bottom() <= from.top();
    const bool below = next.top() >= from.bottom();
    if (below) return false;
    if (above) return next.right() > from.left();
    return next.left() >= from.right();
}

bool is_acting(const QWidget* widget) {
    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) return !field->isReadOnly();
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
        return list->focusPolicy() != Qt::NoFocus || !list->property("fixed").toBool();
    if (const auto* view = qobject_cast<const QTableView*>(widget))
        return view->model() != nullptr && view->model()->rowCount() > 0;
    return qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

// One button of a group stands for all of it: the arrows lead from one to the other.
bool is_reached(const QWidget* widget, const std::vector<QWidget*>& way) {
    if (std::find(way.begin(), way.end(), widget) != way.end()) return true;
    if (widget->property(ui::key_property).isValid()) return true;
    for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
        if (at->property("fixed").toBool()) return true;
    }
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr) return false;
    if (!QKeySequence::mnemonic(button->text()).isEmpty()) return true;
    return std::any_of(way.begin(), way.end(), [&](const QWidget* stop) {
        const auto* other = qobject_cast<const QAbstractButton*>(stop);
        if (other == nullptr) return false;
        return (button->group() != nullptr && button->group() == other->group()) ||
               (std::string(button->metaObject()->className()) == other->metaObject()->className() &&
                button->parentWidget() == other->parentWidget() && button->focusPolicy() == Qt::ClickFocus);
    });
}

// Whether the focus shows: enough pixels around the widget look clearly different with and without it.
bool shows(const QImage& without, const QImage& with, const QRect& place) {
    const QRect around = place.adjusted(-4, -4, 4, 4).intersected(with.rect());
    int changed = 0;
    for (int y = around.top(); y <= around.bottom(); ++y) {
        for (int x = around.left(); x <= around.right(); ++x) {
            const QColor before = without.pixelColor(x, y);
            const QColor after = with.pixelColor(x, y);
            if (before != after && ui::contrast(before, after) >= seen_contrast) ++changed;
        }
    }
    return changed >= (around.width() + around.height()) / 2;
}

}  // namespace

void inspect_focus(QWidget* front, Hands& hands, std::vector<std::string>& faults) {
    QWidget* const begin = QApplication::focusWidget();
    // A window without any stop takes the keys itself.
    const auto all = front->findChildren<QWidget*>();
    if (std::none_of(all.begin(), all.end(),
                     [](const QWidget* widget) { return (widget->focusPolicy() & Qt::TabFocus) != 0; }))
        return;
    if (begin == nullptr || (front != begin && !front->isAncestorOf(begin))) {
        faults.push_back("the focus is nowhere on it");
        return;
    }
    // In a cell that is being typed into Tab ends the typing.
    for (const QWidget* at = begin->parentWidget(); at != nullptr; at = at->parentWidget()) {
        if (qobject_cast<const QTableView*>(at) != nullptr) return;
    }
    std::vector<QWidget*> way = {begin};
    QImage before = front->window()->grab().toImage();
    bool home = false;
    int within = 0;
    while (!home && way.size() < longest_way) {
        hands.strike(Qt::Key_Tab);
        QWidget* stop = QApplication::focusWidget();
        if (stop == nullptr || screen_in_front() != front) {
            faults.push_back("Tab leads away from it after " + name_of(way.back()));
            return;
        }
        // Tab may lead through several places of one widget, as the links of a page.
        if (stop == way.back() && ++within < longest_way) continue;
        const QImage now = front->window()->grab().toImage();
        if (stop != way.back() && !shows(before, now, place_of(stop)))
            faults.push_back("the focus on " + name_of(stop) + " is not seen");
        before = now;
        home = stop == begin;
        if (!home && std::find(way.begin(), way.end(), stop) != way.end()) {
            faults.push_back("Tab goes round without " + name_of(begin) + " from " + name_of(stop));
            break;
        }
        if (stop->visibleRegion().isEmpty() || place_of(stop).isEmpty())
            faults.push_back("Tab stops at " + name_of(stop) + ", which is not seen");
        if (!home) way.push_back(stop);
    }
    if (!home) {
        begin->setFocus(Qt::OtherFocusReason);
        faults.push_back("Tab does not come back to " + name_of(begin));
    }
    // The way begins where typing does; going round, it jumps back to the top once.
    const auto rect_of = [](const QWidget* stop) {
        return stop->parentWidget() != nullptr && stop->parentWidget()->property("role") == "discbox"
                   ? place_of(stop->parentWidget())
                   : place_of(stop);
    };
    int jumps = 0;
    std::string jumped;
    for (std::size_t at = 0; at < way.size(); ++at) {
        const QWidget* next = way[(at + 1) % way.size()];
        if (way.size() < 2 || !goes_back(rect_of(way[at]), rect_of(next))) continue;
        ++jumps;
        jumped += " [" + name_of(way[at]) + " -> " + name_of(next) + "]";
    }
    if (jumps > 1) faults.push_back("Tab jumps against the reading order:" + jumped);
    for (QWidget* widget : front->findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled() || !is_acting(widget)) continue;
        if (widget->focusProxy() != nullptr || widget->visibleRegion().isEmpty()) continue;
        if (!is_reached(widget, way)) faults.push_back("no key leads to " + name_of(widget));
    }
}

}  // namespace play
