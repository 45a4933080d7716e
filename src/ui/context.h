// What every screen is handed: the shop, the workstation's state and the outside world.
#pragma once

#include <functional>

#include "common/outside.h"

namespace database {
class Connection;
}
namespace printing {
class ReceiptPrinter;
}
namespace signin {
struct Session;
}

namespace ui {

class KeyQueue;

struct Context {
    database::Connection& connection;
    signin::Session& session;
    common::Outside outside;
    printing::ReceiptPrinter& printer;
    KeyQueue& keys;
    // Starts the program again with its cash-point number; false when that failed and this instance must
    // stay.
    std::function<bool()> restart;
};

}  // namespace ui
