// The receipts that the files in data/ show.
#pragma once

#include "printing/receipt.h"

namespace test {

inline printing::Receipt sale() {
    printing::Receipt receipt;
    receipt.store_name = "بقالة النور";
    receipt.second_store_name = "Al Noor Grocery";
    receipt.telephone = "02-2574 1234";
    receipt.credit_lines = {"البضاعة المباعة ترد خلال 14 يوما", "مع أصل الفاتورة", "سياسة المحل"};
    receipt.cash_point = 1;
    receipt.user_name = "سعاد";
    receipt.shift_number = 14;
    receipt.salesman = "محمود";
    receipt.number = 1284;
    receipt.date = {2026, 11, 21};
    receipt.time = {10, 42, 7, 0};
    receipt.lines = {{"1023", "أرز مصري فاخر 1 كجم", "كيس", 2, 34.5, 0, common::Amount(69)},
                     {"2210", "زيت عباد الشمس 1.5 لتر", "زجاجة", 1, 61.75, 0, common::Amount(61.75)},
                     {"123", "جبنة رومي قديمة", "كجم", 0.45, 220, 0, common::Amount(99)},
                     {"3307", "شاي ناعم 250 جم إسكندرية", "علبة", 3, 48, 7.2, common::Amount(136.8)},
                     {"5502", "Nescafe Gold 100g", "علبة", 1, 12345.5, 0, common::Amount(12345.5)}};
    receipt.total = common::Amount(12712.05);
    receipt.discount = common::Amount(127.12);
    receipt.net = common::Amount(12584.93);
    receipt.paid = common::Amount(12600);
    receipt.remaining = common::Amount(15.07);
    return receipt;
}

inline printing::Receipt empty_receipt() {
    printing::Receipt receipt;
    receipt.store_name = "الأمل";
    receipt.second_store_name = "فرع المعادي";
    receipt.telephone = "0123";
    receipt.number = 1;
    receipt.date = {2026, 1, 2};
    receipt.time = {0, 5, 0, 0};
    return receipt;
}

}  // namespace test
