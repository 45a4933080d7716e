// What every screen is handed: the shop, the workstation's state, the printers and the outside world.
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

class KeyQueue;

struct Context {
    database::Connection& connection;
    signin::Session& session;
    common::Services services;
    printing::ReceiptPrinter& receipts;
    printing::ReportPrinter& reports;
    printing::PrinterChoice& printer_choice;
    KeyQueue& keys;
    // Starts the program again with its cash-point number; false when that failed and this instance must
    // stay.
    std::function<bool()> restart;
    // Puts a window of the program on the screen: over all of it, or as a play wants it.
    std::function<void(QWidget&)> show_window;
};

}  // namespace ui
