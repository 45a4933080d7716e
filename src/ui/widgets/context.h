// What every screen needs: the shop, the workstation's state, the printers and the outside world.
#pragma once

#include <functional>

#include "common/services.h"

class QWidget;

namespace database {
class Connection;
}
namespace printing {
class ReceiptPrinter;
class ReportPrinter;
struct PrinterChoice;
}  // namespace printing
namespace signin {
struct Session;
}

namespace ui {

class Keypad;
class KeyQueue;
struct ScreenChoice;
class ServerLink;
class Sounds;

struct Context {
    database::Connection& connection;
    signin::Session& session;
    common::Services services;
    printing::ReceiptPrinter& receipts;
    printing::ReportPrinter& reports;
    printing::PrinterChoice& printer_choice;
    ScreenChoice& screen_choice;
    Keypad& keypad;
    Sounds& sounds;
    KeyQueue& keys;
    ServerLink& server;
    // Starts the program again with its cash-point number. Returns false if that failed; then this
    // instance must go on.
    std::function<bool()> restart;
    // Copies the shop into the folders that it names, while the program goes on; nothing if it names none.
    std::function<void()> back_up;
    // Shows a window of the program: over the whole screen, or as a play needs it.
    std::function<void(QWidget&)> show_window;
};

}  // namespace ui
