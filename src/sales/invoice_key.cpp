#include "sales/invoice_key.h"

#include <charconv>
#include <utility>

#include "sales/invoice.h"

namespace sales {

using database::Sql;

Series series_of(KindOption kind, PaymentOption payment) {
    if (kind != KindOption::sale) return Series::returns;
    return payment == PaymentOption::account ? Series::account_sales : Series::cash_sales;
}

Sql condition_of(Series series, std::int64_t store) {
    switch (series) {
        case Series::account_sales:
            return Sql("(ctype = 0 or ctype = 1)  and vcode <> -1 ");
        case Series::cash_sales:
            return Sql("(ctype = 0 or ctype = 1) and vcode = -1");
        case Series::returns:
            break;
    }
    return Sql("(ctype = 2 or ctype = 3) and stcode =") + store;
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
