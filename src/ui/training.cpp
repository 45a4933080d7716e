#include "ui/training.h"

#include "startup/reasons.h"
#include "startup/shop_files.h"
#include "startup/training.h"
#include "ui/program.h"
#include "ui/signin/waiting_window.h"
#include "ui/till.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/training_frame.h"

namespace ui {

bool Training::run(std::int64_t cash_point, const std::function<void()>& ready) {
    const startup::TrainingShop shop(shop_, cash_point);
    try {
        CopyingWindow(show_window_, "نسخة التدريب",
                      "تجهز الآن نسخة من بيانات المحل للتدريب عليها اليوم. بيانات المحل نفسها لا تتغير.")
            .run([&](const std::function<void(int)>& tell) { shop.prepare(services_.clock.now(), tell); });
    } catch (const startup::StartUpError& error) {
        services_.log.log_event(error.what(), startup::failure_log_code);
        services_.prompts.message(error.reason(), common::Icon::exclamation);
        return false;
    }
    ready();
    const TrainingFrame frame;
    startup::ActivityLog log(shop.folder(), services_.clock);
    startup::TrainingDevices devices(services_.devices, shop.folder());
    const common::Services services{services_.prompts, services_.clock, devices, log};
    // F11 begins it again.
    while (run_once(shop.environment(), services)) {
    }
    return true;
}

// Returns true if the cashier started the program again.
bool Training::run_once(const startup::Environment& environment, const common::Services& services) {
    ServerLink link(keys_, services.clock);  // to no server
    ProgramRun program(environment, services, link);
    bool again = false;
    program.run([&](database::Connection& connection, signin::Session& session) {
        run_till(connection, session,
                 {services, keys_, link, [&] { return again = true; }, [] {}, show_window_});
    });
    return again;
}

}  // namespace ui
