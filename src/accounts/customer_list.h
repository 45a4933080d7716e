// The account customers as a list to choose from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/connection.h"

namespace accounts {

struct CustomerRow {
    std::int64_t code = 0;
    std::string name;
    std::string phone;  // the mobile's number where there is no other
    double balance = 0;
};

// In order of their codes.
std::vector<CustomerRow> list_customers(database::Connection& connection);

}  // namespace accounts
