// Tables, indexes and views are created, changed and dropped, with the rows they hold.
#include "common/text.h"
#include "database/engine.h"

namespace {

using database::Value;

class Definitions : public test::Engine {
  protected:
    // "name type" of each column, joined by commas.
    std::string shape(const std::string& table) {
        const auto described = connection->describe(table);
        std::string text;
        for (std::size_t i = 0; i < described.columns.size(); ++i) {
            text += (i == 0 ? "" : ", ") + described.columns[i] + " " + described.types[i];
        }
        return text;
    }
    void fill(const std::string& table, int rows_wanted) {
        run("begin transaction");
        for (int i = 0; i < rows_wanted; ++i) {
            run("insert into " + table + " (a,t) values (?,?)",
                {Value(std::int64_t{i}), Value(std::to_string(i % 7))});
        }
        run("commit");
    }
};

TEST_F(Definitions, TypesStayAsWritten) {
    run("CREATE TABLE [dbo].[kinds]([a] [int] NOT NULL,[b] [nvarchar] (50) COLLATE Arabic_CI_AS NULL,c "
        "numeric(18,0),"
        "[d] [numeric](18, 0) NULL,e numeric primary key , f datetime,g real,h ntext, i nvarchar(max), j "
        "decimal, "
        "k money, l tinyint) ON [PRIMARY]");
    EXPECT_EQ(shape("KINDS"),
              "a int, b nvarchar(50), c numeric(18, 0), d numeric(18, 0), e numeric, f datetime, g real, "
              "h ntext, i nvarchar(max), j decimal, k money, l tinyint");
    EXPECT_EQ(connection->describe("kinds").key, std::vector<std::string>{"e"});
    EXPECT_EQ(outcome("insert into kinds (a,e,i) values (1,1,'" + std::string(9000, 'x') + "')"), "");
    EXPECT_EQ(rows("select len(i) from kinds"), "9000");
}

TEST_F(Definitions, WhatIsThereAndWhatIsNot) {
    run("create table t (a int, b int)");
    check({{"create table T (x int)", "42S01"},
           {"create table u (x int, X int)", "42S21"},
           {"create table u (x blurb)", "42000"},
           {"create table u (x int, primary key (y))", "42S22"},
           {"create table u (x int foreign key references t(a))", "42000"},
           {"create table u ()", "42000"},
           {"alter table nowhere add c int", "42S02"},
           {"alter table t add A int", "42S21"},
           {"alter table t add c int, c int", "42S21"},
           {"alter table t add c int, b int", "42S21"},
           {"alter table t alter column c int", "42S22"},
           {"alter table t alter column a real, b real", "42000"},
           {"alter table t drop column c", "42S22"},
           {"create table u (x int identity(1,1))", "42000"},
           {"create table u (x int unique)", "42000"},
           {"alter table t add constraint k primary key (a)", "42000"},
           {"drop table nowhere", "42S02"},
           {"drop table if exists nowhere", "42000"},
           {"drop view t", "42S02"},
           {"create index i on nowhere (a)", "42S02"},
           {"create index i on t (c)", "42S22"},
           {"create index i on t (a desc, b)", ""},
           {"create index I on t (a)", "42S11"},
           {"drop index t.i", ""},
           {"drop index i on t", "42S12"},
           {"create table [odd ] name](a int)", "42000"},
           {"create table [odd ]] \"name](\"a b\" int)", ""},
           {"insert into [odd ]] \"name] ([a b]) values (1)", ""},
           {"select [a b] from [odd ]] \"name]", "1"}});
    // The failures changed nothing.
    EXPECT_EQ(shape("t"), "a int, b int");
    EXPECT_THROW(connection->describe("u"), database::Error);
}

TEST_F(Definitions, ColumnsAreAddedToTablesOfAnySize) {
    for (const int size : {0, 3, 3000}) {
        const std::string t = "t" + std::to_string(size);
        run("create table " + t + " (a int not null primary key, t nvarchar(10))");
        run("create index by_text on " + t + " (t)");
        fill(t, size);
        run("alter table " + t + " add x int null, y nvarchar(5)");
        run("alter table " + t + " ADD z real NOT NULL default 1.5, w datetime default getdate()");
        EXPECT_EQ(shape(t), "a int, t nvarchar(10), x int, y nvarchar(5), z real, w datetime");
        EXPECT_EQ(rows("select count(*), count(x), sum(z), count(w) from " + t), size == 0 ? "0|0|null|0"
                                                                                 : size == 3
                                                                                     ? "3|0|4.5|0"
                                                                                     : "3000|0|4500|0");
        EXPECT_EQ(outcome("alter table " + t + " add n int not null"), size == 0 ? "" : "42000");
        EXPECT_EQ(outcome("create index by_text on " + t + " (t)"), "42S11") << "the index is still there";
        run("insert into " + t + " (a,t" + (size == 0 ? ",n" : "") + ") values (-1,'A'" +
            (size == 0 ? ",1" : "") + ")");
        EXPECT_EQ(outcome("insert into " + t + " (a) values (-1)"), "23000");
        EXPECT_EQ(rows("select z, year(w) - year(getdate()) from " + t + " where t = 'a '"), "1.5|0");
    }
}

TEST_F(Definitions, ColumnsChangeTheirTypes) {
    for (const int size : {5, 3000}) {
        const std::string t = "t" + std::to_string(size);
        run("create table " + t + " (a int not null primary key, t nvarchar(10))");
        run("create unique index k on " + t + " (a)");
        fill(t, size);
        run("ALTER TABLE " + t + " ALTER COLUMN t nvarchar(500) Null");
        EXPECT_EQ(shape(t), "a int, t nvarchar(500)");
        run("update " + t + " set t = '" + std::string(400, 'x') + "' where a = 3");
        EXPECT_EQ(outcome("alter table " + t + " alter column t nvarchar(300)"), "22001");
        EXPECT_EQ(outcome("alter table " + t + " alter column t int"), "22018");
        EXPECT_EQ(shape(t), "a int, t nvarchar(500)") << "a failure changes nothing";
        run("update " + t + " set t = '2' where a = 3");
        run("alter table " + t + " alter column t real");
        EXPECT_EQ(shape(t), "a int, t real");
        EXPECT_EQ(rows("select t from " + t + " where a in (2,3,4) order by a"), "2 / 2 / 4");
        run("alter table " + t + " alter column t nvarchar(20) not null");
        EXPECT_EQ(outcome("insert into " + t + " (a) values (-5)"), "23000");
        EXPECT_EQ(outcome("insert into " + t + " (a,t) values (1,'x')"), "23000") << "the key is still one";
        EXPECT_EQ(rows("select count(*) from " + t + " where t = '2 '"), size == 5 ? "2" : "430");
    }
    // A statement that another program prepared before sees the new column.
    auto second = database::open_embedded(file);
    EXPECT_EQ(second->query("select * from t5").columns().size(), 2U);
    run("alter table t5 add late int");
    EXPECT_EQ(second->query("select * from t5").columns().size(), 3U);
    EXPECT_EQ(second->describe("t5").columns.size(), 3U);
}

TEST_F(Definitions, ColumnsAreDropped) {
    run("create table t (a int not null primary key, b int, c int)");
    run("insert into t values (1,2,3)");
    run("create index by_c on t (c)");
    check({{"alter table t drop column a", "42000"},
           {"alter table t drop column b", ""},
           {"select * from t", "1|3"},
           {"alter table t drop column c", "42S22"},
           {"select * from t", "1|3"}});
}

TEST_F(Definitions, ViewsOfOneTableAreTheTable) {
    run("create table users (code int not null primary key, pass nvarchar(20))");
    run("insert into users values (1,'old')");
    run("create view [user] as select * from users");
    check({{"select pass from [user] where code = 1", "old"},
           {"update [user] set pass = 'new' where code = 1", ""},
           {"select pass from users", "new"},
           {"insert into [user] (code,pass) values (2,'two')", ""},
           {"delete from [user] where [user].code = 1", ""},
           {"select u.* from [user] u", "2|two"},
           {"create view [user] as select 1 as a", "42S01"},
           {"drop table [user]", "42S02"}});
    // The view shows columns that are added to the table later, also to the next program that opens the file.
    run("alter table users add perm nvarchar(10) null");
    run("update [user] set perm = '1'");
    EXPECT_EQ(shape("user"), "code int, pass nvarchar(20), perm nvarchar(10)");
    connection = database::open_embedded(file);
    EXPECT_EQ(rows("select * from [user]"), "2|two|1");
    run("drop view [user]");
    EXPECT_EQ(outcome("select * from [user]"), "42S02");
}

TEST_F(Definitions, OtherViewsCanOnlyBeRead) {
    run("create table t (a int, d datetime, name nvarchar(10))");
    run("insert into t values (1,'2026/11/21','it''s')");
    run("insert into t values (2,'2026/11/22','x')");
    run("create view named as select a, d, name + '!' as loud from t where name = 'IT''S' and d >= "
        "'2026/01/01'");
    run("create view summed as select count(*) as n, max(d) as last from t");
    run("create view twice as select * from named");
    check({{"select * from named", "1|2026/11/21 00:00:00|it's!"},
           {"select v.loud from named v where v.loud = 'IT''S! '", "it's!"},
           {"select * from summed where last > '2026/01/01'", "2|2026/11/22 00:00:00"},
           {"select a from twice", "1"},
           {"update named set a = 5", "42000"},
           {"delete from summed", "42000"},
           {"create view v as select * from nowhere", "42S02"},
           {"create view v as select a from t order by a", "42000"}});
    connection = database::open_embedded(file);
    EXPECT_EQ(rows("select a from twice"), "1");
}

// Every start deletes barcodes without an item. The deletion is skipped if nothing can have changed, but
// finds every barcode that lost its item, whoever did it.
TEST_F(Definitions, BarcodesWithoutAnItemAreFoundAfterEveryChange) {
    run("create table items (code int not null primary key, name nvarchar(20))");
    run("create table barcode (bar nvarchar(20), code int)");
    auto other = database::open_embedded(file);
    const auto deleted = [&] {
        return run("DELETE barcode FROM items RIGHT OUTER JOIN barcode ON items.code = barcode.code WHERE "
                   "isnull(items.name, '') = ''")
            .changed;
    };
    EXPECT_EQ(deleted(), 0);
    const struct {
        const char* change;
        int orphans;
    } steps[] = {
        {"insert into barcode values ('none',7)", 1},
        {"insert into items select 1,'a'", 0},
        {"insert into items values (2,'b')", 0},
        {"insert into items values (3,'')", 0},
        {"insert into barcode select '1',1", 0},
        {"insert into barcode values ('2',2)", 0},
        {"insert into barcode values ('3',3)", 1},
        {"insert into barcode values ('4',2)", 0},
        {"update barcode set code = 9 where bar = '4'", 1},
        {"update items set name = ' ' where code = 2", 1},
        {"insert into barcode values ('5',1)", 0},
        {"alter table items add extra int", 0},
        {"alter table barcode alter column bar nvarchar(50)", 0},
        {"delete from items where code = 1", 2},
        {"drop table items", 0},
        {"create table items (code int, name nvarchar(20))", 0},
        {"insert into items values (5,'e')", 0},
        {"insert into barcode values ('6',5)", 0},
        {"update items set code = 6", 1},
    };
    for (const auto& [change, orphans] : steps) {
        other->run(change, {});
        try {
            EXPECT_EQ(deleted(), orphans) << change;
            EXPECT_EQ(deleted(), 0) << change;
        } catch (const database::Error& error) {
            EXPECT_EQ(error.sqlstate(), "42S02") << change << error.what();
        }
    }
    EXPECT_EQ(connection->tables(), (std::vector<std::string>{"barcode", "items"}));
    run("begin transaction");
    run("insert into barcode values ('7',77)");
    EXPECT_EQ(deleted(), 1);
    run("rollback");
    run("insert into barcode values ('8',77)");
    EXPECT_EQ(deleted(), 1);
}

TEST_F(Definitions, IndexesOfSomeRows) {
    run("create table t (a int, v int)");
    run("create index account on t (a) where v <> -1");
    run("create unique index once on t (v)");
    run("insert into t values (1,-1)");
    run("insert into t values (1,5)");
    check({{"select a from t where v <> -1 and a = 1", "1"}, {"insert into t values (2,5)", "23000"}});
}

}  // namespace
