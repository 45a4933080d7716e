// Tables as a server's catalogue describes them. Its views answer at once. The driver's own calls take many
// times as long and are needed twice for each table: for its columns and for its key.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace database {

using TablesByName = std::map<std::string, std::shared_ptr<const Connection::Table>, std::less<>>;

// The statement that describes the tables, and the tables in its result by their names in lower case. A table
// that does not exist is missing from it.
Sql catalogue_statement(const std::vector<std::string>& tables);
TablesByName tables_in(const Result& catalogue);

// Returns true if a statement may change what the catalogue tells: anything but reading and changing rows,
// also as a part of several. A ";" in a text or a name ends no part.
bool may_change_tables(std::string_view statement);

}  // namespace database
