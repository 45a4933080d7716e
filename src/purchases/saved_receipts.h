// Saved documents of goods in: their list, one of them read again, and the part of it that may still go back.
#pragma once

#include "common/form.h"
#include "database/connection.h"
#include "purchases/receipt.h"

namespace purchases {

struct Period {
    common::Date from;
    common::Date to;
    std::optional<std::int64_t> supplier;  // 0 or nothing for all
};
common::FormTable<Period> period_form();

struct SavedRow {
    PurchaseKind kind = PurchaseKind::supply;
    std::int64_t number = 0;
    common::Date date;
    std::int64_t supplier = 0;
    std::string supplier_name;
    std::string invoice;
    common::Amount net;
    double back = 0;  // the part of its goods that went back: 0 none, 1 all
};
// The latest first.
std::vector<SavedRow> list_receipts(database::Connection& connection, const Period& period);

// Nothing if there is no such document. Its id is 0.
std::optional<Receipt> load_receipt(database::Connection& connection, PurchaseKind kind, std::int64_t number);

// A return of everything of a receipt that has not gone back, at what it cost with its share of discount and
// tax.
Receipt return_of(database::Connection& connection, const Receipt& receipt, std::int64_t number);

}  // namespace purchases
