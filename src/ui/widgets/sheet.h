// A screen or box over the window it was opened from, until it is left. It is not a window of its own, so it
// never waits for the window manager and no key is lost between two windows.
#pragma once

#include <QPointer>
#include <QWidget>

class QEventLoop;
class QHBoxLayout;
class QVBoxLayout;

namespace ui {

class Sheet : public QWidget {
    Q_OBJECT
  public:
    // Opens over the window of `host`, or as a window of its own if that is null or not visible.
    explicit Sheet(QWidget* host, const QString& title = {});

    // Shows the sheet and returns what it was left with, 0 if it was closed. The focus then goes back to
    // where it was, or to the sheet or window below if it cannot.
    int run();
    void leave(int result = 0);

    // The topmost sheet over a window; null if there is none.
    static Sheet* top_of(const QWidget* window);
    // Shows a line above the sheets that are open over a window, until the last of them is left. They make
    // room for it. Does nothing if no sheet is open.
    static void tell(QWidget* window, const QString& text);

  protected:
    // The two parts of run(), for a sheet shown while work goes on.
    void open();
    void shut();
    QVBoxLayout* body() { return body_; }
    void set_card_width(double measure);
    QWidget* card() { return card_; }
    // A row of fields or buttons below everything that the body holds so far.
    QHBoxLayout* add_row();
    // Esc leaves with 0 by default.
    virtual void escape() { leave(0); }
    // Enter, unless a button has the focus: that button is pressed.
    virtual void enter() {}
    // Moves the focus to where typing begins, by default to the first field.
    virtual void take_focus();

    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void cover();
    void focus_below();

    QPointer<QWidget> former_;  // had the focus before
    QWidget* card_ = nullptr;
    QVBoxLayout* body_ = nullptr;
    QEventLoop* loop_ = nullptr;
    int result_ = 0;
};

// The window that the cashier works in and over which boxes open; null before the first one is shown.
QWidget* window_in_use();

}  // namespace ui
