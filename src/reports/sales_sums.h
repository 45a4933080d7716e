// Sums of saved invoices by any column that tells them apart.
#pragma once

#include <cstdint>
#include <map>

#include "database/connection.h"
#include "reports/period.h"

namespace reports {

// Not rounded, as all sums until they are shown.
struct SalesSums {
    std::int64_t sales = 0;  // how many
    std::int64_t returns = 0;
    double sold = 0;       // the totals of sales
    double discounts = 0;  // those on whole sales
    double returned = 0;   // the net of returns
    double net() const { return sold - discounts - returned; }
    // What one sale came to, without the returns.
    double average() const;
    SalesSums& operator+=(const SalesSums& other);
};

enum class SalesKey { none, day, month, hour, cashier, store, payment };

using SalesByKey = std::map<std::int64_t, SalesSums>;
// Adds the invoices of a period to the sums. The keys: days since 1970/01/01, years times 12 plus months, the
// hour, codes, sales::PaymentOption; 0 for `none`. `extra` restricts the invoices further.
void add_sales(database::Connection& connection, SalesKey key, const Period& period, SalesByKey& sums,
               const database::Sql& extra = database::Sql(""));
SalesSums sales_of(database::Connection& connection, const Period& period,
                   const database::Sql& extra = database::Sql(""));

// The condition that an invoice belongs to a key, within the period.
database::Sql condition_of(SalesKey key, std::int64_t value, const Period& period);

}  // namespace reports
