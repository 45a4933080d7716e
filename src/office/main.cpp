// The program: start-up, sign-in, the office window.
#include <QApplication>
#include <string_view>

#include "common/clock.h"
#include "common/file_devices.h"
#include "common/files.h"
#include "office/office.h"
#include "shop/place.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "ui/program.h"
#include "ui/till.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/server_link.h"

namespace {

constexpr const char* usage =
    "The office of a shop: goods, prices, stock, lists, users and reports.\n"
    "Usage: tallvex-office\n\n"
    "  --help       Print this help message and exit\n"
    "  --version    Print the version and exit\n";

constexpr int wrong_command_line = 2;

// Makes a shop if there is none; returns false if the user did not want one.
bool is_shop_there(common::Clock& clock) {
    const std::filesystem::path found = startup::shop_folder();
    if (shop::has_shop(found)) return true;
    const std::filesystem::path folder =
        startup::has_connection_file(found) ? found : startup::new_shop_folder();
    startup::ActivityLog log(folder, clock);
    common::FileDevices devices(folder.string());
    ui::ScreenPrompts prompts;
    const ui::KeyQueue keys;
    if (!office::first_start(folder, {prompts, clock, devices, log}, ui::show_full_screen)) return false;
    // The new folder is the shop's from now on, wherever the program was started.
    return shop::has_shop(startup::shop_folder());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        const std::string_view word = argv[1];
        if (argc == 2 && (word == "--help" || word == "-h")) return std::fputs(usage, stdout), 0;
        if (argc == 2 && word == "--version") return std::puts(TALLVEX_VERSION), 0;
        std::fprintf(stderr, "tallvex-office: it takes no words\n%s", usage);
        return wrong_command_line;
    }
    if (!ui::has_screen("tallvex-office")) return 1;
    common::keep_files_from_others();
    ui::prepare_application();
    QApplication application(argc, argv);
    ui::set_up(application, "tallvex-office");

    common::SystemClock clock;
    if (!is_shop_there(clock)) return 1;
    startup::Environment environment = startup::Environment::here({});
    environment.is_office = true;
    startup::ActivityLog log(environment.program_folder, clock);
    common::FileDevices devices(environment.working_folder.string());
    ui::ScreenPrompts prompts;
    ui::KeyQueue keys;
    ui::ServerLink server(keys, clock);
    const common::Services services{prompts, clock, devices, log};

    ui::keep_screen_alive(environment, server);
    ui::ProgramRun program(environment, services, server);
    const bool reached = program.run([&](database::Connection& connection, signin::Session& session) {
        office::run(connection, session,
                    {services, keys, server, [] { return false; },
                     [&] { ui::back_up_beside(environment, log); }, ui::show_full_screen});
    });
    return reached ? 0 : 1;
}
