#include "ui/till.h"

#include <QApplication>
#include <QEventLoop>
#include <memory>

#include "ui/display/customer_screen.h"
#include "ui/help/open_help.h"
#include "ui/journal/trail_writer.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"
#include "ui/signin/sign_in_window.h"
#include "ui/signin/waiting_window.h"
#include "ui/widgets/text.h"

namespace ui {

bool wait_for_server(const std::string& server, const std::function<bool()>& attempt,
                     const std::function<void(QWidget&)>& show_window) {
    return WaitingWindow(qt(server), show_window).run(attempt);
}

void show_copying(const std::function<void(const std::function<void(int)>& tell)>& copying,
                  const std::function<void(QWidget&)>& show_window) {
    CopyingWindow(show_window, "نسخة احتياطية قبل التحديث",
                  "تحفظ الآن نسخة من بيانات المحل قبل تحديثها إلى الإصدار الجديد. لا تغلق الجهاز، ويكمل "
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

void run_till(database::Connection& connection, signin::Session& session, const Workplace::Program& program,
              const Train& train) {
    Workplace workplace(connection, session, program);
    const Context& context = workplace.context();

    const HelpKey help(Guide::cashier);
    TrailWriter journal(connection, session, program.server, program.services.log);
    std::unique_ptr<SignInWindow> sign_in;
    for (;;) {
        sign_in = std::make_unique<SignInWindow>(context, train != nullptr);
        if (!sign_in->run()) {
            journal.write();
            return;
        }
        if (!sign_in->wants_training()) break;
        // Its window stays until the training has its own.
        train([&] { sign_in.reset(); });
    }
    workplace.read_printer();

    SalesWindow sales(context, screen_commands());
    QEventLoop loop;
    bool is_left = false;  // not to be started again at once
    QObject::connect(&sales, &SalesWindow::finished, &loop, [&](bool restart) {
        is_left = !restart;
        loop.quit();
    });
    // The sign-in window stays until the sales window is shown, so that the desktop does not appear in
    // between.
    program.show_window(sales);
    sign_in.reset();
    sales.activateWindow();
    if (!sales.open()) return;
    CustomerScreen customer(sales.desk(), session, sales);
    QObject::connect(&sales, &SalesWindow::shown, &customer, &CustomerScreen::mirror);
    loop.exec();
    journal.write();
    if (is_left) context.back_up();
}

}  // namespace ui
