// Rows are edited one at a time, and changes by others meanwhile are detected.
#include "database/recordset.h"

#include "database/engine.h"
#include "support/faulty_connection.h"
#include "support/shop.h"

namespace {

using database::Error;
using database::Recordset;
using database::Sql;
using database::Value;

class Records : public test::Engine {
  protected:
    Records() {
        if (const auto server = test::test_server()) connection = test::open_emptied(*server);
        run("create table keyed (code int not null primary key, name nvarchar(10), made datetime, price "
            "real)");
        run("create table loose (code int, name nvarchar(10), made datetime, price real)");
        for (const char* table : {"keyed", "loose"}) {
            run(std::string("insert into ") + table + " values (1,N'شاي','2026/11/21 10:30:15',0.1)");
            run(std::string("insert into ") + table + " values (2,null,null,null)");
        }
    }
    static std::string state_of(const std::function<void()>& action) {
        try {
            action();
        } catch (const Error& error) {
            return error.sqlstate();
        }
        return "no error";
    }
};

TEST_F(Records, WalkAndRead) {
    Recordset records(*connection, "select * from keyed order by code desc");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records.integer("CODE"), 2);
    EXPECT_TRUE(records.null("name"));
    records.move_next();
    EXPECT_EQ(records.text("name"), "شاي");
    EXPECT_EQ(records.moment("made"), (common::Moment{{2026, 11, 21}, {10, 30, 15, 0}}));
    records.move_next();
    EXPECT_TRUE(records.at_end());
    EXPECT_EQ(state_of([&] { records.get("code"); }), "24000");
    EXPECT_EQ(state_of([&] { records.set("code", 1); }), "24000");
    records.move_first();
    EXPECT_EQ(records.integer("code"), 2);
    EXPECT_EQ(state_of([&] { records.get("nothing"); }), "42S22");
}

TEST_F(Records, AddReadsNothing) {
    test::FaultyConnection counted(*connection);
    Recordset records(counted, "select * from keyed");
    records.add();
    records.set("code", 7);
    records.set("name", "d'Or");
    records.set("made", common::Date{2026, 1, 2});
    EXPECT_EQ(records.integer("code"), 7);
    EXPECT_TRUE(records.null("price"));
    records.update();
    EXPECT_EQ(counted.count(), 1);
    EXPECT_EQ(rows("select name,made,price from keyed where code = 7"), "d'Or|2026/01/02 00:00:00|null");
    records.add();
    records.cancel();
    records.update();
    EXPECT_EQ(counted.count(), 1);
    // A row that is added after the others were read becomes the current one.
    EXPECT_EQ(records.size(), 3U);
    records.add();
    records.set("code", 8);
    records.update();
    EXPECT_EQ(records.integer("code"), 8);
    records.set("name", "eight");
    records.update();
    EXPECT_EQ(rows("select name from keyed where code = 8"), "eight");
}

TEST_F(Records, ChangesOneRowOnly) {
    // Of rows that are equal in everything only one is written.
    run("insert into loose values (2,null,null,null)");
    Recordset records(*connection, "select * from loose where code = 2");
    records.set("name", "two");
    records.set("price", 2.5);
    records.update();
    EXPECT_EQ(rows("select count(*) from loose where name = 'two'"), "1");
    EXPECT_EQ(records.text("name"), "two");
    // A second update compares with what the first one wrote.
    records.set("name", Value(database::Null{}));
    records.update();
    EXPECT_EQ(rows("select price from loose where code = 2 and name is null order by price"), "null / 2.5");
}

