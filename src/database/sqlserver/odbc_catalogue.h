// What a server's catalogue tells of tables. Its views answer at once; the procedures behind the driver's
// calls take many times as long, and one call for the columns of each table and another for its key.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace database {

using TablesByName = std::map<std::string, std::shared_ptr<const Connection::Table>, std::less<>>;

// The statement that describes the tables, and the tables in what it gives, by their names in lower case; a
// table that does not exist is not among them.
Sql catalogue_statement(const std::vector<std::string>& tables);
TablesByName tables_in(const Result& catalogue);

// Returns true if a statement may change what the catalogue tells: anything but reading and changing rows,
// also as a part of several. A ";" in a text or a name ends no part.
bool may_change_tables(std::string_view statement);

}  // namespace database
