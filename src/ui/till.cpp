#include "ui/till.h"

#include <QEventLoop>
#include <memory>

#include "printing/pages/system_printers.h"
#include "signin/session.h"
#include "ui/help/open_help.h"
#include "ui/printing/preview.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"
#include "ui/signin/sign_in_window.h"

namespace ui {

void Till::run(database::Connection& connection, signin::Session& session) {
    printing::PrinterChoice choice;
    const printing::pages::Workstation workstation{connection, services_, choice, session.program_folder,
                                                   show_preview};
    printing::pages::SystemReceiptPrinter receipts(workstation);
    printing::pages::SystemReportPrinter reports(workstation);
    const Context context{connection, session, services_, receipts,    reports,
                          choice,     keys_,   restart_,  show_window_};

    const HelpKey help;
    auto sign_in = std::make_unique<SignInWindow>(context);
    if (!sign_in->run()) return;
    // The receipt port is that of the settings until the cashier chooses another.
    choice.receipt_port = session.settings.print;

    SalesWindow sales(context, screen_commands());
    QEventLoop loop;
    QObject::connect(&sales, &SalesWindow::finished, &loop, &QEventLoop::quit);
    // The sign-in window stays until the sales window is shown, so that the desktop does not appear in
    // between.
    show_window_(sales);
    sign_in.reset();
    sales.activateWindow();
    if (!sales.open()) return;
    loop.exec();
}

}  // namespace ui
