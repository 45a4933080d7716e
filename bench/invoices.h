// The goods, invoices and cash movements of the measured shop, computed from their numbers, the same on every
// machine.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/sizes.h"
#include "common/date_time.h"

namespace bench {

// Kind, brand, sort and weight, the way a grocer writes them: "عصير الواحة مانجو 500 جم".
std::string item_name(std::int64_t code);
// A text with which about one in eighty names begins.
inline constexpr const char* searched_prefix = "عصير ال";
// Words that about one in a hundred names contains, not in this order.
inline constexpr const char* searched_words = "500 مانجو";
std::int64_t items_with_searched_words(const Sizes& sizes);

double retail_price(std::int64_t code);  // of the single unit, in quarters
inline double whole_cents(double amount) {
    return std::round(amount * 100) / 100;
}

// The n-th item that is rung up: different ones from all over the table, until all were rung up once.
inline std::int64_t rung_up_item(const Sizes& sizes, std::int64_t n) {
    return 1 + n * 7919 % sizes.items();
}

struct SoldLine {
    std::int64_t item;
    double quantity;
    double price;
};

struct SoldInvoice {
    std::int64_t number;  // in its series: walk-in sales, account sales, returns
    common::Moment moment;
    int ctype;  // 5 in 100 are returns (2)
    int stype;  // 10 in 100 by card (1), 2 tips (2), 1 coupons (3), 1 telephone orders not collected yet (4)
    int vcode;  // 10 in 100 on account, the others -1
    int drawer;
    int shift;
    double disboun;   // deducted for tips and coupons
    double discount;  // on the whole invoice: the same for these, and on one in ten that are paid in cash
    std::vector<SoldLine> lines;
    double total() const;
};

// Makes the invoices ordered by time.
class InvoiceMaker {
  public:
    explicit InvoiceMaker(const Sizes& sizes) : sizes_(sizes) {}
    SoldInvoice next();

  private:
    Sizes sizes_;
    std::int64_t made_ = 0;
    std::int64_t walk_in_ = 0, account_ = 0, returns_ = 0;
};

struct Movement {  // a voucher, bank row, cash in or out, expense, transfer or count
    common::Moment moment;
    int drawer;
    int kind;  // 0 or 1
    double amount;
};
Movement movement(const Sizes& sizes, std::int64_t number);

// The shift of a day: each drawer has one per day, numbered from 1, from 8:00 to 22:00.
inline int shift_of(const common::Date& day) {
    return Sizes::days - static_cast<int>(common::days_from_epoch(last_day) - common::days_from_epoch(day));
}

}  // namespace bench
