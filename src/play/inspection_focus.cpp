#include "play/inspection.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <algorithm>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"

namespace play {

namespace {

constexpr std::size_t most_stops = 120;
constexpr double visible_contrast = 2.0;  // between a pixel with the focus and without it

// Whether `next` comes before `from` in reading order: above it, or on its line and further to the right. A
// widget wholly to the left may begin higher, because it is in the next column.
bool goes_back(const QRect& from, const QRect& next) {
    const bool above = next.bottom() <= from.top();
    const bool below = next.top() >= from.bottom();
    if (below) return false;
    if (above) return next.right() > from.left();
    return next.left() >= from.right();
}

// Whether a widget can be operated.
bool is_operable(const QWidget* widget) {
    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) return !field->isReadOnly();
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
        return list->focusPolicy() != Qt::NoFocus || !list->property("fixed").toBool();
    if (const auto* view = qobject_cast<const QTableView*>(widget))
        return view->model() != nullptr && view->model()->rowCount() > 0;
    return qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

// Whether a key leads to the widget: Tab, an Alt key, a key of its own, or the arrow keys from another button
// of its group.
bool is_reached(const QWidget* widget, const std::vector<QWidget*>& stops) {
    if (std::find(stops.begin(), stops.end(), widget) != stops.end()) return true;
    if (widget->property(ui::key_property).isValid()) return true;
    for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
        if (at->property("fixed").toBool()) return true;
    }
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr) return false;
    if (!QKeySequence::mnemonic(button->text()).isEmpty()) return true;
    return std::any_of(stops.begin(), stops.end(), [&](const QWidget* stop) {
        const auto* other = qobject_cast<const QAbstractButton*>(stop);
        if (other == nullptr) return false;
        return (button->group() != nullptr && button->group() == other->group()) ||
               (std::string(button->metaObject()->className()) == other->metaObject()->className() &&
                button->parentWidget() == other->parentWidget() && button->focusPolicy() == Qt::ClickFocus);
    });
}

// Whether enough pixels around the widget look clearly different with and without the focus.
bool shows_focus(const QImage& without, const QImage& with, const QRect& place) {
    const QRect around = place.adjusted(-4, -4, 4, 4).intersected(with.rect());
    int changed = 0;
    for (int y = around.top(); y <= around.bottom(); ++y) {
        for (int x = around.left(); x <= around.right(); ++x) {
            const QColor before = without.pixelColor(x, y);
            const QColor after = with.pixelColor(x, y);
            if (before != after && ui::contrast(before, after) >= visible_contrast) ++changed;
        }
    }
    return changed >= (around.width() + around.height()) / 2;
}

// One round of Tab through a screen.
class FocusRound {
  public:
    FocusRound(QWidget* front, InputDriver& input, std::vector<std::string>& faults)
        : front_(front), input_(input), faults_(faults), begin_(QApplication::focusWidget()) {}

    void inspect() {
        if (!has_stops() || !begins_here() || !go_round()) return;
        check_order();
        for (QWidget* widget : front_->findChildren<QWidget*>()) {
            if (!widget->isVisible() || !widget->isEnabled() || !is_operable(widget)) continue;
            if (widget->focusProxy() != nullptr || widget->visibleRegion().isEmpty()) continue;
            if (!is_reached(widget, stops_)) faults_.push_back("no key leads to " + name_of(widget));
        }
    }

  private:
    // A window without any stop handles the keys itself.
    bool has_stops() const {
        const auto all = front_->findChildren<QWidget*>();
        return std::any_of(all.begin(), all.end(),
                           [](const QWidget* widget) { return (widget->focusPolicy() & Qt::TabFocus) != 0; });
    }

    // Returns false if there is no round to inspect: the focus is elsewhere, or in a cell that is being
    // edited, where Tab ends the editing.
    bool begins_here() {
        if (begin_ == nullptr || (front_ != begin_ && !front_->isAncestorOf(begin_))) {
            faults_.emplace_back("the focus is nowhere on it");
            return false;
        }
        for (QWidget* at = begin_->parentWidget(); at != nullptr; at = at->parentWidget()) {
            if (qobject_cast<const QTableView*>(at) != nullptr) return false;
        }
        return true;
    }

    // Presses Tab until the focus is back. Returns false if it left the screen.
    bool go_round() {
        stops_ = {begin_};
        QImage before = front_->window()->grab().toImage();
        std::size_t within = 0;
        while (stops_.size() < most_stops) {
            input_.press_now(Qt::Key_Tab);
            QWidget* stop = QApplication::focusWidget();
            if (stop == nullptr || screen_in_front() != front_) {
                faults_.push_back("Tab leads away from it after " + name_of(stops_.back()));
                return false;
            }
            // Tab may stop several times in one widget, such as at the links of a page.
            if (stop == stops_.back() && ++within < most_stops) continue;
            const QImage now = front_->window()->grab().toImage();
            if (stop != stops_.back() && !shows_focus(before, now, place_of(stop)))
                faults_.push_back("the focus on " + name_of(stop) + " is not seen");
            before = now;
            if (stop != begin_ && std::find(stops_.begin(), stops_.end(), stop) != stops_.end()) {
                faults_.push_back("Tab goes round without " + name_of(begin_) + " from " + name_of(stop));
                break;
            }
            if (stop->visibleRegion().isEmpty() || place_of(stop).isEmpty())
                faults_.push_back("Tab stops at " + name_of(stop) + ", which is not seen");
            if (stop == begin_) return true;
            stops_.push_back(stop);
        }
        begin_->setFocus(Qt::OtherFocusReason);
        faults_.push_back("Tab does not come back to " + name_of(begin_));
        return true;
    }

    // The round begins where the user types, so it may jump back to the top once.
    void check_order() {
        const auto rect_of = [](const QWidget* stop) {
            const QWidget* box = stop->parentWidget();
            return place_of(box != nullptr && box->property("role") == "discbox" ? box : stop);
        };
        int jumps = 0;
        std::string jumped;
        for (std::size_t at = 0; at < stops_.size(); ++at) {
            const QWidget* next = stops_[(at + 1) % stops_.size()];
            if (stops_.size() < 2 || !goes_back(rect_of(stops_[at]), rect_of(next))) continue;
            ++jumps;
            jumped += " [" + name_of(stops_[at]) + " -> " + name_of(next) + "]";
        }
        if (jumps > 1) faults_.push_back("Tab jumps against the reading order:" + jumped);
    }

    QWidget* front_;
    InputDriver& input_;
    std::vector<std::string>& faults_;
    QWidget* begin_;
    std::vector<QWidget*> stops_;
};

}  // namespace

void inspect_focus(QWidget* front, InputDriver& input, std::vector<std::string>& faults) {
    FocusRound(front, input, faults).inspect();
}

}  // namespace play
