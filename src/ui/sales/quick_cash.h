// Buttons that take a cash sale at one press: the net itself, and what customers hand over for it.
#pragma once

#include <QWidget>
#include <array>
#include <optional>
#include <vector>

#include "common/denominations.h"

namespace ui {

class KeyButton;

class QuickCash : public QWidget {
    Q_OBJECT
  public:
    static constexpr int exact = 0;
    static constexpr int count = 4;

    // The object names are `name` with "_exact" and "_note_1" to "_note_3" behind it.
    explicit QuickCash(const QString& name, QWidget* parent = nullptr);
    // Offers the net and the likely payments above it.
    void offer(common::Amount net, const common::Denominations& denominations);
    // The amount that a button takes; nothing if it offers none now.
    std::optional<common::Amount> amount(int button) const;
    // The button whose key this is.
    static std::optional<int> button_of(QKeyCombination key);

  signals:
    void taken(int button);

  private:
    std::array<KeyButton*, count> buttons_{};
    std::vector<common::Amount> amounts_;
};

}  // namespace ui
