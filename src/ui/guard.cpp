#include "ui/guard.h"

#include <string>

#include "common/text.h"
#include "database/error.h"
#include "ui/messages.h"

namespace ui {

namespace {

std::string_view words_for_database(const database::Error& error) {
    const std::string text = common::lower_ascii(error.what());
    const auto says = [&](std::string_view part) { return text.find(part) != std::string::npos; };
    if (error.is_connection_lost()) return message::connection_lost;
    if (error.sqlstate() == "HYT00" || error.sqlstate() == "HYT01") return message::timed_out;
    if (error.sqlstate() == "40001") return message::changed_meanwhile;
    // The engines tell these three apart in their text alone; 1105 and 9002 are the server's full disk and
    // log.
    if (says("disk is full") || says("is full") || says("disk i/o error")) return message::disk_full;
    if (says("readonly") || says("read-only")) return message::read_only;
    if (says("is locked") || says("busy")) return message::busy;
    return message::failed;
}

}  // namespace

std::string_view words_for(const std::exception& error) {
    if (const auto* database = dynamic_cast<const database::Error*>(&error))
        return words_for_database(*database);
    return message::failed;
}

void report(const common::Outside& outside, std::string_view action, const std::exception& error) {
    std::string line = std::string(action) + ": " + error.what();
    if (const auto* database = dynamic_cast<const database::Error*>(&error)) {
        line += " [" + database->sqlstate() + "] " + database->statement();
    }
    outside.log.log_event(line, guard_code);
    outside.prompts.message(words_for(error), common::Icon::critical);
}

}  // namespace ui
