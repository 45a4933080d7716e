// The sales window: its keys.
#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

#include "ui/sales/entry_bar.h"
#include "ui/sales/kind_bar.h"
#include "ui/sales/line_view.h"
#include "ui/sales/matches.h"
#include "ui/sales/sales_window.h"
#include "ui/sales/tiles_panel.h"
#include "ui/sales/totals_panel.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/sheet.h"

namespace ui {

const std::vector<Command>& SalesWindow::commands() {
    using enum Command::Place;
    using enum Command::Typing;
    constexpr QKeyCombination no_key = Qt::Key_unknown;
    static const std::vector<Command> table = {
        {"save", "حفظ البون", key::save, none, [](SalesWindow& w) { w.save_with_dialog(); }, finish},
        {"f2", "إلغاء السجل", Qt::Key_F2, strip,
         [](SalesWindow& w) { w.cancel("CancelRecord", &sales::Checkout::CancelRecord); }},
        {"f3", "إلغاء البون", Qt::Key_F3, strip,
         [](SalesWindow& w) { w.cancel("CancelInvoice", &sales::Checkout::CancelInvoice); }},
        {"hold", "تعليق", Qt::SHIFT | Qt::Key_F2, strip_or_foot, [](SalesWindow& w) { w.hold(); }, finish},
        {"held", "المعلقة", Qt::SHIFT | Qt::Key_F3, strip_or_foot, [](SalesWindow& w) { w.show_held(); },
         keep},
        {"kind", "بيع أو مرتجع", key::kind, none,
         [](SalesWindow& w) { w.act_and_return("SwitchKind", [&] { w.desk_.header().toggle_kind(); }); }},
        {"payment", "نقدي أو آجل", key::payment, none, [](SalesWindow& w) { w.toggle_payment(); }},
        {"card", "بطاقة إئتمان", key::card, none, [](SalesWindow& w) { w.switch_payment(2); }},
        {"tips", "أكراميات", key::tips, none, [](SalesWindow& w) { w.switch_payment(3); }},
        {"cash_exact", "نقدي بالضبط", key::cash[0], none, [](SalesWindow& w) { w.take_cash(0); }, keep},
        {"cash_note_1", "نقدي بالورق المعروض", key::cash[1], none, [](SalesWindow& w) { w.take_cash(1); },
         keep},
        {"cash_note_2", "نقدي بالورق المعروض", key::cash[2], none, [](SalesWindow& w) { w.take_cash(2); },
         keep},
        {"cash_note_3", "نقدي بالورق المعروض", key::cash[3], none, [](SalesWindow& w) { w.take_cash(3); },
         keep},
        {"discount", "خصم البون", key::discount, none, [](SalesWindow& w) { w.totals_->focus_discount(); }},
        {"shift_f1", "فتح الدرج", Qt::SHIFT | Qt::Key_F1, strip_end,
         [](SalesWindow& w) {
             w.act_and_return("OpenDrawer", [&] { w.desk_.checkout().open_drawer_by_key(); });
         }},
        {"f11", "إعادة تشغيل", Qt::Key_F11, strip_end, [](SalesWindow& w) { w.restart(); }},
        {"f12", "خروج", Qt::Key_F12, strip_end, [](SalesWindow& w) { w.leave(); }},
        {"search", "&بحث عن صنف", key::search, menu, [](SalesWindow& w) { w.search(); }},
        {"tiles", "&أصناف سريعة", key::tiles, menu, [](SalesWindow& w) { w.tiles_->toggle(); }, keep},
        {"item_info", "بيانات ال&صنف", Qt::CTRL | Qt::Key_I, menu, [](SalesWindow& w) { w.item_info(); },
         keep},
        {"next_unit", "وحدة السطر ال&تالية", Qt::CTRL | Qt::Key_U, menu,
         [](SalesWindow& w) { w.next_unit(); }},
        // The entry field takes "+" and the line grid takes Delete, so both are part of the caption only.
        {"quick_quantity", "&كمية آخر سطر\t+", no_key, menu, [](SalesWindow& w) { w.quick_quantity(); },
         keep},
        {"delete_line", "&حذف السطر\tDelete", no_key, menu, [](SalesWindow& w) { w.delete_current_line(); },
         keep},
        {"shifts", "&ورديات الدرج", no_key, menu, [](SalesWindow& w) { w.show_shifts(); }, keep},
        {"recall", "رقم البون", key::recall, none, [](SalesWindow& w) { w.kind_bar_->focus_number(); }, keep},
        {"price_level_2", "فئة السعر", key::first_price_level, none,
         [](SalesWindow& w) { w.choose_price_level(2); }, keep},
        {"price_level_3", "فئة السعر", Qt::CTRL | Qt::Key_2, none,
         [](SalesWindow& w) { w.choose_price_level(3); }, keep},
        {"price_level_4", "فئة السعر", Qt::CTRL | Qt::Key_3, none,
         [](SalesWindow& w) { w.choose_price_level(4); }, keep},
        {"price_level_5", "فئة السعر", Qt::CTRL | Qt::Key_4, none,
         [](SalesWindow& w) { w.choose_price_level(5); }, keep},
        {"escape", "الرجوع إلى خانة الكود", Qt::Key_Escape, none, [](SalesWindow& w) { w.escape(); }, pass},
    };
    return table;
}

bool SalesWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QWidget::eventFilter(watched, event);
    auto* widget = static_cast<QWidget*>(watched);
    // The keys work wherever the focus is on this window, but not on a sheet above it or in an open list or
    // menu.
    const QWidget* focus = QApplication::focusWidget();
    if (widget->window() != this || widget != (focus != nullptr ? focus : this) ||
        Sheet::top_of(this) != nullptr || QApplication::activePopupWidget() != nullptr) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* pressed = static_cast<QKeyEvent*>(event);
    if (matches_->take_key(*pressed)) return true;
    const auto modifiers = pressed->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    return press(QKeyCombination(modifiers, static_cast<Qt::Key>(pressed->key())));
}

