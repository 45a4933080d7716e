#include "ui/program.h"

#include <QApplication>
#include <QIcon>
#include <QProcess>
#include <QScreen>
#include <QWidget>
#include <cstdio>

#include "database/sqlserver/open.h"
#include "ui/till.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

bool is_set(const char* variable) {
    return !qEnvironmentVariableIsEmpty(variable);
}

}  // namespace

bool has_desktop() {
    return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY");
}

bool has_screen(const char* program) {
    if (has_desktop() || is_set("QT_QPA_PLATFORM")) return true;
    std::fprintf(stderr, "%s: there is no display to show it on (DISPLAY is not set)\n", program);
    return false;
}

void prepare_application() {
    // An input method would take keys past the key queue. Neither layout of a till needs one.
    if (!qEnvironmentVariableIsSet("QT_IM_MODULE")) qputenv("QT_IM_MODULE", "none");
}

void set_up(QApplication& application, const char* name) {
    QApplication::setApplicationName("Tallvex");
    QApplication::setDesktopFileName(name);
    QApplication::setWindowIcon(QIcon::fromTheme("tallvex"));
    QApplication::setQuitOnLastWindowClosed(false);
    apply_style(application, application.primaryScreen()->availableSize());
}

void show_full_screen(QWidget& window) {
    // Without a window manager, showMaximized() alone leaves a window at its smallest size.
    window.setGeometry(window.screen()->availableGeometry());
    window.showMaximized();
}

void keep_screen_alive(startup::Environment& environment, ServerLink& server) {
    environment.show_copying = [](const startup::Environment::Copying& copying) {
        show_copying(copying, show_full_screen);
    };
    environment.wait_for_server = [](const std::string& name, const std::function<bool()>& attempt) {
        return wait_for_server(name, attempt, show_full_screen);
    };
    environment.open = [&server](const std::string& text, const std::filesystem::path& folder) {
        return server.attach(startup::open_connection(text, folder),
                             [text] { return database::ping_server(text); });
    };
}

void back_up_beside(const startup::Environment& environment, common::Log& log) {
    const QString tool = QCoreApplication::applicationDirPath() + "/tallvex-admin";
    if (!QProcess::startDetached(tool, {"backup", "--automatic"},
                                 QString::fromStdString(environment.working_folder.string())))
        log.log_event("backup: " + tool.toStdString() + " cannot be started",
                      std::string(startup::failure_log_code));
}

ProgramRun::ProgramRun(startup::Environment environment, const common::Services& services, ServerLink& server)
    : start_up_(listening(std::move(environment)), services),
      renewal_(
          server, services.prompts, std::chrono::seconds(startup::RunningTill::seconds_between_claims),
          [this]() -> CashPointRenewal::Claim {
              if (!start_up_.claim()) return {};
              return [claim = *start_up_.claim()](database::Connection& shop) { return claim.claim(shop); };
          },
          [this](const std::string& place) { return start_up_.found_other_till(place); }) {}

startup::Environment ProgramRun::listening(startup::Environment environment) {
    environment.listen = [this](int descriptor) {
        second_start_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        QObject::connect(second_start_.get(), &QSocketNotifier::activated,
                         [this] { start_up_.answer_second_start(show_front); });
    };
    return environment;
}

void ProgramRun::hand_over() {
    second_start_.reset();
    start_up_.hand_over();
}

}  // namespace ui
