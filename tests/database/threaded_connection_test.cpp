// A server that stops answering: the calling thread can wait or give up, and nothing runs later.
#include "database/threaded_connection.h"

#include <gtest/gtest.h>

#include "database/sqlserver/odbc_connection.h"
#include "database/sqlserver/open.h"
#include "database/tds_server.h"

namespace {

using namespace std::chrono_literals;
using database::Error;
using database::ThreadedConnection;
using test::TdsServer;
namespace tds = test::tds;

// Waits as long as `answer` says, and counts what it is told.
struct TestWait final : database::Wait {
    std::chrono::milliseconds patience() override { return 100ms; }
    bool wait(const std::function<bool()>& ended) override {
        ++waits;
        if (meanwhile) meanwhile();
        for (auto left = give_up_after; left > 0ms && !ended(); left -= 10ms)
            std::this_thread::sleep_for(10ms);
        return ended();
    }
    void wake() override { ++wakes; }
    void ended(const std::exception* error) override { failures += error != nullptr ? 1 : 0; }

    int waits = 0;
    std::atomic<int> wakes = 0;
    int failures = 0;
    std::chrono::milliseconds give_up_after = 10s;
    std::function<void()> meanwhile;
};

std::string sqlstate_of(const std::function<void()>& work) {
    try {
        work();
    } catch (const Error& error) {
        return error.sqlstate();
    }
    return "00000";
}

class Threaded : public testing::Test {
  protected:
    std::atomic<std::chrono::milliseconds> pause_{300ms};
    TdsServer server_{[this](const std::string& request) {
        if (request.starts_with("wait")) return std::string();
        if (request.starts_with("slow")) std::this_thread::sleep_for(pause_.load());
        return tds::done(1);
    }};
    TestWait wait_;
    ThreadedConnection connection_{
        std::make_unique<database::OdbcConnection>(database::OdbcSettings{
            database::freetds_connection_string("User ID=sa;Password=secret;Initial Catalog=shop",
                                                "{FreeTDS}", "127.0.0.1", server_.port()),
            "", 5, 5}),
        wait_};
};

TEST_F(Threaded, OnlyASlowStatementIsWaitedFor) {
    EXPECT_EQ(connection_.execute("update basic set st_d = 1"), 1);
    EXPECT_EQ(wait_.waits, 0);
    EXPECT_EQ(connection_.execute("slow"), 1);
    EXPECT_EQ(wait_.waits, 1);
    EXPECT_EQ(wait_.wakes, 1);
    EXPECT_EQ(wait_.failures, 0);
}

TEST_F(Threaded, AStatementThatIsGivenUpEndsAtOnceAndRunsNoMore) {
    wait_.give_up_after = 50ms;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(sqlstate_of([&] { connection_.execute("wait"); }), "HYT00");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
    EXPECT_EQ(wait_.failures, 1);
    EXPECT_EQ(connection_.execute("update basic set st_d = 1"), 1);
    EXPECT_EQ(server_.logins(), 2) << "its answer must not be read as another's";

    // A statement that waits behind other work is never sent.
    pause_ = 800ms;
    connection_.run_later([](database::Connection& real) { real.execute("slow"); });
    EXPECT_EQ(sqlstate_of([&] { connection_.execute("never"); }), "HYT00");
    EXPECT_EQ(sqlstate_of([&] {
                  connection_.run_all(
                      {database::Command(database::Sql("never")), database::Command(database::Sql("never"))});
              }),
              "HYT00");
    wait_.give_up_after = 10s;
    EXPECT_EQ(connection_.execute("update basic set st_d = 1"), 1);
    for (const std::string& request : server_.requests())
        EXPECT_NE(request, "never");
}

TEST_F(Threaded, ATransactionIsOverWithItsConnection) {
    wait_.give_up_after = 50ms;
    EXPECT_EQ(sqlstate_of([&] {
                  database::Transaction transaction(connection_);
                  connection_.execute("wait");
              }),
              "HYT00");
    EXPECT_EQ(server_.logins(), 1) << "nobody connects again to roll back";
}

TEST_F(Threaded, NoStatementBeginsWhileAnotherIsWaitedFor) {
    wait_.meanwhile = [&] {
        EXPECT_THROW(connection_.execute("update basic set st_d = 2"), std::logic_error);
    };
    EXPECT_EQ(connection_.execute("slow"), 1);
    EXPECT_EQ(wait_.waits, 1);
}

}  // namespace
