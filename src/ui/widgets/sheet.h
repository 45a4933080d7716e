// A screen or box that lies over the window it was opened from, until it is left. Being no window of its own
// it never waits for the window manager, so no key is lost between two windows.
#pragma once

#include <QPointer>
#include <QWidget>

class QEventLoop;
class QLabel;
class QVBoxLayout;

namespace ui {

class Sheet : public QWidget {
    Q_OBJECT
  public:
    // Lies over the window of `host`; without a host, or a visible one, it is a window of its own.
    explicit Sheet(QWidget* host, const QString& title = {});

    // Shows the sheet and returns what it was left with; 0 when it was closed. The focus then is where it
    // was.
    int run();
    void leave(int result = 0);

    // The topmost sheet over a window; null when there is none.
    static Sheet* top_of(const QWidget* window);

  protected:
    QVBoxLayout* body() { return body_; }
    void set_card_width(double measure);
    QWidget* card() { return card_; }
    // Esc. Leaves with 0 unless a sheet knows better.
    virtual void escape() { leave(0); }
    // Where typing begins; the first field unless a sheet knows better.
    virtual void take_focus();

    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void cover();

    QWidget* card_ = nullptr;
    QVBoxLayout* body_ = nullptr;
    QEventLoop* loop_ = nullptr;
    int result_ = 0;
};

}  // namespace ui