// A value that the column rounded is not a change by someone else.
TEST_F(Records, ValuesThatAreStoredRoundedCanBeChangedAgain) {
    run("create table kinds (i smallint, b bit, n numeric(8, 2), r real, t nvarchar(5), d datetime, m "
        "nvarchar(max))");
    for (const bool added : {true, false}) {
        run("delete from kinds");
        if (!added) run("insert into kinds (i) values (0)");
        Recordset records(*connection, "select * from kinds");
        EXPECT_EQ(records.size(), added ? 0U : 1U);
        if (added) records.add();
        records.set("i", 2.9);
        records.set("b", 7);
        records.set("n", 1.005);
        records.set("r", "2.5");
        records.set("t", "ab       ");
        records.set("d", "2026/11/21");
        records.set("m", 12);
        records.update();
        for (const char* text : {"x", "y"}) {
            records.set("t", text);
            records.update();
        }
        EXPECT_EQ(rows("select * from kinds"), "2|1|1.01|2.5|y|2026/11/21 00:00:00|12");
        run("update kinds set n = 1.02");
        records.set("t", "z");
        EXPECT_EQ(state_of([&] { records.update(); }), "40001");
    }
}

TEST_F(Records, WhoComesLateWritesNothing) {
    for (const char* table : {"keyed", "loose"}) {
        const std::string t = table;
        for (const std::string& meanwhile : std::vector<std::string>{
                 "update " + t + " set price = 0.2 where code = 1",
                 "update " + t + " set made = null where code = 1",
                 "update " + t + " set name = 'x' where code = 1", "delete from " + t + " where code = 1"}) {
            run("delete from " + t);
            run("insert into " + t + " values (1,N'شاي','2026/11/21 10:30:15',0.1)");
            Recordset records(*connection, Sql::from_administrator("select * from " + t + " where code = 1"));
            ASSERT_EQ(records.integer("code"), 1);
            run(meanwhile);
            records.set("name", "late");
            EXPECT_EQ(state_of([&] { records.update(); }), "40001") << meanwhile;
            EXPECT_EQ(rows("select count(*) from " + t + " where name = 'late'"), "0") << meanwhile;
        }
    }
}

TEST_F(Records, WhatTheServerRefusesIsRefused) {
    Recordset records(*connection, "select * from [dbo].[keyed] where code = 1");
    const struct {
        const char* column;
        Value value;
        const char* state;
    } cases[] = {
        {"name", std::string("12345678901"), "22001"}, {"price", std::string("x"), "22018"},
        {"made", std::string("x"), "22007"},           {"code", std::int64_t{2}, "23000"},
        {"code", database::Null{}, "23000"},           {"code", std::int64_t{3000000000}, "22003"},
    };
    for (const auto& [column, value, state] : cases) {
        records.set(column, value);
        EXPECT_EQ(state_of([&] { records.update(); }), state) << column;
        EXPECT_EQ(state_of([&] { records.move_next(); }), "HY010") << "the change is still open";
        records.cancel();
    }
    EXPECT_EQ(rows("select * from keyed where code = 1"), "1|شاي|2026/11/21 10:30:15|0.1");
    EXPECT_EQ(state_of([&] { records.set("nothing", 1); }), "42S22");
    EXPECT_EQ(state_of([&] { Recordset(*connection, "select code from keyed"); }), "42000");
    EXPECT_EQ(state_of([&] { Recordset(*connection, "select * from nowhere").size(); }), "42S02");
}

// As a server does it: no row numbers, all former values.
TEST_F(Records, WithoutRowNumbersTheFormerValuesFindTheRow) {
    struct AsServer final : test::FaultyConnection {
        using FaultyConnection::FaultyConnection;
        bool is_embedded() const override { return false; }
    } server(*connection);
    run("insert into loose values (2,null,null,null)");
    Recordset records(server, "select * from loose");
    records.set("name", "one");
    records.update();
    records.move_next();
    records.set("name", "two");
    records.update();
    EXPECT_EQ(rows("select code,name from loose order by code,name"), "1|one / 2|null / 2|two");
    run("update loose set price = 1 where name = 'two'");
    records.set("name", "late");
    EXPECT_EQ(state_of([&] { records.update(); }), "40001");
}

}  // namespace
