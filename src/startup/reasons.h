// Why start-up failed, in words for the cashier.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "database/error.h"

namespace startup {

// A failure of the files or the machine: what() is the cause in English for the log, reason() the text for
// the cashier.
class StartUpError : public std::runtime_error {
  public:
    StartUpError(const std::string& cause, std::string reason)
        : std::runtime_error(cause), reason_(std::move(reason)) {}
    const std::string& reason() const { return reason_; }

  private:
    std::string reason_;
};

// The text for the cashier about a database error. `database` is the catalog or the shop's file, as the
// connection file names it.
std::string reason_of(const database::Error& error, std::string_view database);

}  // namespace startup
