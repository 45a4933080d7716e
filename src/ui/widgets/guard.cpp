#include "ui/widgets/guard.h"

#include <string>

#include "database/error.h"
#include "ui/widgets/text.h"

namespace ui {

std::string_view words_for(const std::exception& error) {
    return database::words_for(error).value_or(message::failed);
}

void report(const common::Services& services, std::string_view action, const std::exception& error) {
    services.log.log_event(database::log_line(action, error), guard_code);
    services.prompts.message(words_for(error), common::Icon::critical);
}

}  // namespace ui
