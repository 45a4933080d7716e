// A button that shows the key it stands for: beside its caption on a strip, below it on a payment option.
#pragma once

#include <QPushButton>
#include <functional>
#include <vector>

namespace ui {

// A key as its cap shows it: "F9", "⇧F9", "Ctrl B"; empty for Qt::Key_unknown.
QString key_cap(QKeyCombination key);

class KeyButton : public QPushButton {
  public:
    enum class Look { strip, tool, pay, save };
    // `name` is the object name; `key` the cap's text ("F2", "⇧F9").
    KeyButton(const QString& name, const QString& key, const QString& caption, Look look,
              QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont font_of(bool cap) const;

    QString key_;
    QString caption_;
    Look look_;
};

// The strip of function keys at the foot of a screen: each key, what it does, and a button to press.
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
