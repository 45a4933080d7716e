// Opening the shop's connection, whichever engine it runs on.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "database/connection.h"

namespace startup {

// Opens what the program's connection string names: "Provider=SQLOLEDB.1;Password=…;Persist Security
// Info=True;User ID=sa;Initial Catalog= …;Data Source=…". The data source "embedded" is the embedded engine,
// and the catalog then is the name of its file (taken from `folder` when relative, which must exist already);
// any other data source is a server, reached through unixODBC and FreeTDS (login 5 s, query 30 s). A server
// that does not answer throws Error with the description "SQL Server does not exist or access denied.".
std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder);

}  // namespace startup
