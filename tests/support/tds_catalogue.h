// What the test server knows about its tables: types of results, and the answers of the server's catalogue.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "support/tds_messages.h"
#include "support/tds_values.h"

namespace test::tds {

// The types of a result's columns: a table's own columns as they are declared, others as their values are.
std::vector<Type> types_of(database::Connection& shop, const Statement& statement,
                           const database::Result& result);

// Answers a query on the server's catalogue, which the embedded engine does not have: names from sysobjects
// by kind, or from sys.tables, and the columns of tables. Returns nothing for any other statement.
std::optional<database::Connection::Outcome> ask_catalogue(database::Connection& shop,
                                                           const std::filesystem::path& file,
                                                           std::string_view statement);

}  // namespace test::tds
