// A shop on a server, reached through unixODBC and the FreeTDS driver.
#pragma once

#include <memory>
#include <string>

#include "database/connection.h"

namespace database {

// Opens the server that the program's connection string names ("Provider=SQLOLEDB.1;…", to the letter): a
// data source is a host, "host,port" or "host\instance". Log-in waits 5 s, a statement 30 s. A server that
// does not answer throws Error with the description "SQL Server does not exist or access denied."; a wrong
// password or a missing database keeps the server's own text. When the connection is lost in mid-day the
// statement throws Error 08S01, and the next one connects again.
std::unique_ptr<Connection> open_sqlserver(const std::string& connection_string);

}  // namespace database
