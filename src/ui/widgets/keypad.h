// The keypad: keys on the screen for whatever field is in use, so that a till can be worked by touch alone.
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace ui {

struct ScreenChoice;
class Pad;

// Opens and closes the keypad by its key, its buttons and the finger that taps a field. On a sheet, where no
// button opens it, a click into a field brings back one that was closed by its own key. The pad follows the
// focus from window to window and hides while nothing can be typed; it never takes the focus, and its keys
// are handled like those of the keyboard.
class Keypad : public QObject {
    Q_OBJECT
  public:
    // Begins open if the workstation chose so.
    explicit Keypad(const ScreenChoice& choice);
    ~Keypad() override;

    void toggle() { open(!is_open_); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void open(bool wanted);
    void shut_by_its_key();
    void follow();

    const ScreenChoice& choice_;
    bool chosen_;  // the choice when it was last read
    bool is_open_;
    bool comes_back_ = false;  // was closed by its own key, so a cashier without a keyboard will need it
    QPointer<Pad> pad_;
};

// The key as screens show it.
inline constexpr auto keypad_cap = "Ctrl K";

}  // namespace ui
