// The keyboard's layout and Caps Lock, shown to users who cannot see what they type.
#pragma once

#include <QString>
#include <optional>

class QKeyEvent;

namespace ui {

struct KeyboardState {
    QString layout;  // empty while it is not known
    bool caps_lock = false;

    // Takes the layout from a typed letter. Keys without letters tell nothing.
    void learn(const QKeyEvent& key);
    QString text() const;
};

// The state according to the X server; nothing on another platform.
std::optional<KeyboardState> keyboard_now();

}  // namespace ui
