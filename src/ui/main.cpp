// The program: start-up, sign-in, the sales window.
#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <cstdlib>

#include "common/clock.h"
#include "common/ports.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "ui/till.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/style.h"

namespace {

constexpr const char* usage =
    "The cashier's till.\n"
    "Usage: tallvex [CASH-POINT]\n\n"
    "  CASH-POINT   the number of this workstation's drawer, 0 to 9: the first character counts\n"
    "  --help       Print this help message and exit\n"
    "  --version    Print the version and exit\n";

// Handles --help and --version, which need neither a screen nor a shop. Returns false for other arguments.
bool handle_information_options(int argc, const char* const* argv) {
    if (argc != 2) return false;
    const std::string_view word = argv[1];
    if (word == "--help" || word == "-h")
        std::fputs(usage, stdout);
    else if (word == "--version")
        std::puts(TALLVEX_VERSION);
    else
        return false;
    return true;
}

// The exit code that makes a supervising session start the program again.
constexpr int restart_exit_code = 75;
bool is_supervised() {
    return qEnvironmentVariable("TALLVEX_SESSION") == "1";
}

// Starts another instance of the program with this workstation's cash-point number.
bool start_again(const startup::Environment& environment, std::int64_t cash_point) {
    return QProcess::startDetached(QCoreApplication::applicationFilePath(), {QString::number(cash_point)},
                                   QString::fromStdString(environment.working_folder.string()));
}

// For measuring the start: with TALLVEX_END_AT=sign-in the program ends once the sign-in window was painted.
class EndAtSignIn final : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->objectName() == "Form62")
            QTimer::singleShot(0, this, [] { std::exit(0); });
        return false;
    }
};

// Returns false if there is no display. Qt would then end the program with a core dump.
bool has_screen(int argc, const char* const* argv) {
    for (const char* named : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(named)) return true;
    }
    return std::any_of(argv, argv + argc, [](std::string_view word) { return word.ends_with("-platform"); });
}

void show_full_screen(QWidget& window) {
    // Without a window manager, showMaximized() alone leaves a window at its smallest size.
    window.setGeometry(window.screen()->availableGeometry());
    window.showMaximized();
}

}  // namespace

int main(int argc, char** argv) {
    if (handle_information_options(argc, argv)) return 0;
    if (!has_screen(argc, argv)) {
        std::fputs("tallvex: there is no display to show the till on (DISPLAY is not set)\n", stderr);
        return 1;
    }
    const startup::Environment environment = startup::Environment::here(argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Tallvex");
    QApplication::setDesktopFileName("tallvex");
    QApplication::setWindowIcon(QIcon::fromTheme("tallvex"));
    QApplication::setQuitOnLastWindowClosed(false);
    ui::apply_style(application, application.primaryScreen()->availableSize());

    if (qEnvironmentVariable("TALLVEX_END_AT") == "sign-in")
        application.installEventFilter(new EndAtSignIn(&application));

    common::SystemClock clock;
    startup::ActivityLog log(environment.program_folder, clock);
    common::FileDevices devices(environment.working_folder.string());
    ui::ScreenPrompts prompts;
    ui::KeyQueue keys;

    startup::StartUp start_up(environment, {prompts, clock, devices, log});
    bool again = false;
    ui::Till till(
        {prompts, clock, devices, log}, keys,
        [&] {
            again = is_supervised();
            return again || start_again(environment, start_up.session().cash_point);
        },
        show_full_screen);
    const bool reached = start_up.run(
        [&](database::Connection& connection, signin::Session& session) { till.run(connection, session); });
    if (again) return restart_exit_code;
    return reached ? 0 : 1;
}
