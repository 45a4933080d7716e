// What identifies a saved invoice, and the series that its number comes from.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace sales {

struct Invoice;
enum class KindOption;
enum class PaymentOption;

inline constexpr std::int64_t walk_in_customer = -1;  // sales.vcode of a cash customer

// How a row of `sales` or `saledata` counts, as conditions of a statement. A kind that is neither counts as
// nothing.
inline constexpr database::Fragment counts_as_sale = "(ctype = 0 or ctype = 1)";
inline constexpr database::Fragment counts_as_return = "(ctype = 2 or ctype = 3)";

// Sales have one series for cash and one for account customers, both across all stores; returns and the third
// kind have one series per store.
enum class Series { cash_sales, account_sales, returns };
Series series_of(KindOption kind, PaymentOption payment);
struct InvoiceKey;
Series series_of(const InvoiceKey& key);
// The condition that selects the invoices of a series; for returns, only those of the store.
database::Sql condition_of(Series series, std::int64_t store);

// The statement for the highest number of the invoice's series, and the number after its result.
database::Sql last_number(const Invoice& invoice);
std::int64_t next_invoice_number(const database::Result& last);

// The columns that the rows of `sales` and `saledata` share.
struct InvoiceKey {
    std::int64_t number = 0;
    std::int64_t ctype = 0;
    std::int64_t vcode = walk_in_customer;
    std::int64_t store = 0;
    common::Date date;

    auto operator<=>(const InvoiceKey&) const = default;
    bool is_sale() const { return ctype == 0 || ctype == 1; }
};
InvoiceKey key_of(const Invoice& invoice);
// The key in a row with the columns pnum, ctype, vcode, stcode and date.
InvoiceKey key_of(const database::Row& row);
// " where pnum = ..." with every column of the key.
database::Sql where(const InvoiceKey& key);

// Two tills may have drawn the same number at the same moment. Such invoices share their key and differ only
// in their time of saving.
struct InvoiceIdentity {
    InvoiceKey key;
    common::TimeOfDay time;

    auto operator<=>(const InvoiceIdentity&) const = default;
};
// The identity in a row that has the column time_ as well.
InvoiceIdentity identity_of(const database::Row& row);

// The values of pnum, ctype, vcode, stcode, [date] and time_, for a statement with "?" in their places.
std::vector<database::Value> values_of(const InvoiceIdentity& identity);

// An invoice's key as the barcode of its receipt carries it: "-", then an even number of digits. No item's
// barcode begins so, and every keyboard layout of a scanner sends it unchanged.
struct ReceiptCode {
    Series series = Series::cash_sales;
    std::int64_t store = 0;  // its last digit
    common::Moment moment;   // the invoice's date and the time of its save, in whole seconds
    std::int64_t number = 0;
};
// Empty for an invoice that no code can name, such as one dated before the year 2000.
std::string receipt_code(const InvoiceIdentity& identity);
std::optional<ReceiptCode> read_receipt_code(std::string_view scanned);
// Whether the code is that of the invoice. A server may have rounded its time of saving to the next second.
bool is_code_of(const ReceiptCode& code, const InvoiceIdentity& identity);

// How the activity log names an invoice, "invoice 12 (kind 0, customer -1, store 1)", and the reader of that
// name. The log's lines carry the date themselves, so the key that is read has none.
std::string log_name(const InvoiceKey& key);
std::optional<InvoiceKey> read_log_name(std::string_view name);

}  // namespace sales
