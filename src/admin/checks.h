// The checks of `tallvex-admin check`.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "audit/trail_file.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace admin {

enum class Verdict { good, note, wrong };

struct Finding {
    Verdict verdict = Verdict::good;
    std::string subject;  // "settings", "invoices" ...
    std::string text;     // what was found and, unless it is good, what to do
};
using Findings = std::vector<Finding>;

struct Period {
    common::Date from;  // the first day whose invoices are checked
    common::Date today;
};

// Finds tables and columns of this version that the shop does not have.
Findings check_schema(database::Connection& connection);
// Checks the settings row, its version (unless `version` is empty), the stores and the drawers.
Findings check_settings(database::Connection& connection, std::string_view version);
// Checks the settings of the tills. Notes the discounts of cash sales that drawers contain without net_from.
Findings check_till_settings(database::Connection& connection, const Period& period);
// Tells how old the last automatic backup of an embedded shop is, and what prevents backups.
Findings check_backups(database::Connection& connection, const std::filesystem::path& shop,
                       const common::Date& today);
// Looks for things that the program never puts into an embedded shop's file: other triggers and views, and
// texts longer than their column. Says who may use the file.
Findings check_files(database::Connection& connection, const std::filesystem::path& shop);
Findings check_users(database::Connection& connection);
// Finds Latin letters and signs that the shop's printer codes lack.
Findings check_printer_codes(database::Connection& connection);
// Adds the missing rows as new shops have them. Returns how many.
std::size_t add_printer_codes(database::Connection& connection);
// Checks the ports of the receipt printer and the drawer on this machine.
Findings check_ports(database::Connection& connection, const std::filesystem::path& folder);

// Finds invoices that a save left incomplete: a header without all its lines, lines without a header, a card
// payment without its bank row.
Findings check_invoices(database::Connection& connection, const Period& period);
// Finds vouchers that did not move the balance of their party, account customers whose balance differs from
// the sum of their invoices and vouchers, and vendors whose balance differs from the sum of their vouchers.
Findings check_balances(database::Connection& connection);
// Whether two sums of money differ. Some shops keep sums in columns of single precision. A line's value was
// rounded before it was added, or another program added it unrounded.
bool differ(double a, double b, std::int64_t lines = 0);

// Judges the free space of the shop's disk.
Findings check_disk(std::uintmax_t free_bytes);
// Finds saves that stand in the journal of saves for more than a minute: a till has not finished them.
Findings check_unfinished(database::Connection& connection, const common::Moment& now);
// Finds where the chain of the tills' journal is broken.
Findings check_journal(database::Connection& connection, const audit::Place& place);
// Finds saves that the activity log reports as stopped, or as begun but not finished because the till was
// switched off, and says what each left undone.
Findings check_log(database::Connection& connection, const std::filesystem::path& log_file,
                   const Period& period);
// The log line by which the shop keeper says that everything before it was corrected by hand.
inline constexpr std::string_view mended_line = "stopped saves mended by hand";

// Compares the stock of each item and store with its opening stock, invoice lines, transfers, corrections and
// write-offs since. An item that other tables have moved too (purchases, production) gives only a note.
Findings check_stock(database::Connection& connection);

}  // namespace admin
