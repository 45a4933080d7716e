// Whether the shop's server can be reached. After a failed statement the server is asked in the background
// until it answers, and the line on the sales window says so. An idle till asks nothing.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "common/clock.h"
#include "database/threaded_connection.h"
#include "ui/widgets/server_wait.h"

namespace ui {

class ServerLink : public QObject {
    Q_OBJECT
  public:
    // Asks the server for a sign of life; returns the time to its answer, or nothing if it gave none.
    using Ping = std::function<std::optional<std::chrono::microseconds>()>;

    ServerLink(KeyQueue& keys, common::Clock& clock);

    // Wraps an opened connection to a server so that its statements no longer hold up the screen. The
    // connection to a shop in a file is returned as it is.
    std::unique_ptr<database::Connection> attach(std::unique_ptr<database::Connection> opened, Ping ping);

    // Runs `work` on the connection in another thread while the screen goes on, and calls `done` afterwards,
    // or `failed` if it threw. To be called only while there is a server.
    void run_later(
        std::function<void(database::Connection&)> work, std::function<void()> done,
        std::function<void()> failed = [] {});

    bool is_lost() const { return state_ == State::lost; }
    // What the cashier is told: since when the server is away, or for some seconds that it is back, and how
    // fast. Empty otherwise.
    QString text() const;

  signals:
    void changed();

  private:
    enum class State { reached, lost, back };
    void statement_failed();
    void statement_answered();
    void ask();
    void answered(std::optional<std::chrono::microseconds> time);

    ServerWait wait_;
    common::Clock& clock_;
    database::ThreadedConnection* connection_ = nullptr;
    Ping ping_;
    State state_ = State::reached;
    std::optional<common::TimeOfDay> since_;  // the first failure
    std::chrono::microseconds answer_time_{};
    bool is_asking_ = false;
    QTimer next_;  // attempt, or the end of the line
};

}  // namespace ui
