// The window that is shown while the shop's server does not answer.
#pragma once

#include <QString>
#include <functional>
#include <thread>

#include "ui/signin/front_window.h"

class QLabel;

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

}  // namespace ui
