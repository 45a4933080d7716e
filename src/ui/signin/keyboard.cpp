#include "ui/signin/keyboard.h"

#include <QGuiApplication>
#include <QKeyEvent>

// X.h defines words that Qt uses, so it comes last.
#include <X11/XKBlib.h>

namespace ui {

namespace {

constexpr auto arabic = "عربي";

}  // namespace

void KeyboardState::learn(const QKeyEvent& key) {
    if (key.text().isEmpty() || !key.text().front().isLetter()) return;
    const QChar letter = key.text().front();
    const bool is_arabic = letter.script() == QChar::Script_Arabic;
    layout = is_arabic ? arabic : "English";
    // Arabic letters have no case.
    if (!is_arabic) caps_lock = letter.isUpper() != bool(key.modifiers() & Qt::ShiftModifier);
}

QString KeyboardState::text() const {
    const QString shown =
        layout.isEmpty() ? QString("تظهر لغتها مع أول حرف") : layout;  // with the first letter
    return "لوحة المفاتيح: " + shown + (caps_lock ? " · Caps Lock" : "");
}

std::optional<KeyboardState> keyboard_now() {
    // The off-screen platform may know a server too, but not its keyboard.
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || QGuiApplication::platformName() != "xcb") return std::nullopt;
    Display* display = x11->display();
    XkbStateRec state{};
    XkbDescPtr keyboard = XkbAllocKeyboard();
    if (keyboard == nullptr) return std::nullopt;
    std::optional<KeyboardState> found;
    if (XkbGetState(display, XkbUseCoreKbd, &state) == Success &&
        XkbGetNames(display, XkbGroupNamesMask, keyboard) == Success && state.group < XkbNumKbdGroups) {
        found.emplace().caps_lock = (state.locked_mods & LockMask) != 0;
        if (char* name = XGetAtomName(display, keyboard->names->groups[state.group])) {
            const QString layout = QString::fromUtf8(name);
            found->layout = layout.contains("Arabic") ? QString(arabic) : layout;
            XFree(name);
        }
    }
    XkbFreeKeyboard(keyboard, 0, True);
    return found;
}

}  // namespace ui
