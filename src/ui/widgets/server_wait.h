// What the screen does while a server is silent: after a second a panel says so with the seconds, painting
// and the clock go on, keys wait in the key queue, and Esc or the panel's button gives the action up.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <optional>

#include "database/threaded_connection.h"

class QEventLoop;
class QLabel;
class QWidget;

namespace ui {

class KeyQueue;
class ServerPanel;

// Dynamic property of a timer that runs on while a server is waited for. It must not ask the database.
inline constexpr auto runs_while_waiting = "runs_while_waiting";

class ServerWait : public QObject, public database::Wait {
    Q_OBJECT
  public:
    explicit ServerWait(KeyQueue& keys);
    ~ServerWait() override;

    // An action may hold up the screen for a second in total, however many statements it has.
    std::chrono::milliseconds patience() override;
    bool wait(const std::function<bool()>& ended) override;
    void wake() override;
    void ended(const std::exception* error) override;

  signals:
    // What became of a statement.
    void answered();
    void failed();  // the server is away or silent

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void end_action();
    void show_panel();
    void give_up();
    bool presses_button(const QEvent& event) const;

    KeyQueue& keys_;
    QElapsedTimer begun_;  // since the action's first statement; invalid between actions
    QPointer<ServerPanel> panel_;
    QEventLoop* loop_ = nullptr;
    bool has_given_up_ = false;
};

}  // namespace ui
