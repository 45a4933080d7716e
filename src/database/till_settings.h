// Settings of the tills that `basic` has no column for: the table till_setting (name, value). A shop without
// the table has no such settings.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "common/denominations.h"
#include "database/connection.h"
#include "database/reads.h"

namespace database {

namespace setting {
// The first day on which a drawer holds the net of cash invoices, "yyyy/mm/dd". Before it, and in a shop
// without the setting, expected cash counts the totals before the invoice discount, as other programs on the
// same database may do.
inline constexpr std::string_view net_from = "net_from";
// The folders into which an embedded shop copies itself, ";" between them, or "none".
inline constexpr std::string_view backup_to = "backup_to";
// "yes" if the roll printers that print text draw barcodes by their own command.
inline constexpr std::string_view printer_barcode = "printer_barcode";
// What receipts show, "yes" or "no": units on text; units, QR code and barcode on pages and pictures.
inline constexpr std::string_view text_unit = "text_unit";
inline constexpr std::string_view receipt_unit = "receipt_unit";
inline constexpr std::string_view receipt_qr = "receipt_qr";
inline constexpr std::string_view receipt_barcode = "receipt_barcode";
// "yes" if the code of an item that is on the invoice in the same unit raises its line without a question.
inline constexpr std::string_view raise_equal_codes = "raise_equal_codes";
// What the customer display shows between two sales.
inline constexpr std::string_view display_greeting = "display_greeting";
// The greeting on a customer's screen between two sales.
inline constexpr std::string_view screen_greeting = "screen_greeting";
// "yes" if drawers are counted before the expected cash is shown.
inline constexpr std::string_view blind_count = "blind_count";
// The notes and coins in which customers pay and drawers are counted.
inline constexpr std::string_view denominations = "denominations";
// "yes" if another program keeps the shop's tables, so that the office shows them and changes nothing.
inline constexpr std::string_view office_read_only = "office_read_only";
}  // namespace setting

// A setting as the shop keeper sees it, and how its value is read.
struct TillSetting {
    std::string_view name;
    std::string_view meaning;
    std::string_view form;
    std::string_view caption;    // in Arabic, for the office
    std::string_view explained;  // what it does and how it is written
    // The value as it is stored; nothing if the text is not one.
    std::optional<std::string> (*read)(std::string_view typed);
    bool is_yes_or_no() const;
};
std::span<const TillSetting> till_settings();

// The value of a setting; nothing if it is not set.
std::optional<std::string> till_setting(Connection& connection, std::string_view name);
// Sets or replaces it. Throws Error if the shop has no such table.
void set_till_setting(Connection& connection, std::string_view name, std::string_view value);

// The setting `net_from`; nothing if it is not set, or not a date.
std::optional<common::Date> net_from(Connection& connection);
void ask_net_from(Reads& reads, std::optional<common::Date>& day);

// A setting that is a text; nothing if it is not set.
void ask_text(Reads& reads, std::string_view name, std::optional<std::string>& text);
// The setting `denominations`; those of the pound if it is not set.
void ask_denominations(Reads& reads, common::Denominations& denominations);

// Settings that are "yes" or "no", and the variables that they are read into. One that is not set leaves its
// value as it is.
struct YesOrNo {
    std::string_view name;
    bool* value;
};
// Asks for them in one statement.
void ask_yes_or_no(Reads& reads, std::vector<YesOrNo> settings);
void set_yes_or_no(Connection& connection, std::string_view name, bool value);

// The setting `backup_to`; empty if it is not set.
std::vector<std::filesystem::path> backup_folders(Connection& connection);

}  // namespace database
