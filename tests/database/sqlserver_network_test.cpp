// The server's network: refused, silent, half-open, lost in mid-day; and what is sent over it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "database/sqlserver/odbc_connection.h"
#include "database/sqlserver/open.h"
#include "database/tds_server.h"

namespace {

using database::Error;
using database::OdbcConnection;
using database::OdbcSettings;
using database::Value;
using test::TdsServer;
namespace tds = test::tds;
using ::testing::Contains;
using ::testing::HasSubstr;

std::string program_string(const std::string& source, const std::string& password = "secret") {
    return "Provider=SQLOLEDB.1;Password=" + password +
           ";Persist Security Info=True;User ID=sa;Initial Catalog= shop;Encryption=off;Data Source=" +
           source;
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

TEST(ServerAddress, NoLogInReachesAServerThatDoesNotEncrypt) {
    TdsServer server([](const std::string&) { return tds::done(); });
    const std::string source = "127.0.0.1," + std::to_string(server.port());
    std::string string = program_string(source);
    const auto off = string.find("Encryption=off;");
    for (const char* word : {"", "Encryption=login;", "Encryption=require;", "Encryption=nonsense;"}) {
        string = program_string(source).replace(off, 15, word);
        const Error error = error_of([&] { database::open_sqlserver(string); });
        EXPECT_EQ(error.kind(), Error::Kind::not_encrypted) << word << error.what();
        EXPECT_EQ(server.logins(), 0) << word;
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
    const TdsServer deaf([](const std::string&) { return ""; }, TdsServer::silence);
    const struct {
        const char* what;
        std::uint16_t port;
    } cases[] = {{"refused", tds::unused_port()},
                 {"silent", silent.port()},
                 {"hangs up at log-in", half_open.port()},
                 {"silent at log-in", deaf.port()}};
    for (const auto& [what, port] : cases) {
        SCOPED_TRACE(what);
        Error error("", "", "");
        const double seconds = seconds_of([&] {
            error = error_of([&] {
                database::open_sqlserver(program_string("127.0.0.1," + std::to_string(port)), {2, 2});
            });
        });
        EXPECT_EQ(error.sqlstate(), "08001");
        EXPECT_STREQ(error.what(), "SQL Server does not exist or access denied.");
        EXPECT_LT(seconds, 3.5);
    }
}

// A log-in is complete only when the session's settings are made.
TEST(ServerAddress, SilenceAfterTheLogInEndsInItsTimeToo) {
    const TdsServer server([](const std::string&) { return ""; });
    Error error("", "", "");
    const double seconds = seconds_of([&] {
        error = error_of([&] {
            OdbcConnection({driver_string(server.port()), "set dateformat ymd", 1, 30});
        });
    });
    EXPECT_EQ(error.sqlstate(), "HYT00");
    EXPECT_LT(seconds, 3);
}

// A server reports in the language of its installation; the error numbers give the meaning.
TEST(ServerAddress, RefusedLoginsKeepTheServersWords) {
    const std::string wrong_password = tds::error(18456, 14, "فشل تسجيل الدخول.");
    const struct {
        std::string answer;
        const char* sqlstate;
        const char* text;
        Error::Kind kind;
    } cases[] = {
        {wrong_password, "28000", "فشل تسجيل الدخول.", Error::Kind::login_refused},
        {tds::error(4060, 11, "لا يمكن الفتح.") + wrong_password, "42000", "لا يمكن الفتح.",
         Error::Kind::database_missing},
    };
    for (const auto& c : cases) {
        const TdsServer server([](const std::string&) { return ""; }, c.answer);
        const Error error = error_of([&] { OdbcConnection({driver_string(server.port()), "", 5, 5}); });
        EXPECT_EQ(error.sqlstate(), c.sqlstate);
        EXPECT_EQ(error.kind(), c.kind);
        EXPECT_STREQ(error.what(), c.text);
    }
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

// A server reports in the language of its installation; the error numbers give the meaning.
TEST(ServerConnection, KnowsErrorsByTheirNumbers) {
    const struct {
        int number;
        int severity;
        const char* sqlstate;
        Error::Kind kind = Error::Kind::other;
    } cases[] = {
        {2627, 14, "23000"},
        {8152, 16, "22001"},
        {8115, 16, "22003"},
        {1205, 13, "40001", Error::Kind::changed_meanwhile},
        {1222, 16, "HYT00", Error::Kind::timed_out},
        {1105, 17, "HY000", Error::Kind::disk_full},
        {9002, 17, "HY000", Error::Kind::disk_full},
        {3906, 16, "HY000", Error::Kind::read_only},
    };
    int number = 0;
    int severity = 0;
    TdsServer server([&](const std::string& request) {
        return request == "go wrong" ? tds::error(number, severity, "حدث خطأ في الخادم.") : tds::done(1);
    });
    OdbcConnection connection({driver_string(server.port()), "", 5, 5});
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        number = c.number;
        severity = c.severity;
        const Error error = error_of([&] { connection.execute("go wrong"); });
        EXPECT_EQ(error.sqlstate(), c.sqlstate);
        EXPECT_EQ(error.kind(), c.kind);
        EXPECT_STREQ(error.what(), "حدث خطأ في الخادم.");
        EXPECT_EQ(connection.execute("update basic set st_d = 1"), 1);
    }
    EXPECT_EQ(server.logins(), 1) << "none of them ends the connection";
}

TEST(ServerAddress, AMissingDriverIsNoMissingServer) {
    for (const char* driver :
         {"DRIVER={/nowhere/libtdsodbc.so};SERVER=127.0.0.1", "DRIVER={No Such Driver}"}) {
        const Error error = error_of([&] { OdbcConnection({driver, "", 1, 1}); });
        EXPECT_EQ(error.sqlstate(), "IM003") << driver;
        EXPECT_EQ(error.kind(), Error::Kind::no_driver) << driver;
    }
}

TEST(ServerConnection, ALostOneNamesTheCause) {
    TdsServer server([](const std::string& request) {
        return request == "wait" ? tds::error(596, 21, "the session was killed") + TdsServer::hang_up
                                 : tds::done(1);
    });
    OdbcConnection connection({driver_string(server.port()), "", 5, 2});
    // The server's last message is its answer; the next statement notices that it hung up.
    EXPECT_STREQ(error_of([&] { connection.execute("wait"); }).what(), "the session was killed");
    const Error next = error_of([&] { connection.execute("update basic set st_d = 1"); });
    EXPECT_EQ(next.kind(), Error::Kind::connection_lost);
    EXPECT_STRNE(next.what(), "");
    EXPECT_EQ(connection.execute("update basic set st_d = 1"), 1);
}

TEST(ServerConnection, SilenceEndsInTime) {
    TdsServer server([](const std::string& request) { return request == "wait" ? "" : tds::done(1); });
    OdbcConnection connection({driver_string(server.port()), "", 5, 2});
    Error error("", "", "");
    // The limit is waited for once, and not again for the answer to the driver's request to stop.
    const double seconds = seconds_of([&] { error = error_of([&] { connection.execute("wait"); }); });
    EXPECT_EQ(error.sqlstate(), "HYT00");
    EXPECT_GT(seconds, 1.9);
    EXPECT_LT(seconds, 3);
    EXPECT_EQ(connection.execute("update basic set st_d = 1"), 1);
    EXPECT_EQ(server.logins(), 2);
}

}  // namespace
