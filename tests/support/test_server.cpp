#include "support/test_server.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include "common/text.h"
#include "database/sqlserver/open.h"

namespace test {

using database::Row;
using database::Sql;

std::string TestServer::connection_string() const {
    return "Provider=SQLOLEDB.1;Password=" + password + ";Persist Security Info=True;User ID=" + user +
           ";Initial Catalog= " + database + ";Data Source=" + source;
}

std::optional<TestServer> test_server() {
    const char* value = std::getenv("TALLVEX_TEST_SQLSERVER");
    if (value == nullptr || *value == '\0') return {};
    std::string rest = value;
    std::array<std::string, 4> parts;  // server, port, database, user
    for (std::string& part : parts) {
        const auto end = rest.find(';');
        if (end == rest.npos)
            throw std::runtime_error("TALLVEX_TEST_SQLSERVER is not \"server;port;database;user;password\"");
        part = rest.substr(0, end);
        rest.erase(0, end + 1);
    }
    return TestServer{parts[0] + "," + parts[1], parts[2], parts[3], rest};
}

std::unique_ptr<database::Connection> open_emptied(const TestServer& server) {
    if (common::lower_ascii(server.database).find("test") == std::string::npos)
        throw std::runtime_error("The database \"" + server.database +
                                 "\" is left alone: tests empty only one whose name says that it is for "
                                 "tests, such as shop_test.");
    auto connection = database::open_sqlserver(server.connection_string());
    for (const Row& view : connection->query("select name from sysobjects where xtype = 'V'"))
        connection->execute(Sql::from_administrator("drop view [" + view.text("name") + "]"));
    for (const Row& table : connection->query("select name from sysobjects where xtype = 'U'"))
        connection->execute(Sql::from_administrator("drop table [" + table.text("name") + "]"));
    return connection;
}

}  // namespace test
