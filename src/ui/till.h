// The till from sign-in to exit: the sign-in window, then the sales window for the working day.
#pragma once

#include <functional>
#include <string>

#include "ui/workplace.h"

namespace ui {

// The waiting window; see startup::Environment::wait_for_server.
bool wait_for_server(const std::string& server, const std::function<bool()>& attempt,
                     const std::function<void(QWidget&)>& show_window);
// The window shown while the shop is copied; see startup::Environment::show_copying.
void show_copying(const std::function<void(const std::function<void(int)>& tell)>& copying,
                  const std::function<void(QWidget&)>& show_window);
// Brings the window in use to the front.
void show_front();

// Runs a training and calls `ready` when its own windows come.
using Train = std::function<void(const std::function<void()>& ready)>;

// Returns when the cashier has left the program. Without `train` the sign-in window offers no training.
void run_till(database::Connection& connection, signin::Session& session, const Workplace::Program& program,
              const Train& train = {});

}  // namespace ui
