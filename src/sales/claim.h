// What a save claims before its receipt is printed, so that no two tills print the same number or sell the
// same last piece: a row of the table till_claim with its number and its goods. Other tills count a claim
// until it is released, when the rows are written, or until it is a minute old, because its till may be dead.
//
// A claim is written first and looked at afterwards: of two tills at least one sees the claim of the other. A
// shop without the table has no claims.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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
    explicit Claims(database::Connection& connection) : connection_(connection) {}
    // The claim of a save that was cut off, by its id.
    Claims(database::Connection& connection, std::int64_t id)
        : connection_(connection), id_(id), has_claimed_(true) {}

    // Claims the next number of the invoice's series and what the invoice takes from stock. Returns what is
    // missing; then nothing is claimed. Goods that another till claims are waited for half a second, because
    // it may give them back.
    std::optional<Shortage> claim(const Invoice& invoice);
    std::int64_t number() const { return number_; }
    std::int64_t id() const { return id_; }
    // Claims another number in place of one that was taken and leaves it in `invoice`.
    void claim_number(Invoice& invoice);
    // Returns true if the number was saved or claimed elsewhere since: by a till that knows no claims, or
    // while the claim here grew too old.
    bool number_taken(const Invoice& invoice);
    // Gives everything back. If an error prevents that, the next save does it.
    void release() noexcept;
    // The statements that give everything back, to run with others; afterwards comes forget().
    std::vector<database::Command> removal() const;
    void forget() { has_claimed_ = false; }

  private:
    struct Others {
        Goods goods;
        Goods older_goods;  // of those that claimed before this till
        std::int64_t highest_number = 0;
    };
    struct Look {
        const Line* short_line = nullptr;
        bool is_lacking = false;  // the goods are not there, whoever claims them
        bool makes_way = false;   // an older claim has them
    };
    using Outcomes = std::vector<database::Connection::Outcome>;
    template <typename Commands>
    Outcomes run(const Commands& commands);
    Others others_in(const database::Result& claims, const Invoice& invoice);
    // The claims of others and, read after them in the same round trip, the result of a statement.
    std::pair<Others, database::Result> read_with_claims(const database::Sql& statement,
                                                         const Invoice& invoice);
    bool write_and_look(const Invoice& invoice, Look& look);
    Look draw_number(const Invoice& invoice);
    Look look_at_stock(const Invoice& invoice);
    Look judge(const Invoice& invoice, const Others& others, const Goods& levels) const;
    database::Sql removal_of(std::int64_t claim) const;

    database::Connection& connection_;
    std::int64_t id_ = 0;      // marks the rows of this claim
    bool is_missing_ = false;  // the table
    bool has_claimed_ = false;
    std::int64_t number_ = 0;
    Goods goods_;  // of the invoice
};

}  // namespace sales
