#include "ui/widgets/guard.h"

#include "database/error.h"
#include "ui/widgets/text.h"

namespace ui {

void report(const common::Services& services, std::string_view action, const std::exception& error) {
    services.log.log_event(database::log_line(action, error), guard_code);
    services.prompts.message(database::with_reason(message::failed, error), common::Icon::critical);
}

}  // namespace ui
