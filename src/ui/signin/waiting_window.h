// The windows shown while a start takes long: the shop's server does not answer, or a large shop is copied
// before its update.
#pragma once

#include <QString>
#include <functional>
#include <thread>

#include "ui/signin/front_window.h"

class QLabel;
class QProgressBar;

namespace ui {

class WaitingWindow : public FrontWindow {
  public:
    // `server` is the name that the cashier is told.
    WaitingWindow(const QString& server, std::function<void(QWidget&)> show_window);
    ~WaitingWindow() override;

    // Calls `attempt` in a thread of its own, every few seconds, until it returns true. The window appears if
    // that takes longer than a moment, and goes with the last attempt. Returns false if the cashier left.
    bool run(const std::function<bool()>& attempt);

  private:
    void try_once();

    std::function<void(QWidget&)> show_window_;
    std::function<bool()> attempt_;
    std::thread thread_;  // of the attempt that runs now
    QLabel* state_;
    int attempts_ = 0;
};

// It cannot be left before the copy is made.
class CopyingWindow : public FrontWindow {
  public:
    CopyingWindow(std::function<void(QWidget&)> show_window, const QString& heading, const QString& text);

    // Runs `copying` in a thread of its own and shows the percentage that it reports; the window appears if
    // it takes longer than a moment. Throws what `copying` throws.
    void run(const std::function<void(const std::function<void(int)>& tell)>& copying);

  protected:
    void keyPressEvent(QKeyEvent*) override {}
    void closeEvent(QCloseEvent* event) override;

  private:
    std::function<void(QWidget&)> show_window_;
    QProgressBar* bar_;
};

}  // namespace ui
