// The server's network: refused, silent, half-open, lost in mid-day; and what goes over the wire.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "database/odbc_connection.h"
#include "database/sqlserver_connection.h"
#include "database/tds_server.h"

namespace {

using database::Error;
using database::OdbcConnection;
using database::OdbcRoad;
using database::Sql;
using database::Value;
using test::TdsServer;
namespace tds = test::tds;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string program_string(const std::string& source, const std::string& password = "secret") {
    return "Provider=SQLOLEDB.1;Password=" + password +
           ";Persist Security Info=True;User ID=sa;Initial Catalog= shop;Data Source=" + source;
}

std::string driver_string(std::uint16_t port) {
    return database::freetds_connection_string(program_string("127.0.0.1"), "{FreeTDS}", "127.0.0.1", port);
}

double seconds_of(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Error error_of(const std::function<void()>& work) {
    try {
        work();
    } catch (const Error& error) {
        return error;
    }
    return {"00000", "no error", ""};
}

TEST(ServerAddress, OpensToTheLetter) {
    TdsServer server([](const std::string&) { return tds::done(); });
    for (const char* password : {"secret", "", "a;b=c", "{x}", "x}y", "}", "pass word ", "كلمة"}) {
        const auto connection =
            database::open_sqlserver(program_string("127.0.0.1," + std::to_string(server.port()), password));
        EXPECT_EQ(server.last_login().user, "sa");
        EXPECT_EQ(server.last_login().password, password);
        EXPECT_EQ(server.last_login().database, "shop");
    }
}

TEST(ServerAddress, APasswordThatTheDriverCannotSendIsRefused) {
    const Error error = error_of([] { database::open_sqlserver(program_string("127.0.0.1,1", "a};UID=b")); });
    EXPECT_EQ(error.sqlstate(), "28000");
    EXPECT_THAT(error.what(), HasSubstr("};"));
}

TEST(ServerAddress, UnreachableServersSayTheSame) {
    const test::SilentServer silent;
    const TdsServer half_open([](const std::string&) { return ""; }, TdsServer::hang_up);
    const struct {
        const char* what;
        std::uint16_t port;
    } cases[] = {{"refused", test::unused_port()},
                 {"silent", silent.port()},
                 {"hangs up at log-in", half_open.port()}};
    for (const auto& [what, port] : cases) {
        SCOPED_TRACE(what);
        Error error("", "", "");
        const double seconds = seconds_of([&] {
            error = error_of(
                [&] { database::open_sqlserver(program_string("127.0.0.1," + std::to_string(port))); });
        });
        EXPECT_EQ(error.sqlstate(), "08001");
        EXPECT_STREQ(error.what(), "SQL Server does not exist or access denied.");
        EXPECT_LT(seconds, 7);
    }
}

TEST(ServerAddress, RefusedLoginsKeepTheServersWords) {
    const std::string wrong_password = tds::error(18456, 14, "Login failed for user 'sa'.");
    const std::string no_database =
        tds::error(4060, 11, "Cannot open database \"shop\" requested by the login.") + wrong_password;
    const struct {
        const char* sqlstate;
        const char* text;
        std::string answer;
    } cases[] = {{"28000", "Login failed for user 'sa'.", wrong_password},
                 {"42000", "Cannot open database \"shop\" requested by the login.", no_database}};
    for (const auto& [sqlstate, text, answer] : cases) {
        const TdsServer server([](const std::string&) { return ""; }, answer);
        const Error error = error_of([&] { OdbcConnection({driver_string(server.port()), "", 5, 5}); });
        EXPECT_EQ(error.sqlstate(), sqlstate);
        EXPECT_STREQ(error.what(), text);
    }
}

TEST(ServerConnection, ReadsEveryType) {
    TdsServer server([](const std::string& request) {
        if (!request.starts_with("select")) return tds::done();
        return tds::row({{"name", Value("لبن كامل الدسم 🥛")},
                         {"none", Value()},
                         {"code", Value(std::int64_t{9'007'199'254'740'993})},
                         {"price", Value(0.1 + 0.2)},
                         {"edate", Value(common::Moment{{2026, 11, 21}, {10, 42, 7, 0}})},
                         {"long", Value(std::string(3999, 'x'))}});
    });
    OdbcConnection connection({driver_string(server.port()), "set dateformat ymd", 5, 5});
    const auto result = connection.query("select name from items where name = N'لبن 🥛'");
    ASSERT_EQ(result.size(), 1U);
    const auto& row = result.front();
    EXPECT_EQ(row.text("NAME"), "لبن كامل الدسم 🥛");
    EXPECT_TRUE(row.null("none"));
    EXPECT_EQ(row.integer("code"), 9'007'199'254'740'993);
    EXPECT_EQ(row.number("price"), 0.1 + 0.2);
    EXPECT_EQ(row.moment("edate"), (common::Moment{{2026, 11, 21}, {10, 42, 7, 0}}));
    EXPECT_EQ(row.text("long").size(), 3999U);
    EXPECT_EQ(server.requests().back(), "select name from items where name = N'لبن 🥛'");
}

TEST(ServerConnection, SendsStatementsAsWrittenAndValuesBeside) {
    TdsServer server([](const std::string&) { return tds::done(3); });
    OdbcConnection connection({driver_string(server.port()), "set dateformat ymd", 5, 5});
    EXPECT_EQ(connection.execute("update worker set work_name = N'سعاد'"), 3);
    const double salary = 0.1 + 0.2;
    connection.execute("update worker set work_name = ? where work_code = ? and salary = ?",
                       {Value("سعاد"), Value(std::int64_t{7}), Value(salary)});
    const auto requests = server.requests();
    EXPECT_THAT(requests, Contains("set dateformat ymd"));
    EXPECT_THAT(requests, Contains("update worker set work_name = N'سعاد'"));
    EXPECT_THAT(requests.back(), HasSubstr(tds::wide("سعاد")));
    EXPECT_THAT(requests.back(), HasSubstr(tds::wide("set work_name = @P1 where work_code = @P2")));
    EXPECT_THAT(requests.back(),
                HasSubstr(std::string(reinterpret_cast<const char*>(&salary), sizeof salary)));
}

TEST(ServerConnection, ArabicLiteralsGoWide) {
    const std::pair<const char*, const char*> cases[] = {
        {"select 'abc', ''", "select 'abc', ''"},
        {"select * from items where name like 'لبن%'", "select * from items where name like N'لبن%'"},
        {"select N'لبن',n'لبن'", "select N'لبن',n'لبن'"},
        {"select 1 where[x]='لبن'or'a'='ل''ب'", "select 1 where[x]=N'لبن'or'a'=N'ل''ب'"},
        {"select [it's] as 'س' -- 'س'\n, 'س' /* 'س' */", "select [it's] as N'س' -- 'س'\n, N'س' /* 'س' */"},
        {"select @n'س'", "select @nN'س'"},
        {"select 'open س", "select N'open س"},
    };
    for (const auto& [written, sent] : cases)
        EXPECT_EQ(database::server_text(written), sent);

    TdsServer server([](const std::string&) { return tds::done(); });
    const auto connection =
        database::open_sqlserver(program_string("127.0.0.1," + std::to_string(server.port())));
    connection->execute("update basic set aname = 'بقالة'");
    EXPECT_EQ(server.requests().back(), "update basic set aname = N'بقالة'");
}

TEST(ServerConnection, StatementErrorsLeaveTheConnectionAlive) {
    const TdsServer server([](const std::string& request) {
        return request.starts_with("select") ? tds::error(208, 16, "Invalid object name 'nowhere'.")
                                             : tds::done(1);
    });
    OdbcConnection connection({driver_string(server.port()), "", 5, 5});
    const Error error = error_of([&] { connection.query("select * from nowhere"); });
    EXPECT_EQ(error.sqlstate(), "42S02");
    EXPECT_STREQ(error.what(), "Invalid object name 'nowhere'.");
    EXPECT_EQ(error.statement(), "select * from nowhere");
    EXPECT_EQ(connection.execute("delete from tmp_price"), 1);
    EXPECT_EQ(server.logins(), 1);
}

TEST(ServerConnection, ConnectsAgainAfterALoss) {
    TdsServer server(
        [](const std::string& request) { return request == "die" ? TdsServer::hang_up : tds::done(1); });
    OdbcConnection connection({driver_string(server.port()), "set dateformat ymd", 5, 5});
    const Error error = error_of([&] { connection.execute("die"); });
    EXPECT_EQ(error.sqlstate(), "08S01");
    EXPECT_TRUE(error.is_connection_lost());
    EXPECT_EQ(connection.execute("update basic set st_d = 1"), 1);
    EXPECT_EQ(server.logins(), 2);
    EXPECT_THAT(server.requests(),
                ElementsAre("set dateformat ymd", "die", "set dateformat ymd", "update basic set st_d = 1"));
}

TEST(ServerConnection, AServerThatStaysAwayIsUnreachable) {
    auto server = std::make_unique<TdsServer>([](const std::string&) { return tds::done(1); });
    OdbcConnection connection({driver_string(server->port()), "", 5, 5});
    server.reset();
    EXPECT_EQ(error_of([&] { connection.execute("update basic set st_d = 1"); }).sqlstate(), "08S01");
    for (int attempt = 0; attempt < 2; ++attempt) {
        const Error error = error_of([&] { connection.execute("update basic set st_d = 1"); });
        EXPECT_EQ(error.sqlstate(), "08001");
        EXPECT_STREQ(error.what(), "SQL Server does not exist or access denied.");
    }
}

TEST(ServerConnection, SilenceEndsInTime) {
    TdsServer server([](const std::string& request) { return request == "wait" ? "" : tds::done(1); });
    OdbcConnection connection({driver_string(server.port()), "", 5, 1});
    Error error("", "", "");
    const double seconds = seconds_of([&] { error = error_of([&] { connection.execute("wait"); }); });
    EXPECT_EQ(error.sqlstate(), "HYT00");
    EXPECT_LT(seconds, 4);
    EXPECT_EQ(connection.execute("update basic set st_d = 1"), 1);
    EXPECT_EQ(server.logins(), 2);
}

}  // namespace
