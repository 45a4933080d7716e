// Copies a shop's rows, also from one engine to the other.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "database/connection.h"

namespace backup {

struct CopiedShop {
    std::size_t tables = 0;
    std::int64_t rows = 0;
    std::vector<std::string> differences;  // tables whose numbers of rows differ afterwards
};

// Which row of which table the target refuses, and why.
class CopyFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Called after each row.
using CopyProgress = std::function<void(std::int64_t done, std::int64_t total)>;

// Copies a shop into `target`, an empty database on either engine. Creates this version's schema, adds tables
// and columns that only the source has, copies all rows, and counts the rows of every table on both sides.
CopiedShop copy_shop(database::Connection& source, database::Connection& target, const CopyProgress& tell);

}  // namespace backup
