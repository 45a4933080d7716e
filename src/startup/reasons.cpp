#include "startup/reasons.h"

#include <array>

#include "startup/messages.h"

namespace startup {

namespace {

// What the description of an error says, and what the cashier is told; `is_named` adds the database to it.
struct Reason {
    std::string_view said;
    std::string_view told;
    bool is_named;
};

// The first that fits counts.
constexpr std::array<Reason, 16> reasons = {{
    {"SQL Server does not exist", message::server_unreachable, false},
    {"Cannot open database", message::database_missing, true},
    {"Login failed", message::wrong_password, false},
    {"disk is full", message::disk_full, false},
    {"in use by another program", message::shop_file_busy, true},
    {"its folder does not exist", message::shop_file_missing, true},
    {"does not exist", message::shop_file_missing, true},
    {"names no shop file", message::shop_file_missing, true},
    {"is a folder", message::shop_file_is_folder, true},
    {"read-only", message::shop_file_read_only, true},
    {"cannot be read", message::shop_file_unreadable, true},
    {"damaged", message::shop_file_corrupt, true},
    {"no shop", message::shop_file_corrupt, true},
    {"is no file", message::shop_file_corrupt, true},
    {"another program", message::shop_file_corrupt, true},
    {"ODBC driver", message::no_driver, false},
}};

}  // namespace

bool is_server_missing(std::string_view description) {
    return description.find("SQL Server does not exist") != description.npos;
}

std::string reason_of(const database::Error& error, std::string_view database) {
    const std::string_view description = error.what();
    for (const Reason& reason : reasons) {
        if (description.find(reason.said) == description.npos) continue;
        return std::string(reason.told) + (reason.is_named ? std::string(database) : std::string());
    }
    if (error.sqlstate() == "28000") return std::string(message::wrong_password);
    if (error.is_connection_lost() || error.sqlstate() == "HYT00")
        return std::string(message::connection_lost);
    return std::string(message::see_log);
}

}  // namespace startup
