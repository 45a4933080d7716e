// The register of the screens that are opened from the sales screen. A later screen is added in one place
// (neighbours.cpp) and then stands on the key strip, in the menu and behind its key.
#pragma once

#include <QString>
#include <functional>
#include <vector>

class QWidget;

namespace ui {

struct ScreenEntry {
    QString name;     // object name of its button and menu entry: "key_f8", "menu_password"
    QString caption;  // with "&" before the mnemonic
    int key = 0;      // Qt::Key, 0 for none
    bool shift = false;
    QString cap;  // the key as the strip shows it
    // Opens the screen over the given window and returns when it was left.
    std::function<void(QWidget*)> open;
    // With the Ctrl key instead of alone or with Shift; such a screen stands not on the key strip.
    bool control = false;
    // The short caption of its button below the line grid; empty for none.
    QString button = {};
};

class Screens {
  public:
    void add(ScreenEntry entry) { entries_.push_back(std::move(entry)); }
    const std::vector<ScreenEntry>& entries() const { return entries_; }
    // The screen of a key; null when no screen stands behind it.
    const ScreenEntry* find(int key, bool shift, bool control = false) const {
        for (const ScreenEntry& entry : entries_) {
            if (entry.key != 0 && entry.key == key && entry.shift == shift && entry.control == control)
                return &entry;
        }
        return nullptr;
    }

  private:
    std::vector<ScreenEntry> entries_;
};

}  // namespace ui
