#include "ui/till.h"

#include <QApplication>
#include <QEventLoop>
#include <memory>

#include "backup/automatic.h"
#include "database/error.h"
#include "printing/pages/system_printers.h"
#include "printing/workstation_printer.h"
#include "signin/session.h"
#include "ui/display/customer_screen.h"
#include "ui/help/open_help.h"
#include "ui/journal/trail_writer.h"
#include "ui/printing/preview.h"
#include "ui/printing/progress.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"
#include "ui/signin/approval_sheet.h"
#include "ui/signin/sign_in_window.h"
#include "ui/signin/waiting_window.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/sounds.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr std::string_view failure_code = "223";

// Empties a function that must not outlive what it refers to.
struct Release {
    std::function<std::optional<audit::Person>(const signin::Refused&)>& function;
    ~Release() { function = nullptr; }
};

}  // namespace

bool wait_for_server(const std::string& server, const std::function<bool()>& attempt,
                     const std::function<void(QWidget&)>& show_window) {
    return WaitingWindow(qt(server), show_window).run(attempt);
}

void show_copying(const std::function<void(const std::function<void(int)>& tell)>& copying,
                  const std::function<void(QWidget&)>& show_window) {
    CopyingWindow(show_window, "نسخة احتياطية قبل التحديث",
                  "تحفظ الآن نسخة من بيانات المتجر قبل تحديثها إلى الإصدار الجديد. لا تغلق الجهاز، ويكمل "
                  "البرنامج وحده عندما تنتهي.")
        .run(copying);
}

void show_front() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() != Qt::Window) continue;
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->raise();
        window->activateWindow();
    }
}

void Till::run(database::Connection& connection, signin::Session& session) {
    printing::PrinterChoice choice;
    ScreenChoice screen = read_screen_choice(screen_file(session.program_folder, session.cash_point));
    const printing::pages::Workstation workstation{
        connection,    services_,          choice, session.program_folder, show_preview,
        show_progress, session.is_training};
    printing::pages::SystemReceiptPrinter receipts(workstation);
    printing::pages::SystemReportPrinter reports(workstation);
    const auto back_up = [&] {
        try {
            if (backup::state_of(connection)) back_up_();
        } catch (const std::exception& error) {
            services_.log.log_event(database::log_line("BackUp", error), failure_code);
        }
    };
    Keypad keypad(screen);
    Sounds sounds(screen);
    const Context context{connection, session, services_, receipts, reports,  choice,  screen,
                          keypad,     sounds,  keys_,     server_,  restart_, back_up, show_window_};

    const HelpKey help;
    TrailWriter journal(connection, session, server_, services_.log);
    session.ask_supervisor = [&context](const signin::Refused& refused) {
        return ask_supervisor(context, refused);
    };
    const Release release{session.ask_supervisor};
    std::unique_ptr<SignInWindow> sign_in;
    for (;;) {
        sign_in = std::make_unique<SignInWindow>(context, train_ != nullptr);
        if (!sign_in->run()) {
            journal.write();
            return;
        }
        if (!sign_in->wants_training()) break;
        // Its window stays until the training has its own.
        train_([&] { sign_in.reset(); });
    }
    // The receipt port is that of the settings until another is chosen at this workstation.
    choice = printing::read_printer_choice(printing::printer_file(session.program_folder, session.cash_point))
                 .value_or(printing::PrinterChoice{session.settings.print});

    SalesWindow sales(context, screen_commands());
    QEventLoop loop;
    bool is_left = false;  // not to be started again at once
    QObject::connect(&sales, &SalesWindow::finished, &loop, [&](bool restart) {
        is_left = !restart;
        loop.quit();
    });
    // The sign-in window stays until the sales window is shown, so that the desktop does not appear in
    // between.
    show_window_(sales);
    sign_in.reset();
    sales.activateWindow();
    if (!sales.open()) return;
    CustomerScreen customer(sales.desk(), session, sales);
    QObject::connect(&sales, &SalesWindow::shown, &customer, &CustomerScreen::mirror);
    loop.exec();
    journal.write();
    if (is_left) back_up();
}

}  // namespace ui
