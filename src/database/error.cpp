#include "database/error.h"

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

std::string log_line(std::string_view action, const std::exception& error) {
    std::string line = std::string(action) + ": " + error.what();
    if (const auto* failure = dynamic_cast<const Error*>(&error))
        line += " [" + failure->sqlstate() + "] " + failure->statement();
    return line;
}

std::optional<std::string_view> words_for(const std::exception& error) {
    const auto* failure = dynamic_cast<const Error*>(&error);
    if (failure == nullptr) return std::nullopt;
    switch (failure->kind()) {
        case Error::Kind::timed_out:
            return message::timed_out;
        case Error::Kind::changed_meanwhile:
            return message::changed_meanwhile;
        case Error::Kind::disk_full:
            return message::disk_full;
        case Error::Kind::read_only:
            return message::read_only;
        case Error::Kind::busy:
            return message::busy;
        default:
            break;
    }
    if (failure->is_connection_lost()) return message::connection_lost;
    return std::nullopt;
}

}  // namespace database
