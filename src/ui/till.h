// The till from sign-in to exit: the sign-in window, then the sales window for the working day.
#pragma once

#include <functional>
#include <string>

#include "common/services.h"

class QWidget;

namespace database {
class Connection;
}
namespace signin {
struct Session;
}

namespace ui {

class KeyQueue;
class ServerLink;

// The waiting window; see startup::Environment::wait_for_server.
bool wait_for_server(const std::string& server, const std::function<bool()>& attempt,
                     const std::function<void(QWidget&)>& show_window);
// The window that shows a copying; see startup::Environment::show_copying.
void show_copying(const std::function<void(const std::function<void(int)>& tell)>& copying,
                  const std::function<void(QWidget&)>& show_window);
// Brings the window in use to the front.
void show_front();

class Till {
  public:
    // `restart` starts the program again and returns false if that failed; `back_up` copies the shop into the
    // folders that it names; `show_window` shows a window. `train` runs a training and calls `ready` when its
    // own windows come; without it the sign-in window offers none.
    using Train = std::function<void(const std::function<void()>& ready)>;
    Till(common::Services services, KeyQueue& keys, ServerLink& server, std::function<bool()> restart,
         std::function<void()> back_up, std::function<void(QWidget&)> show_window, Train train = {})
        : services_(services),
          keys_(keys),
          server_(server),
          restart_(std::move(restart)),
          back_up_(std::move(back_up)),
          show_window_(std::move(show_window)),
          train_(std::move(train)) {}

    // Returns when the cashier has left the program.
    void run(database::Connection& connection, signin::Session& session);

  private:
    common::Services services_;
    KeyQueue& keys_;
    ServerLink& server_;
    std::function<bool()> restart_;
    std::function<void()> back_up_;
    std::function<void(QWidget&)> show_window_;
    Train train_;
};

}  // namespace ui
