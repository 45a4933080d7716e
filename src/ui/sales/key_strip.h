// The strip of function keys at the foot of a screen: each key, what it does, and a button to press.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

namespace ui {

class KeyButton;

class KeyStrip : public QWidget {
  public:
    explicit KeyStrip(QWidget* parent = nullptr);
    // Adds a key at the left end. Its object name is "key_" and the key in small letters ("key_shift_f9").
    void add(const QString& name, const QString& key, const QString& caption, std::function<void()> action);

  protected:
    // The keys stand in one row where the screen is wide enough, else in two or more.
    void resizeEvent(QResizeEvent* event) override;

  private:
    void arrange();
    std::vector<std::vector<KeyButton*>> even_rows(std::size_t count) const;
    std::vector<KeyButton*> keys_;
};

}  // namespace ui
