// The whole way to a server: the program's connection, the driver manager, FreeTDS, and the test server,
// which runs what it is sent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "database/bulk_insert.h"
#include "database/embedded/open.h"
#include "database/next_number.h"
#include "database/reads.h"
#include "database/recordset.h"
#include "database/sqlserver/odbc_catalogue.h"
#include "database/sqlserver/open.h"
#include "support/shop.h"
#include "support/tds_bridge.h"

namespace {

using database::Connection;
using database::Error;
using database::Null;
using database::Recordset;
using database::Value;
using test::TdsBridge;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class Bridge : public testing::Test {
  protected:
    Bridge() : bridge(folder.path()) {}

    std::unique_ptr<Connection> open(const std::string& password = "secret", const std::string& name = "shop",
                                     database::Patience patience = {}) {
        return database::open_sqlserver(
            "Provider=SQLOLEDB.1;Password=" + password +
                ";Persist Security Info=True;User ID=sa;Initial Catalog= " + name +
                ";Encryption=off;Data Source=127.0.0.1," + std::to_string(bridge.port()),
            patience);
    }
    static std::string failure_of(const std::function<void()>& work) {
        try {
            work();
        } catch (const Error& error) {
            return error.sqlstate() + " " + error.what();
        }
        return "no error";
    }
    static common::Moment day(int year, int month, int of_month, common::TimeOfDay time = {}) {
        return {{year, month, of_month}, time};
    }

    test::TemporaryFolder folder;
    TdsBridge bridge;
};

TEST_F(Bridge, ValuesComeBackAsTheyWent) {
    const auto connection = open();
    connection->execute(
        "create table kinds (code int not null primary key, name nvarchar(100), note nvarchar(max), big "
        "bigint, "
        "small smallint, tiny tinyint, yes bit, price float, rate real, cost money, weight numeric(12,3), "
        "made "
        "datetime, seen smalldatetime)");
    std::string long_text;  // a million bytes
    for (int i = 0; i < 143'000; ++i)
        long_text += "لبن ";
    const auto made = day(2026, 11, 21, {23, 59, 58, 990});
    const std::vector<Value> rows[] = {
        {std::int64_t{1}, "لبن كامل الدسم 🥛 d'Or; -- ", long_text,
         std::int64_t{9'007'199'254'740'993}, std::int64_t{-32768}, std::int64_t{255}, std::int64_t{1},
         0.1 + 0.2, 4.6, 12.3456, -7.125, made, day(2026, 11, 21, {10, 42, 0, 0})},
        {std::int64_t{2}, "", "", std::int64_t{-1}, std::int64_t{0}, std::int64_t{0}, std::int64_t{0}, -1e300,
         -0.1, 0.0, 0.0, day(3000, 1, 1), day(1900, 1, 1)},
        {std::int64_t{3}, Null{}, Null{}, Null{}, Null{}, Null{}, Null{}, Null{}, Null{}, Null{}, Null{},
         Null{}, Null{}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(connection->execute("insert into kinds values (?,?,?,?,?,?,?,?,?,?,?,?,?)", row), 1);
    // Texts as long as the read buffer, one shorter and one longer.
    for (const std::size_t length : {2047U, 2048U, 2046U}) {
        const std::string text(length, 'a');
        connection->execute("update kinds set note = ? where code = 3", {Value(text)});
        EXPECT_EQ(database::text_of(connection->scalar("select note from kinds where code = 3")), text);
    }
    connection->execute("update kinds set note = null where code = 3");
    const auto result = connection->query("select * from kinds order by code");
    ASSERT_EQ(result.size(), std::size(rows));
    for (std::size_t i = 0; i < result.size(); ++i)
        for (std::size_t column = 0; column < rows[i].size(); ++column)
            EXPECT_TRUE(result.rows()[i].cells()[column] == rows[i][column])
                << result.columns()[column] << " of row " << i + 1 << ": "
                << database::text_of(result.rows()[i].cells()[column]).substr(0, 60);
    // As a literal of the statement too, and beside a value.
    const auto found = connection->run(
        "select code from kinds where name = 'لبن كامل الدسم 🥛 d''Or; --' and made = ?",
        {made});
    ASSERT_EQ(found.result.size(), 1U);
    EXPECT_EQ(found.result.front().integer("code"), 1);
}

TEST_F(Bridge, ARecordsetFindsItsRowByWhatItRead) {
    const auto connection = open();
    connection->execute("create table loose (name nvarchar(20), rate real, made datetime, price float)");
    const auto made = day(2026, 11, 21, {10, 42, 7, 123});
    connection->execute("insert into loose values (N'شاي',4.6,?,0.3)", {made});
    for (const double rate : {10.7, 0.1, 1e-7}) {
        Recordset loose(*connection, "select * from loose");
        loose.set("rate", rate);
        loose.update();
        EXPECT_EQ(database::number_of(connection->scalar("select rate from loose")), rate);
        loose.set("name", "بن");
        loose.update();
    }
}

TEST_F(Bridge, CountsAndFailuresAreTheServers) {
    const auto connection = open();
    connection->execute("create table items (code int not null primary key, name nvarchar(5))");
    EXPECT_EQ(connection->execute("insert into items select 1,N'شاي' union all select 2,N'بن'"), 2);
    EXPECT_EQ(connection->execute("update items set name = 'x' where code > ?", {Value(std::int64_t{9})}), 0);
    EXPECT_EQ(connection->execute("update items set name = 'x' where code > 9"), 0);
    EXPECT_TRUE(connection->query("select * from items where code = 9").empty());
    const struct {
        const char* statement;
        const char* sqlstate;
    } cases[] = {
        {"insert into items values (1,'x')", "23000"},
        {"insert into items values (null,'x')", "23000"},
        {"select * from nowhere", "42S02"},
        {"select colour from items", "42S22"},
        {"create table items (a int)", "42S01"},
        {"select from where", "42000"},
        {"insert into items values (3,N'طويل جدا')", "22001"},
        {"select * from items where code = 'x'", "22018"},
        {"select 1/0", "22012"},
        {"select cast('2026/13/45' as datetime)", "22007"},
    };
    for (const auto& [statement, sqlstate] : cases) {
        EXPECT_THAT(failure_of([&] { connection->run(statement, {}); }), HasSubstr(sqlstate)) << statement;
        EXPECT_THAT(failure_of([&] { connection->run(std::string(statement) + " -- ", {}); }),
                    HasSubstr(sqlstate));
    }
    // The same as a call with values.
    EXPECT_THAT(
        failure_of([&] {
            connection->execute("insert into items values (?,?)", {Value(std::int64_t{1}), Value("x")});
        }),
        HasSubstr("23000"));
    EXPECT_EQ(bridge.logins(), 1);
}

// What a batch promises on both engines: the order, results and counts, the stop at the first failure, and
// that no transaction of its own stays open.
void try_batches(Connection& connection) {
    using database::Sql;
    connection.execute(
        "create table stk (code int not null primary key, name nvarchar(50), quan float, made "
        "datetime)");
    const auto made = common::Moment{{2026, 11, 21}, {23, 59, 58, 990}};
    const auto outcomes = connection.run_all(
        {Sql("begin transaction"),
         {"insert into stk values (?,?,?,?), (2,null,?,null)",
          {std::int64_t{1}, "شاي? 'و' -- بن", 0.1 + 0.2, made, -1e-7}},
         Sql("commit transaction"),
         Sql("select * from stk order by code"),
         Sql("delete from stk where code = 9"),
         database::Command(Sql("update stk set quan = 5 where code < 3")).that_must_change()});
    ASSERT_EQ(outcomes.size(), 6U);
    EXPECT_THAT(
        (std::vector{outcomes[1].changed, outcomes[3].changed, outcomes[4].changed, outcomes[5].changed}),
        ElementsAre(2, 0, 0, 2));
    const std::vector<Value> first = {std::int64_t{1}, "شاي? 'و' -- بن", 0.1 + 0.2, made};
    ASSERT_EQ(outcomes[3].result.size(), 2U);
    EXPECT_TRUE(outcomes[3].result.front().cells() == first);
    EXPECT_EQ(outcomes[3].result.rows()[1].number("quan"), -1e-7);
    EXPECT_TRUE(outcomes[5].result.empty());

    const Sql begin("begin transaction");
    const Sql commit("commit transaction");
    const auto added = [](int code) { return Sql("insert into stk (code) values (") + code + ")"; };
    const struct {
        std::vector<database::Command> commands;
        const char* sqlstate;
        std::size_t position;
        const char* codes;
    } cases[] = {
        {{added(3), added(3), added(4)}, "23000", 1, "1 2 3 "},
        {{begin, added(4), commit, begin, added(5), added(5), commit}, "23000", 5, "1 2 3 4 "},
        {{begin, added(5),
          database::Command(Sql("update stk set quan = 1 where code = 9")).that_must_change(), commit,
          added(6)},
         "40001",
         2,
         "1 2 3 4 "},
        {{added(5), Sql("select * from nowhere"), added(6)}, "42S02", 1, "1 2 3 4 5 "},
        {{begin, added(6), database::Command(Sql("delete from stk where code = 9")).that_must_change()},
         "40001",
         2,
         "1 2 3 4 5 "},
    };
    for (const auto& [commands, sqlstate, position, codes] : cases) {
        try {
            connection.run_all(commands);
            ADD_FAILURE() << "no error " << sqlstate;
        } catch (const database::BatchError& error) {
            EXPECT_EQ(error.sqlstate(), sqlstate);
            EXPECT_EQ(error.position(), position);
            EXPECT_EQ(error.statement(), commands[position].text());
        }
        std::string left;
        for (const auto& row : connection.query("select code from stk order by code"))
            left += row.text("code") + " ";
        EXPECT_EQ(left, codes);
        connection.execute(begin);  // none is open
        connection.execute(commit);
    }
}

// Reads of tables that the shop lacks, wherever they stand among others.
void try_missing_tables(Connection& connection) {
    using database::Sql;
    connection.execute("create table one (code int)");
    connection.execute("insert into one values (7)");
    // "o" reads the table that is there, "m" one that is not.
    for (const std::string_view order : {"mo", "om", "mmo", "omo", "omom", "mm"}) {
        database::Reads reads;
        std::string took;
        for (const char which : order) {
            const auto take = [&took, which](const database::Result& rows) {
                took += which + rows.front().text("code");
            };
            if (which == 'o')
                reads.add("select code from one", take);
            else
                reads.add_optional("select code from till_missing", take);
        }
        reads.run(connection);
        EXPECT_EQ(took, std::count(order.begin(), order.end(), 'o') == 2   ? "o7o7"
                        : std::count(order.begin(), order.end(), 'o') == 1 ? "o7"
                                                                           : "")
            << order;
    }
    database::Reads needed;
    needed.add("select code from one", [](const database::Result&) {});
    needed.add("select code from till_missing", [](const database::Result&) {});
    EXPECT_THROW(needed.run(connection), Error);
}

TEST_F(Bridge, ABatchKeepsItsPromises) {
    const auto connection = open();
    try_batches(*connection);
    // Not as a decimal number, which a server may round on its way to a float column.
    connection->run_all({{"update stk set quan = ? where code = 1", {0.1 + 0.2}}});
    EXPECT_THAT(bridge.received().back().text, HasSubstr("quan = 3.0000000000000004e-01 "));
    try_missing_tables(*connection);
    const auto shop = database::open_embedded(folder.path() / "own.db", true);
    try_batches(*shop);
    try_missing_tables(*shop);
    // When the answer to a batch is lost, its first statements have run, and the next one connects anew.
    for (const auto failure : {TdsBridge::Failure::cut, TdsBridge::Failure::run_and_cut}) {
        bridge.fail_next("set quan = 8", failure);
        EXPECT_THAT(failure_of([&] {
                        connection->run_all({database::Sql("update stk set quan = 7"),
                                             database::Sql("update stk set quan = 8")});
                    }),
                    HasSubstr("08S01"));
        EXPECT_EQ(database::number_of(connection->scalar("select quan from stk where code = 1")),
                  failure == TdsBridge::Failure::cut ? 7 : 8);
    }
}

TEST_F(Bridge, ManyRowsGoInFewStatements) {
    const auto connection = open();
    connection->execute(
        "create table wide (code int, name nvarchar(20), price float, made datetime, yes bit)");
    const auto statements = [&] { return bridge.received().size(); };
    const std::size_t before = statements();
    database::BulkInsert rows(*connection, database::Sql("insert into wide (code,name,price,made,yes)"), 5,
                              database::BulkRows::many);
    for (std::int64_t i = 1; i <= 1000; ++i)
        rows.add({Value(i), i % 3 == 0 ? Value(Null{}) : Value("شاي"), Value(0.5),
                  i % 2 == 0 ? Value(Null{}) : Value(day(2026, 11, 21)), Value(std::int64_t{1})});
    rows.finish();
    EXPECT_EQ(statements() - before, 3U) << "419 rows have 2,095 values";
    const auto told = connection->query(
        "select count(*) as n,count(name) as names,sum(price) as prices,count(made) as days,max(code) as "
        "last "
        "from wide");
    EXPECT_EQ(told.front().integer("n"), 1000);
    EXPECT_EQ(told.front().integer("names"), 667);
    EXPECT_EQ(told.front().number("prices"), 500);
    EXPECT_EQ(told.front().integer("days"), 500);
    EXPECT_EQ(told.front().integer("last"), 1000);
}

TEST_F(Bridge, TillsTakeTurnsAtDrawingNumbers) {
    const auto connection = open();
    connection->execute("create table sttran (tnum int)");
    connection->execute("insert into sttran values (4)");
    const auto draw = [&] {
        const std::size_t before = bridge.received().size();
        EXPECT_EQ(database::next_number(*connection, "select max(tnum) as last_ from sttran"), 5);
        const auto received = bridge.received();
        return std::any_of(received.begin() + static_cast<std::ptrdiff_t>(before), received.end(),
                           [](const auto& one) { return one.text.starts_with("insert into till_number "); });
    };
    EXPECT_FALSE(draw()) << "a shop without the table";
    connection->execute("create table till_number (id int not null primary key)");
    EXPECT_TRUE(draw());
}

TEST_F(Bridge, WhoMayNotComeInIsTold) {
    EXPECT_THAT(failure_of([&] { open("wrong"); }), AllOf(HasSubstr("28000"), HasSubstr("'sa'")));
    EXPECT_THAT(failure_of([&] { open("secret", "nowhere"); }), HasSubstr("42000 Cannot open database"));
    // With a server that has its own error numbers, the cause shows because the log-in opens another
    // database.
    bridge.know_less();
    try {
        open("secret", "nowhere");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::database_missing) << error.sqlstate() << error.what();
    }
}

TEST_F(Bridge, DescribesTables) {
    const auto connection = open();
    connection->execute(
        "create table [print] (code int not null, store int not null, name nvarchar(30), rate real, made "
        "datetime, "
        "num numeric(12,3), note nvarchar(max), primary key (store, code))");
    const auto shape = connection->describe("[dbo].[PRINT]");
    EXPECT_THAT(shape.columns, ElementsAre("code", "store", "name", "rate", "made", "num", "note"));
    EXPECT_THAT(shape.types, ElementsAre("int", "int", "nvarchar(30)", "real", "datetime", "numeric(12, 3)",
                                         "nvarchar(max)"));
    EXPECT_THAT(shape.key, ElementsAre("store", "code"));
    EXPECT_THAT(connection->tables(), ElementsAre("print"));
    connection->execute("alter table [print] add seen datetime");
    EXPECT_EQ(connection->describe("print").columns.size(), 8U) << "read again after a change";
    EXPECT_THAT(failure_of([&] { connection->describe("nowhere"); }), HasSubstr("42S02"));
}

// A description costs one request, once; several tables together also cost one.
TEST_F(Bridge, KeepsDescriptionsUntilATableChanges) {
    const auto connection = open();
    connection->execute("create table one (code int, name varchar(20))");
    connection->execute("create table two (code int)");
    const auto requests_of = [&](const std::function<void()>& work) {
        const int before = bridge.requests();
        work();
        return bridge.requests() - before;
    };
    const auto describe = [&] { connection->describe_all({"one", "[two]"}); };
    EXPECT_EQ(requests_of(describe), 1);
    EXPECT_EQ(connection->describe("one").types[1], "varchar(20)");
    connection->execute("insert into one (code,name) select 1,'a;drop table x'");
    EXPECT_EQ(requests_of(describe), 0);
    bridge.drop();
    EXPECT_THAT(failure_of([&] { connection->execute("select 1"); }), HasSubstr("08S01"));
    connection->execute("select 1");
    EXPECT_EQ(requests_of(describe), 0) << "on a new connection";
    connection->execute("alter table two add made datetime");
    EXPECT_EQ(requests_of(describe), 1);
    EXPECT_EQ(connection->describe("two").columns.size(), 2U);
    for (const char* harmless : {"", ";", " Update t set a = ';' where [b;c] = 1; select 'it''s;drop' ;"})
        EXPECT_FALSE(database::may_change_tables(harmless)) << harmless;
    for (const char* change : {"drop table t", "select 1;alter table t add a int", "exec sp_rename 'a', 'b'"})
        EXPECT_TRUE(database::may_change_tables(change)) << change;
}

TEST_F(Bridge, AnotherTillsTransactionIsWaitedForAndUndoneWithIt) {
    const auto first = open();
    first->execute("create table stk (icode int, quan float)");
    first->execute("begin transaction");
    first->execute("insert into stk values (1,5)");
    bridge.drop();
    const auto second = open();
    for (int i = 0; i < 100 && database::integer_of(second->scalar("select count(*) from stk")) != 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(second->execute("insert into stk values (2,5)"), 1);
    EXPECT_THAT(failure_of([&] { first->execute("commit transaction"); }), HasSubstr("08S01"));
    EXPECT_EQ(database::text_of(first->scalar("select icode from stk")), "2");
}

TEST_F(Bridge, EveryLossIsOneFailureAndTheNextStatementConnectsAnew) {
    using Failure = TdsBridge::Failure;
    const auto connection = open("secret", "shop", {5, 2});
    connection->execute("create table basic (st_d int)");
    connection->execute("insert into basic values (1)");
    const struct {
        Failure failure;
        const char* sqlstate;
        std::int64_t stored;
    } cases[] = {
        {Failure::cut, "08S01", 1}, {Failure::run_and_cut, "08S01", 2}, {Failure::silence, "HYT00", 2}};
    int logins = 1;
    for (const auto& c : cases) {
        bridge.fail_next("set st_d", c.failure);
        EXPECT_THAT(failure_of([&] { connection->execute("update basic set st_d = st_d + 1"); }),
                    HasSubstr(c.sqlstate));
        EXPECT_EQ(database::integer_of(connection->scalar("select st_d from basic")), c.stored);
        EXPECT_EQ(bridge.logins(), ++logins);
        const auto received = bridge.received();
        EXPECT_EQ(received[received.size() - 2].text, "set dateformat ymd");
        EXPECT_EQ(received[received.size() - 2].connection, received.back().connection);
        EXPECT_EQ(received.back().connection, logins);
    }
    bridge.set_network(TdsBridge::Network::down);
    EXPECT_THAT(failure_of([&] { connection->execute("select 1"); }), HasSubstr("08S01"));
    EXPECT_THAT(failure_of([&] { connection->execute("select 1"); }),
                HasSubstr("08001 SQL Server does not exist"));
    bridge.set_network(TdsBridge::Network::up);
    EXPECT_EQ(database::integer_of(connection->scalar("select st_d from basic")), 2);
}

}  // namespace
