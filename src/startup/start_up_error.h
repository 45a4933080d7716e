// What went wrong with a file beside the program, or on the road to the shop.
#pragma once

#include <stdexcept>
#include <string>

namespace startup {

// what() is the true cause in English for the log; the reason is what the cashier is told, in Arabic.
class StartUpError : public std::runtime_error {
  public:
    StartUpError(const std::string& cause, std::string reason)
        : std::runtime_error(cause), reason_(std::move(reason)) {}
    const std::string& reason() const { return reason_; }

  private:
    std::string reason_;
};

}  // namespace startup
