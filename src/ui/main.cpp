// The program: start-up, sign-in, the sales window.
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QProcess>
#include <QTimer>
#include <cstdlib>
#include <optional>

#include "common/clock.h"
#include "common/file_devices.h"
#include "common/files.h"
#include "common/text.h"
#include "startup/messages.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "startup/workstation.h"
#include "ui/program.h"
#include "ui/till.h"
#include "ui/training.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/server_link.h"

namespace {

constexpr const char* usage =
    "The cashier's till.\n"
    "Usage: tallvex [--training] [CASH-POINT]\n\n"
    "  CASH-POINT   the number of this workstation's drawer, 0 to 9; 0 without it\n"
    "  --training   Practise on a copy of the shop first\n"
    "  --help       Print this help message and exit\n"
    "  --version    Print the version and exit\n";

constexpr int wrong_command_line = 2;

struct Arguments {
    bool training = false;
    std::string cash_point;
};

// Handles --help and --version, which need neither a screen nor a shop, and refuses any other argument that
// is not a cash point, because nobody would notice a till selling on the wrong drawer. Returns the exit code,
// or nothing if the till is to start.
std::optional<int> handle_arguments(int argc, const char* const* argv, Arguments& arguments) {
    if (argc > 1 && std::string_view(argv[1]) == "--training") {
        arguments.training = true;
        ++argv;
        --argc;
    }
    const std::string_view word = argc > 1 ? argv[1] : "";
    arguments.cash_point = word;
    if (!arguments.training && argc == 2 && (word == "--help" || word == "-h")) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (!arguments.training && argc == 2 && word == "--version") {
        std::puts(TALLVEX_VERSION);
        return 0;
    }
    const bool is_cash_point = word.size() == 1 && word.front() >= '0' && word.front() <= '9';
    if (argc < 2 || (argc == 2 && is_cash_point)) return std::nullopt;
    if (argc > 2)
        std::fprintf(stderr, "tallvex: one cash point is taken, and no other word\n%s", usage);
    else
        std::fprintf(stderr, "tallvex: \"%s\" is no cash point\n%s", argv[1], usage);
    return wrong_command_line;
}

// The exit code that makes a supervising session start the program again.
constexpr int restart_exit_code = 75;
bool is_supervised() {
    return qEnvironmentVariable("TALLVEX_SESSION") == "1";
}

// Starts another instance of the program with this workstation's cash-point number.
bool start_again(const startup::Environment& environment, std::int64_t cash_point) {
    // A relative TALLVEX_HOME would lead elsewhere from the new program's folder.
    if (const auto home = startup::named_home()) qputenv("TALLVEX_HOME", home->c_str());
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

void set_up(QApplication& application) {
    ui::set_up(application, "tallvex");
    if (qEnvironmentVariable("TALLVEX_END_AT") == "sign-in")
        application.installEventFilter(new EndAtSignIn(&application));
}

// Shows in a box that the command line is wrong: whoever started the till from an icon sees no other output.
void show_wrong_arguments(int argc, char** argv) {
    std::string words;
    for (int i = 1; i < argc; ++i)
        words += (i == 1 ? "" : " ") + std::string(argv[i]);
    QApplication application(argc, argv);
    set_up(application);
    ui::ScreenPrompts().message(std::string(startup::message::wrong_cash_point) + common::printable(words),
                                common::Icon::critical);
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (const auto code = handle_arguments(argc, argv, arguments)) {
        if (*code == wrong_command_line && ui::has_desktop() && isatty(STDERR_FILENO) == 0)
            show_wrong_arguments(argc, argv);
        return *code;
    }
    if (!ui::has_screen("tallvex")) return 1;
    common::keep_files_from_others();
    startup::Environment environment = startup::Environment::here(arguments.cash_point);
    ui::prepare_application();
    QApplication application(argc, argv);
    set_up(application);

    common::SystemClock clock;
    startup::ActivityLog log(environment.program_folder, clock);
    common::FileDevices devices(environment.working_folder.string());
    ui::ScreenPrompts prompts;
    ui::KeyQueue keys;
    ui::ServerLink server(keys, clock);
    const common::Services services{prompts, clock, devices, log};

    ui::keep_screen_alive(environment, server);
    ui::Training training(environment, services, keys, ui::show_full_screen);
    const std::int64_t cash_point = startup::cash_point_of(arguments.cash_point);
    if (arguments.training && !training.run(cash_point, [] {})) return 1;
    ui::ProgramRun program(environment, services, server);
    bool again = false;
    const auto restart = [&] {
        again = is_supervised();
        const bool started = again || start_again(environment, program.cash_point());
        if (started) program.hand_over();
        return started;
    };
    const bool reached = program.run([&](database::Connection& connection, signin::Session& session) {
        ui::run_till(connection, session,
                     {services, keys, server, restart, [&] { ui::back_up_beside(environment, log); },
                      ui::show_full_screen},
                     [&](const std::function<void()>& ready) { training.run(cash_point, ready); });
    });
    if (again) return restart_exit_code;
    return reached ? 0 : 1;
}
