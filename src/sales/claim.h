// What a save claims before its receipt is printed, so that two tills neither print one number nor sell the
// same last piece: its number (table till_claim) and its goods (till_claim_goods). Other tills count a claim
// until it is released, when the rows are written, or until it is a minute old, because its till may be dead.
//
// A claim is written first and looked at afterwards: of two tills at least one sees the claim of the other. A
// shop without these tables has no claims.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/stock_check.h"

namespace sales {

// The goods that a sale lacks.
struct Shortage {
    std::string item_name;
    bool claimed = false;  // they are there, but another till is selling them
};

// One save at a time.
class Claims {
  public:
    explicit Claims(database::Connection& connection);

    // Claims what a sale takes from stock. Returns what is missing; then nothing is claimed. Goods that
    // another till claims are waited for half a second, because it may give them back.
    std::optional<Shortage> claim_goods(const Invoice& invoice);
    // Claims the next number of the invoice's series, which is left in `invoice`.
    void claim_number(Invoice& invoice);
    // Returns true if the number was saved or claimed elsewhere since: by a till that knows no claims, or
    // while the claim here grew too old.
    bool number_taken(const Invoice& invoice);
    // Gives everything back. What an error leaves is given back by the next save.
    void release() noexcept;

  private:
    struct OthersGoods {
        Goods all;
        Goods older;  // of those that claimed before this till
    };
    template <typename Action>
    void unless_missing(const Action& action);
    void write_goods(const Goods& goods);
    OthersGoods goods_of_others();
    std::int64_t highest_claimed(const Invoice& invoice);
    bool write_number(const Invoice& invoice);
    void forget_number(std::int64_t claim);
    void forget_goods(std::int64_t claim);

    database::Connection& connection_;
    const std::int64_t id_;     // marks the rows of this till
    bool are_missing_ = false;  // the tables
    bool has_goods_ = false;
    bool has_number_ = false;
};

}  // namespace sales
