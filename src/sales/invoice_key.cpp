#include "sales/invoice_key.h"

#include <charconv>
#include <cstdlib>
#include <utility>

#include "common/numbers.h"
#include "sales/invoice.h"

namespace sales {

using database::Sql;

Series series_of(KindOption kind, PaymentOption payment) {
    if (kind != KindOption::sale) return Series::returns;
    return payment == PaymentOption::account ? Series::account_sales : Series::cash_sales;
}

Series series_of(const InvoiceKey& key) {
    if (!key.is_sale()) return Series::returns;
    return key.vcode == walk_in_customer ? Series::cash_sales : Series::account_sales;
}

Sql condition_of(Series series, std::int64_t store) {
    switch (series) {
        case Series::account_sales:
            return Sql(counts_as_sale) + "  and vcode <> -1 ";
        case Series::cash_sales:
            return Sql(counts_as_sale) + " and vcode = -1";
        case Series::returns:
            break;
    }
    return Sql(counts_as_return) + " and stcode =" + store;
}

Sql last_number(const Invoice& invoice) {
    return Sql(" select max(pnum) as last_i from sales where ") +
           condition_of(series_of(invoice.kind, invoice.payment), invoice.store);
}

std::int64_t next_invoice_number(const database::Result& last) {
    return last.front().integer("last_i") + 1;
}

InvoiceKey key_of(const Invoice& invoice) {
    return {invoice.number, ctype_of(invoice.kind), invoice.vcode(), invoice.store, invoice.date};
}

InvoiceKey key_of(const database::Row& row) {
    return {row.integer("pnum"), row.integer("ctype"), row.integer("vcode"), row.integer("stcode"),
            row.moment("date").date};
}

Sql where(const InvoiceKey& key) {
    return Sql(" where pnum = ") + key.number + " and ctype = " + key.ctype + " and vcode = " + key.vcode +
           " and stcode = " + key.store + " and date = " + database::quoted(key.date);
}

InvoiceIdentity identity_of(const database::Row& row) {
    return {key_of(row), row.moment("time_").time};
}

std::vector<database::Value> values_of(const InvoiceIdentity& identity) {
    const InvoiceKey& key = identity.key;
    return {key.number,
            key.ctype,
            key.vcode,
            key.store,
            common::Moment{key.date, {}},
            common::on_day_zero(identity.time)};
}

namespace {

constexpr common::Moment code_epoch{{2000, 1, 1}, {}};
constexpr std::size_t seconds_digits = 10;
constexpr std::size_t digits_before_number = 2 + seconds_digits;

std::int64_t code_seconds(const common::Moment& moment) {
    return static_cast<std::int64_t>(common::seconds_between(
        code_epoch, {moment.date, {moment.time.hour, moment.time.minute, moment.time.second, 0}}));
}

common::Moment moment_of_code(std::int64_t seconds) {
    constexpr std::int64_t of_a_day = 24 * 60 * 60;
    const auto rest = static_cast<int>(seconds % of_a_day);
    return {common::add_days(code_epoch.date, static_cast<long>(seconds / of_a_day)),
            {rest / 3600, rest / 60 % 60, rest % 60, 0}};
}

}  // namespace

std::string receipt_code(const InvoiceIdentity& identity) {
    const InvoiceKey& key = identity.key;
    std::string seconds = std::to_string(code_seconds({key.date, identity.time}));
    if (seconds.front() == '-' || seconds.size() > seconds_digits || key.number < 0) return {};
    seconds.insert(0, seconds_digits - seconds.size(), '0');
    std::string number = std::to_string(key.number);
    if (number.size() % 2 != 0) number.insert(0, "0");
    return "-" + std::to_string(static_cast<int>(series_of(key)) + 1) +
           std::to_string(std::abs(key.store % 10)) + seconds + number;
}

std::optional<ReceiptCode> read_receipt_code(std::string_view scanned) {
    if (!scanned.starts_with('-')) return std::nullopt;
    scanned.remove_prefix(1);
    if (!common::all_digits(scanned) || scanned.size() % 2 != 0 || scanned.size() <= digits_before_number)
        return std::nullopt;
    const int series = scanned[0] - '1';
    const auto seconds = common::parse_integer(scanned.substr(2, seconds_digits));
    const auto number = common::parse_integer(scanned.substr(digits_before_number));
    if (series < 0 || series > static_cast<int>(Series::returns) || !seconds || !number) return std::nullopt;
    return ReceiptCode{static_cast<Series>(series), scanned[1] - '0', moment_of_code(*seconds), *number};
}

bool is_code_of(const ReceiptCode& code, const InvoiceIdentity& identity) {
    const InvoiceKey& key = identity.key;
    const auto apart = code_seconds({key.date, identity.time}) - code_seconds(code.moment);
    return code.number == key.number && code.series == series_of(key) &&
           code.store == std::abs(key.store % 10) && std::abs(apart) <= 1;
}

std::string log_name(const InvoiceKey& key) {
    return "invoice " + std::to_string(key.number) + " (kind " + std::to_string(key.ctype) + ", customer " +
           std::to_string(key.vcode) + ", store " + std::to_string(key.store) + ")";
}

std::optional<InvoiceKey> read_log_name(std::string_view name) {
    InvoiceKey key;
    const std::pair<std::string_view, std::int64_t*> parts[] = {{"invoice ", &key.number},
                                                                {" (kind ", &key.ctype},
                                                                {", customer ", &key.vcode},
                                                                {", store ", &key.store}};
    for (const auto& [before, number] : parts) {
        if (!name.starts_with(before)) return std::nullopt;
        name.remove_prefix(before.size());
        const auto read = std::from_chars(name.data(), name.data() + name.size(), *number);
        if (read.ec != std::errc()) return std::nullopt;
        name.remove_prefix(static_cast<std::size_t>(read.ptr - name.data()));
    }
    return name == ")" ? std::optional(key) : std::nullopt;
}

}  // namespace sales
