#include "startup/reasons.h"

#include "startup/messages.h"

namespace startup {

std::string reason_of(const database::Error& error, std::string_view database) {
    using Kind = database::Error::Kind;
    const auto named = [&](std::string_view words) { return std::string(words) + std::string(database); };
    switch (error.kind()) {
        case Kind::server_missing:
            return std::string(message::server_unreachable);
        case Kind::no_driver:
            return std::string(message::no_driver);
        case Kind::login_refused:
            return std::string(message::wrong_password);
        case Kind::not_encrypted:
            return std::string(message::not_encrypted);
        case Kind::database_missing:
            return named(message::database_missing);
        case Kind::file_missing:
            return named(message::shop_file_missing);
        case Kind::file_is_folder:
            return named(message::shop_file_is_folder);
        case Kind::file_unreadable:
            return named(message::shop_file_unreadable);
        case Kind::file_damaged:
            return named(message::shop_file_corrupt);
        case Kind::read_only:
            return named(message::shop_file_read_only);
        case Kind::busy:
            return named(message::shop_file_busy);
        case Kind::disk_full:
            return std::string(message::disk_full);
        case Kind::connection_lost:
        case Kind::timed_out:
            return std::string(message::connection_lost);
        case Kind::changed_meanwhile:
        case Kind::other:
            break;
    }
    return std::string(message::see_log);
}

}  // namespace startup
