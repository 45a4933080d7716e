#include "database/error.h"

#include <system_error>

#include "common/ports.h"

namespace database {

Error::Kind Error::kind_of(std::string_view sqlstate) {
    if (sqlstate == "08001") return Kind::server_missing;
    if (sqlstate.starts_with("08")) return Kind::connection_lost;
    if (sqlstate.starts_with("HYT")) return Kind::timed_out;
    if (sqlstate.starts_with("IM")) return Kind::no_driver;
    if (sqlstate == "28000") return Kind::login_refused;
    if (sqlstate == "40001") return Kind::changed_meanwhile;
    return Kind::other;
}

bool may_have_run(const std::exception& error) {
    const auto* failure = dynamic_cast<const Error*>(&error);
    return failure != nullptr && (failure->is_connection_lost() || failure->kind() == Error::Kind::timed_out);
}

std::string log_line(std::string_view action, const std::exception& error) {
    std::string line = std::string(action) + ": " + error.what();
    if (const auto* failure = dynamic_cast<const Error*>(&error))
        line += " [" + failure->sqlstate() + "] " + failure->statement();
    return line;
}

namespace {

std::string_view words_for_kind(const Error& error) {
    switch (error.kind()) {
        case Error::Kind::timed_out:
            return message::timed_out;
        case Error::Kind::changed_meanwhile:
            return message::changed_meanwhile;
        case Error::Kind::disk_full:
            return message::disk_full;
        case Error::Kind::read_only:
            return message::read_only;
        case Error::Kind::file_damaged:
            return message::damaged;
        case Error::Kind::busy:
            return message::busy;
        case Error::Kind::login_refused:
        case Error::Kind::database_missing:
            return message::login_refused;
        default:
            return error.is_connection_lost() ? message::connection_lost : message::see_log;
    }
}

std::string_view words_for_system(const std::error_code& code) {
    const auto number =
        code.category() == std::generic_category() || code.category() == std::system_category() ? code.value()
                                                                                                : 0;
    switch (common::fault_of(number)) {
        case common::PortFault::disk_full:
            return message::disk_full;
        case common::PortFault::denied:
            return message::may_not_write;
        default:
            return message::see_log;
    }
}

}  // namespace

std::string_view words_for(const std::exception& error) {
    if (const auto* failure = dynamic_cast<const Error*>(&error)) return words_for_kind(*failure);
    if (const auto* failure = dynamic_cast<const std::system_error*>(&error))
        return words_for_system(failure->code());
    return message::see_log;
}

std::string_view cause_of(const std::exception& error) {
    const std::string_view words = words_for(error);
    return words.substr(0, words.find(". "));
}

std::string with_reason(std::string_view what_failed, const std::exception& error) {
    return std::string(what_failed) + "\n" + std::string(words_for(error));
}

}  // namespace database
