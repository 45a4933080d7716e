#include "ui/workplace.h"

#include "backup/automatic.h"
#include "common/named_values.h"
#include "database/error.h"
#include "printing/workstation_printer.h"
#include "signin/session.h"
#include "ui/printing/preview.h"
#include "ui/printing/progress.h"
#include "ui/signin/approval_sheet.h"

namespace ui {

namespace {

constexpr std::string_view failure_code = "223";

// Copies the shop if it names folders; a failure is logged.
void back_up(database::Connection& connection, common::Log& log, const std::function<void()>& copy) {
    try {
        if (backup::state_of(connection)) copy();
    } catch (const std::exception& error) {
        log.log_event(database::log_line("BackUp", error), failure_code);
    }
}

}  // namespace

Workplace::Workplace(database::Connection& connection, signin::Session& session, const Program& program)
    : screen_(read_screen_choice(common::screen_file(session.program_folder, session.cash_point))),
      workstation_{connection,         program.services,
                   printer_,           session.program_folder,
                   show_preview,       [](const std::string& title) { return show_progress(title); },
                   session.is_training},
      receipts_(workstation_),
      reports_(workstation_),
      keypad_(screen_),
      sounds_(screen_),
      context_{connection,
               session,
               program.services,
               receipts_,
               reports_,
               printer_,
               screen_,
               keypad_,
               sounds_,
               program.keys,
               program.server,
               program.restart,
               [&connection, services = program.services, copy = program.back_up] {
                   ui::back_up(connection, services.log, copy);
               },
               program.show_window} {
    session.ask_supervisor = [this](const signin::Refused& refused) {
        return ask_supervisor(context_, refused);
    };
}

Workplace::~Workplace() {
    context_.session.ask_supervisor = nullptr;
}

void Workplace::read_printer() {
    const auto& session = context_.session;
    printer_ = printing::read_printer_choice(common::printer_file(session.program_folder, session.cash_point))
                   .value_or(printing::PrinterChoice{session.settings.print});
}

}  // namespace ui
