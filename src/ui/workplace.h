// What the context of the screens refers to, for a program that runs on one shop.
#pragma once

#include "printing/pages/system_printers.h"
#include "printing/receipt.h"
#include "ui/widgets/context.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/sounds.h"

namespace ui {

// While it lives, refused actions ask for a supervisor.
class Workplace {
  public:
    struct Program {
        common::Services services;
        KeyQueue& keys;
        ServerLink& server;
        // See Context. `back_up` may throw; it is asked only if the shop names folders.
        std::function<bool()> restart;
        std::function<void()> back_up;
        std::function<void(QWidget&)> show_window;
    };
    Workplace(database::Connection& connection, signin::Session& session, const Program& program);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    const Context& context() const { return context_; }
    // Reads the receipt printer: the port of the settings unless this workstation has chosen another. Call
    // after sign-in.
    void read_printer();

  private:
    printing::PrinterChoice printer_;
    ScreenChoice screen_;
    printing::pages::Workstation workstation_;
    printing::pages::SystemReceiptPrinter receipts_;
    printing::pages::SystemReportPrinter reports_;
    Keypad keypad_;
    Sounds sounds_;
    Context context_;
};

}  // namespace ui
