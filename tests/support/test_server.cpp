#include "support/test_server.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include "database/sqlserver_connection.h"

namespace test {

std::optional<std::string> test_server() {
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
    return "Provider=SQLOLEDB.1;Password=" + rest + ";Persist Security Info=True;User ID=" + parts[3] +
           ";Initial Catalog= " + parts[2] + ";Data Source=" + parts[0] + "," + parts[1];
}

std::unique_ptr<database::Connection> open_emptied_test_server() {
    auto connection = database::open_sqlserver(test_server().value());
    for (const char* kind : {"V", "U"}) {
        const auto objects = connection->query(database::Sql::from_administrator(
            std::string("select name from sysobjects where xtype = '") + kind + "'"));
        for (const auto& object : objects)
            connection->execute(database::Sql::from_administrator(
                std::string(*kind == 'V' ? "drop view [" : "drop table [") + object.text("name") + "]"));
    }
    return connection;
}

}  // namespace test
