// The other party of a movement of cash: the name of its customer, vendor or bank, or the note of a transfer.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "database/connection.h"

namespace cash {

inline constexpr int tips_payment = 2;  // sales.stype

// Each name is read once.
class Parties {
  public:
    explicit Parties(database::Connection& connection) : connection_(connection) {}

    // Reads the names of the walk-in customers of these invoices together.
    void read_walk_ins(const database::Result& sales);

    // The account customer, else the vendor, else the walk-in customer, else the receiver of the tips. If the
    // row has the columns customer_name, vendor_name and receiver, their names are taken from there. The
    // walk-in customer is always looked up: their numbers are not unique, so a join could list an invoice
    // twice.
    std::string of_invoice(const database::Row& sale);
    std::string of_voucher(const database::Row& voucher);
    std::string of_bank(const database::Row& movement);
    std::string of_transfer(const database::Row& transfer);  // its note
    std::string of_in_and_out(const database::Row& row);     // likewise
    std::string of_expense(const database::Row& expense);    // its headings and its note

  private:
    // The name of a code in a list, read by the statement at the first use; "" if there is no such row.
    const std::string& read(std::string_view list, std::int64_t code, const database::Sql& statement,
                            std::string_view column);
    const std::string& customer(std::int64_t code);
    const std::string& vendor(std::int64_t code);
    std::string walk_in(std::int64_t code);
    std::string receiver(std::int64_t code);

    database::Connection& connection_;
    std::map<std::pair<std::string_view, std::int64_t>, std::string> names_;
};

}  // namespace cash
