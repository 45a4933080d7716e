// The panel over the window in use while its action waits for the server.
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <chrono>

class QLabel;
class QPushButton;

namespace ui {

// Takes neither the focus nor the keys, so that the screen below is as it was when it goes. Without a window
// to lie over it is one of its own.
class ServerPanel : public QWidget {
    Q_OBJECT
  public:
    // Shows the seconds since `begun`.
    ServerPanel(QWidget* window, const QElapsedTimer& begun);

    std::chrono::milliseconds shown_for() const { return std::chrono::milliseconds(shown_.elapsed()); }
    bool has_button_at(const QPoint& global) const;

  signals:
    void given_up();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void show_seconds();

    QElapsedTimer begun_;
    QElapsedTimer shown_;
    QLabel* seconds_;
    QPushButton* button_;
};

}  // namespace ui
