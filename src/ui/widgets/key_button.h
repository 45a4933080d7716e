// Buttons that show the key that does the same: beside the caption on a strip, below it on a payment option.
#pragma once

#include <QPushButton>
#include <functional>
#include <vector>

class QHBoxLayout;

namespace ui {

// A key as its cap shows it: "F9", "⇧F9", "Ctrl B"; empty for Qt::Key_unknown.
QString key_cap(QKeyCombination key);

class KeyButton : public QPushButton {
  public:
    enum class Look { strip, tool, pay, save };
    // `name` is the object name; `key` the cap's text ("F2", "⇧F9").
    KeyButton(const QString& name, const QString& key, const QString& caption, Look look,
              QWidget* parent = nullptr);

    void set_caption(const QString& caption);
    // Below the caption the key takes no width.
    void set_key_below(bool below);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont font_of(bool cap) const;

    QString key_;
    QString caption_;
    Look look_;
    bool key_below_;
};

// The two large buttons at the foot of a sheet, for Enter and Esc.
struct ConfirmButtons {
    KeyButton* confirm;
    KeyButton* back;
};
ConfirmButtons confirm_buttons(QHBoxLayout* row, const QString& name, const QString& caption);

// The strip of function keys at the foot of a screen, one button for each key.
class KeyStrip : public QWidget {
  public:
    explicit KeyStrip(QWidget* parent = nullptr);
    // Adds a button at the left end. Its object name is "key_" and `name` ("key_shift_f9"). A spare button is
    // shown only if that needs no further row.
    void add(const QString& name, const QString& key, const QString& caption, std::function<void()> action,
             bool is_spare = false);
    // Calls `told` with whether the spare buttons are shown.
    void tell_of_spare(std::function<void(bool)> told) { told_ = std::move(told); }

  protected:
    // Uses one row if the screen is wide enough, otherwise two or more.
    void resizeEvent(QResizeEvent* event) override;

  private:
    void arrange();
    using Row = std::vector<KeyButton*>;
    // The keys one after the other in as many rows as they need.
    std::vector<Row> rows_of(const Row& keys) const;
    static std::vector<Row> even_rows(const Row& keys, std::size_t count);
    Row keys_;
    Row spare_;  // of them
    std::function<void(bool)> told_;
};

}  // namespace ui
