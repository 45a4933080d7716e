#include "office/office.h"

#include <QEventLoop>
#include <memory>

#include "office/office_window.h"
#include "ui/help/open_help.h"
#include "ui/journal/trail_writer.h"
#include "ui/shop/first_start_window.h"
#include "ui/signin/sign_in_window.h"

namespace office {

bool first_start(const std::filesystem::path& folder, const common::Services& services,
                 const std::function<void(QWidget&)>& show_window) {
    const ui::HelpKey help(ui::Guide::office);
    return ui::FirstStartWindow(folder, services, show_window).run();
}

void run(database::Connection& connection, signin::Session& session, const ui::Workplace::Program& program) {
    ui::Workplace workplace(connection, session, program);
    const ui::HelpKey help(ui::Guide::office);
    ui::TrailWriter journal(connection, session, program.server, program.services.log);
    auto sign_in = std::make_unique<ui::SignInWindow>(workplace.context(), false);
    if (sign_in->run()) {
        workplace.read_printer();
        OfficeWindow window(workplace.context());
        QEventLoop loop;
        QObject::connect(&window, &OfficeWindow::finished, &loop, &QEventLoop::quit);
        // The sign-in window stays until the next one is shown, so that the desktop does not appear in
        // between.
        program.show_window(window);
        sign_in.reset();
        window.activateWindow();
        window.open();
        loop.exec();
    }
    journal.write();
}

}  // namespace office
