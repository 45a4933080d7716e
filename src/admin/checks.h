// What `tallvex-admin check` looks at, and the words in which it says what to do.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace admin {

enum class Verdict { good, note, wrong };

struct Finding {
    Verdict verdict = Verdict::good;
    std::string subject;  // "settings", "invoices" ...
    std::string text;     // what was seen and, where it is not good, what to do
};
using Findings = std::vector<Finding>;

// Tables and columns that a shop of this version has and this one has not.
Findings check_schema(database::Connection& connection);
// The settings row, the version in it (not compared when `version` is empty), the stores and drawers, the
// users.
Findings check_settings(database::Connection& connection, std::string_view version);
Findings check_users(database::Connection& connection);
// The receipt printer's and the drawer's port on this machine.
Findings check_ports(database::Connection& connection);
Finding check_system_printer();

struct Period {
    common::Date from;  // invoices from this day on
    common::Date today;
};
// Invoices that a save left half-written: a header without all its lines, lines without a header, a card
// payment without its bank row, and account customers whose balance is not what their invoices and vouchers
// add up to.
Findings check_invoices(database::Connection& connection, const Period& period);
// Saves that the activity log knows as stopped part-way, or as begun and never finished, which a till that
// was switched off leaves behind; with what each left undone.
Findings check_log(database::Connection& connection, const std::filesystem::path& log_file,
                   const Period& period);
// The log's line by which the shop keeper says that what came before it was mended by hand.
inline constexpr std::string_view mended_line = "stopped saves mended by hand";

}  // namespace admin
