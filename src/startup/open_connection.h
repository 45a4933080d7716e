// Opens the shop's database on the engine that its connection file names.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "database/connection.h"
#include "startup/connection_file.h"

namespace startup {

// "Provider=SQLOLEDB.1;Password=…;Persist Security Info=True;User ID=sa;Initial Catalog= …;Data Source=…".
std::string connection_string(const ConnectionRecord& record, std::string_view password);

// Opens what a connection string names. The data source "embedded" is the embedded engine, and the catalog is
// then its existing file, relative to `folder`; any other data source is a server, reached through unixODBC
// and FreeTDS (login 5 s, query 30 s). A server that does not answer throws Error with the description
// "SQL Server does not exist or access denied.".
std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder);
using OpenConnection = std::function<std::unique_ptr<database::Connection>(
    const std::string& connection_string, const std::filesystem::path& folder)>;

// Opens the database of a connection record. A server needs the password of its login (read_sa_password);
// throws StartUpError without it.
std::unique_ptr<database::Connection> open_shop(const ConnectionRecord& record,
                                                const std::filesystem::path& program_folder,
                                                const std::filesystem::path& working_folder,
                                                const OpenConnection& open = open_connection);

// The file of an embedded shop.
std::filesystem::path shop_file(const ConnectionRecord& record, const std::filesystem::path& working_folder);

}  // namespace startup