// Handles keys that nothing else took, because the focus is on a button or nowhere. What is typed or scanned
// then goes to the entry field. Enter presses the button, as on the sheets; it is not passed on, because a
// field would take it and let it through.
void SalesWindow::keyPressEvent(QKeyEvent* event) {
    QWidget* entry = entry_bar_->field();
    auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (is_enter(event->key()) && button != nullptr && button->window() == this &&
        Sheet::top_of(this) == nullptr && !event->isAutoRepeat()) {
        button->click();
        return;
    }
    const bool typed = is_printable(event->text(), event->modifiers()) || event->key() == Qt::Key_Backspace;
    if (!typed || Sheet::top_of(this) != nullptr || entry->hasFocus()) {
        QWidget::keyPressEvent(event);
        return;
    }
    focus_entry();
    QApplication::sendEvent(entry, event);
}

void SalesWindow::focusInEvent(QFocusEvent*) {
    focus_entry();
}

bool SalesWindow::press(QKeyCombination key) {
    if (key.key() == Qt::Key_unknown) return false;
    for (const auto* table : {&screens_, &commands()}) {
        const auto found = std::find_if(table->begin(), table->end(),
                                        [&](const Command& command) { return command.key == key; });
        if (found == table->end()) continue;
        if (found->typing == Command::Typing::pass && is_typing()) return false;
        perform(*found);
        return true;
    }
    return false;
}

// Returns true while a cell or an invoice discount has the focus.
bool SalesWindow::is_typing() const {
    const QWidget* focus = QApplication::focusWidget();
    return lines_->is_editing() ||
           (totals_->isAncestorOf(focus) && qobject_cast<const QLineEdit*>(focus) != nullptr);
}

void SalesWindow::perform(const Command& command) {
    if (Sheet::top_of(this) != nullptr) return;
    using enum Command::Typing;
    if ((command.typing == commit || command.typing == finish) && !finish_editing()) return;
    if (command.typing == finish && !finish_entry()) return;
    const bool is_screen = std::any_of(screens_.begin(), screens_.end(),
                                       [&](const Command& screen) { return &screen == &command; });
    if (is_screen) {
        open_screen(command);
    } else {
        command.run(*this);
    }
}

void SalesWindow::closeEvent(QCloseEvent* event) {
    if (leaving_) return;
    event->ignore();
    if (Sheet::top_of(this) == nullptr) leave();
}

}  // namespace ui
