// A training from its copy of the shop to the end, over whatever the program showed before.
#pragma once

#include <functional>

#include "common/services.h"
#include "startup/start_up.h"

class QWidget;

namespace ui {

class KeyQueue;

class Training {
  public:
    // `shop` is the environment in which the shop itself was started.
    Training(startup::Environment shop, common::Services services, KeyQueue& keys,
             std::function<void(QWidget&)> show_window)
        : shop_(std::move(shop)), services_(services), keys_(keys), show_window_(std::move(show_window)) {}

    // Makes the day's copy and runs the till on it, in its frame, until the cashier leaves it. `ready` is
    // called once there is a copy. Returns false after showing why there is no training.
    bool run(std::int64_t cash_point, const std::function<void()>& ready);

  private:
    bool run_once(const startup::Environment& environment, const common::Services& services);

    startup::Environment shop_;
    common::Services services_;
    KeyQueue& keys_;
    std::function<void(QWidget&)> show_window_;
};

}  // namespace ui
