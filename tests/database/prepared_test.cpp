// Prepared statements and table descriptions are kept, and renewed if the tables change.
#include <sqlite3.h>

#include <map>
#include <optional>
#include <random>

#include "database/embedded/connection.h"
#include "database/engine.h"
#include "database/recordset.h"
#include "database/tsql/scanner.h"

namespace {

using database::Error;
using database::Null;
using database::Recordset;
using database::Value;
namespace tsql = database::tsql;

class Prepared : public test::Engine {};

// The tokens of a statement without the contents of its values; nothing if tokenize() refuses it.
std::optional<std::string> tokens_of(const std::string& statement, const std::vector<Value>& given,
                                     std::vector<Value>& values) {
    try {
        const tsql::Tokens tokens = tsql::tokenize(statement, given);
        values = tokens.values;
        std::string text;
        for (const tsql::Token& token : tokens.list) {
            text += std::to_string(static_cast<int>(token.kind)) + token.text + "\x1f";
            if (token.kind == tsql::Token::Kind::value) text += tsql::kind_mark(tokens.values[token.slot]);
        }
        return text;
    } catch (const Error&) {
        return std::nullopt;
    }
}

TEST(Shape, StatementsOfOneShapeHaveTheSameTokens) {
    constexpr std::string_view pieces[] = {
        "select", " ",  "a1",  "e5",  "N", "n",   "'x'",        "N'ي'", "''",         "'a''b'", "5",
        "1.5",    ".5", "1e3", "1.",  "?", "i",   "[a?]",       "[b]]", "\"q\"\"r\"", "--c\n",  "/*?/**/*/",
        "-",      "/",  "\n",  "and", "*", "'",   "[",          "_",    "$rowid",     "\xd8",   "=",
        "s",      "9",  "E+2", ",",   ".", "0x1", "2147483648", "--",   "/*",         "99e999", "\t",
    };
    const std::vector<Value> parameters[] = {
        {}, {std::int64_t{1}}, {std::int64_t{1} << 40, Null{}}, {std::string("t"), 2.5, common::Moment{}}};
    std::mt19937 random(20261121);
    std::map<std::string, std::string> tokens_of_shape;
    int accepted = 0;
    for (int round = 0; round < 60'000; ++round) {
        std::string text;
        for (auto length = 1 + random() % 7; length > 0; --length)
            text += pieces[random() % std::size(pieces)];
        const auto& given = parameters[random() % std::size(parameters)];
        std::vector<Value> values;
        const auto tokens = tokens_of(text, given, values);
        tsql::Shape shape;
        if (!tokens) {
            EXPECT_THROW(tsql::read_shape(text, given, shape), Error) << text;
            continue;
        }
        tsql::read_shape(text, given, shape);
        ++accepted;
        EXPECT_EQ(shape.values, values) << text;
        const auto [known, is_new] = tokens_of_shape.emplace(shape.text, *tokens);
        EXPECT_EQ(known->second, *tokens) << text << "\nof the shape " << shape.text;
    }
    EXPECT_GT(accepted, 5'000);
}

TEST_F(Prepared, OneTextTakesValuesOfEveryKind) {
    run("create table t (id int not null primary key, a int, b bigint, c tinyint, r float, s nvarchar(20))");
    run("insert into t (id) values (1)");
    const std::string long_text(300, 'x');
    const struct {
        const char* column;
        Value value;
        const char* outcome;
    } cases[] = {
        {"a", std::int64_t{7}, "7"},
        {"a", Null{}, "null"},
        {"a", std::int64_t{2147483647}, "2147483647"},
        {"a", std::int64_t{2147483648}, "22003"},
        {"a", std::int64_t{-2147483648}, "-2147483648"},
        {"a", std::int64_t{-2147483649}, "22003"},
        {"a", 3.9, "3"},
        {"a", std::string(" 12 "), "12"},
        {"a", std::string("twelve"), "22018"},
        {"b", std::int64_t{1} << 40, "1099511627776"},
        {"b", std::int64_t{5}, "5"},
        {"c", std::int64_t{255}, "255"},
        {"c", std::int64_t{256}, "22003"},
        {"c", std::int64_t{-1}, "22003"},
        {"r", std::int64_t{3}, "3"},
        {"s", std::string("d'Or"), "d'Or"},
        {"s", std::int64_t{5}, "5"},
        {"s", Null{}, "null"},
        {"s", long_text, "22001"},
        {"s", std::string(), ""},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto& [column, value, expected] : cases) {
            const std::string name = column;
            SCOPED_TRACE(name + " = " + database::text_of(value).substr(0, 20));
            std::string seen = outcome("update t set " + name + " = ? where id = 1", {value});
            if (seen.empty()) seen = rows("select " + name + " from t where id = 1");
            EXPECT_EQ(seen, expected);
            // The same in a statement that adds the row.
            run("delete from t where id = 2");
            seen = outcome("insert into t (id," + name + ") values (?,?)", {std::int64_t{2}, value});
            if (seen.empty()) seen = rows("select " + name + " from t where id = 2");
            EXPECT_EQ(seen, expected);
        }
    }
}

TEST_F(Prepared, OneTextRunsWithinItself) {
    run("create table t (a int, b nvarchar(10))");
    run("insert into t values (1,'one'), (2,'two'), (3,'three')");
    std::string seen;
    for (const auto& outer : connection->query("select * from t order by a"))
        for (const auto& inner : connection->query("select * from t order by a"))
            seen += outer.text("a") + inner.text("b") + " ";
    EXPECT_EQ(seen, "1one 1two 1three 2one 2two 2three 3one 3two 3three ");
    Recordset outer(*connection, "select * from t order by a");
    for (; !outer.at_end(); outer.move_next()) {
        Recordset inner(*connection, "select * from t order by a");
        inner.set("b", outer.text("b") + "+");
        inner.update();
    }
    EXPECT_EQ(rows("select b from t order by a"), "three+ / two / three");
}

TEST_F(Prepared, AnotherProgramAddsAColumn) {
    run("create table t (a int, b nvarchar(10))");
    Recordset early(*connection, "select * from t order by a");
    early.add();
    early.set("a", 1);
    early.update();
    auto second = database::open_embedded(file);
    second->execute("alter table t add late int");
    early.add();
    early.set("a", 2);
    early.update();
    EXPECT_EQ(early.size(), 2U);
    early.move_first();
    early.set("b", "x");
    early.update();
    EXPECT_EQ(rows("select * from t order by a"), "1|x|null / 2|null|null");
    Recordset now(*connection, "select * from t where a = 2");
    EXPECT_EQ(now.size(), 1U);
    now.set("late", 5);
    now.update();
    EXPECT_EQ(rows("select * from t order by a"), "1|x|null / 2|null|5");
    EXPECT_EQ(connection->description("t")->columns.size(), 3U);

    second->execute("alter table t drop column b");
    early.set("b", "y");
    EXPECT_THROW(early.update(), Error);
    early.cancel();
    EXPECT_EQ(rows("select * from t order by a"), "1|null / 2|5");
    Recordset shorter(*connection, "select * from t");
    EXPECT_THROW(shorter.set("b", "z"), Error);
}

TEST_F(Prepared, TheSameTextAfterTheTableWasChanged) {
    run("create table t (a int, b int)");
    run("insert into t values (1,7)");
    const std::vector<Value> one{std::int64_t{1}};
    const auto kind = [&] {
        return run("select b from t where a = ?", one).result.front().value("b").index();
    };
    EXPECT_EQ(kind(), Value(std::int64_t{}).index());
    const auto before = connection->description("t");
    run("alter table t alter column b nvarchar(20)");
    EXPECT_EQ(kind(), Value(std::string()).index());
    EXPECT_EQ(connection->description("t")->types[1], "nvarchar(20)");
    EXPECT_EQ(before->types[1], "int") << "who still holds the former description keeps it";
    database::open_embedded(file)->execute("alter table t alter column b float");
    EXPECT_EQ(kind(), Value(0.0).index()) << "changed by another program";
    run("drop table t");
    EXPECT_THROW(connection->description("t"), Error);
    EXPECT_EQ(outcome("select b from t where a = ?", one), "42S02");
    run("create table t (b nvarchar(5), a int)");
    EXPECT_EQ(outcome("select b from t where a = ?", one), "");
    EXPECT_EQ(connection->description("T")->columns[0], "b");
}

TEST_F(Prepared, AStatementThatFailedRunsAgain) {
    run("create table t (a int, b nvarchar(20))");
    auto* const embedded = dynamic_cast<database::embedded::EmbeddedConnection*>(connection.get());
    ASSERT_NE(embedded, nullptr);
    embedded->set_timeout(std::chrono::milliseconds(50));
    auto second = database::open_embedded(file);
    const std::string text = "insert into t (a,b) values (?,?)";
    const auto insert = [&](int a) { return outcome(text, {std::int64_t{a}, std::string(15, 'b')}); };
    EXPECT_EQ(insert(1), "");
    second->execute("begin transaction");
    second->execute("delete from t where a = 99");
    EXPECT_EQ(insert(2), "HYT00");
    second->execute("commit transaction");
    EXPECT_EQ(insert(3), "");
    EXPECT_EQ(rows("select a from t order by a"), "1 / 3");
}

TEST_F(Prepared, TenThousandTextsTakeNoMoreRoomThanAThousand) {
    run("create table t (a int)");
    run("insert into t values (1)");
    const auto ask = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const std::string number = std::to_string(i);
            // A new text, a new text with values beside it, and a text whose number shapes it.
            ASSERT_EQ(rows("select a as c" + number + " from t"), "1");
            ASSERT_EQ(rows("select a as d" + number + " from t where a = ?", {std::int64_t{1}}), "1");
            ASSERT_EQ(rows("select top " + number + " a from t"), "1");
        }
        ASSERT_EQ(rows("select a from t where a = ?", {std::int64_t{1}}), "1");
    };
    ask(1, 1'000);
    const auto room = sqlite3_memory_used();
    ask(1'000, 10'000);
    EXPECT_LT(sqlite3_memory_used() - room, 500'000);
}

}  // namespace
