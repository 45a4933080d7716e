// The window that is shown while the shop's server does not answer.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <thread>

class QEventLoop;
class QLabel;

namespace ui {

class WaitingWindow : public QWidget {
  public:
    // `server` is the name that the cashier is told.
    WaitingWindow(const QString& server, std::function<void(QWidget&)> show_window);
    ~WaitingWindow() override;

    // Calls `attempt` in a thread of its own, every few seconds, until it returns true. The window appears if
    // that takes longer than a moment, and goes with the last attempt. Returns false if the cashier left.
    bool run(const std::function<bool()>& attempt);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void try_once();
    void leave(bool connected);

    std::function<void(QWidget&)> show_window_;
    std::function<bool()> attempt_;
    std::thread thread_;  // of the attempt that runs now
    QLabel* state_;
    QEventLoop* loop_ = nullptr;
    int attempts_ = 0;
    bool connected_ = false;
};

}  // namespace ui
