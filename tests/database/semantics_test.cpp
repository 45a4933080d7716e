// What statements mean, on small tables.
#include "database/engine.h"

namespace {

using database::Value;

class Semantics : public test::Engine {
  protected:
    Semantics() {
        run("create table item (code int not null primary key, name nvarchar(20) null, price real null, "
            "made datetime null, pack smallint null, sold bit null, tax numeric(8, 2) null, note ntext "
            "null)");
        run("insert into item (code,name,price,made,pack) values (1,N'Tea',10.5,'2026/11/21',6)");
        run("insert into item (code,name,price,made,pack) values (2,'tea ',20,'2026/11/21 10:30',null)");
        run("insert into item (code,name,price,made,pack) values (3,'Rice',null,null,12)");
        run("create table line (item int null, quan float null, store int null)");
        for (const char* values : {"(1,5,1)", "(1,2.5,2)", "(3,4,1)", "(9,1,1)"}) {
            run(std::string("insert into line (item,quan,store) values ") + values);
        }
    }
};

TEST_F(Semantics, CellsComeInTheTypesOfTheirColumns) {
    const auto result =
        run("select *, getdate() as now, (select max(made) from item where code = 1) as last, price*2 as "
            "twice, 1 as one, name+'!' as loud from item where code = 1")
            .result;
    ASSERT_EQ(result.size(), 1U);
    const auto& row = result.front();
    EXPECT_TRUE(std::holds_alternative<std::int64_t>(row.value("code")));
    EXPECT_TRUE(std::holds_alternative<std::string>(row.value("name")));
    EXPECT_TRUE(std::holds_alternative<double>(row.value("PRICE")));
    EXPECT_TRUE(std::holds_alternative<common::Moment>(row.value("made")));
    EXPECT_TRUE(std::holds_alternative<common::Moment>(row.value("now")));
    EXPECT_TRUE(std::holds_alternative<common::Moment>(row.value("last")));
    EXPECT_TRUE(std::holds_alternative<double>(row.value("twice")));
    EXPECT_TRUE(std::holds_alternative<std::int64_t>(row.value("one")));
    EXPECT_TRUE(database::is_null(row.value("sold")));
    EXPECT_EQ(row.text("loud"), "Tea!");
    // A whole number in a real column comes back as a double.
    EXPECT_TRUE(std::holds_alternative<double>(
        run("select price from item where code = 2").result.front().value("price")));
    EXPECT_THROW(row.value("nothing"), database::Error);
}

TEST_F(Semantics, OneShapeManyValues) {
    // The texts differ only in values that shape the translation; each gets its own translation.
    for (int round = 0; round < 2; ++round) {
        check({{"select code,price from item order by 1 desc", "3|null / 2|20 / 1|10.5"},
               {"select code,price from item order by 2 desc", "2|20 / 1|10.5 / 3|null"},
               {"select code as 'a' from item where code = 1", "1"},
               {"select top 1 code from item order by code", "1"},
               {"select top 2 code from item order by code", "1 / 2"},
               {"select convert(varchar(3),'abcdef')", "abc"},
               {"select convert(varchar(5),'abcdef')", "abcde"},
               {"select convert(varchar,made,101) from item where code = 2", "11/21/2026"},
               {"select convert(varchar,made,108) from item where code = 2", "10:30:00"},
               {"select code from item where code <> 1", "2 / 3"},
               {"select code from item where code <> 3", "1 / 2"},
               {"select code from item where name = 'rice'", "3"},
               {"select code from item where name = 5", "22018"},
               {"select cast(convert(varchar,made,101) + ' ' + isnull(convert(varchar,made,8),'00:00:00') as "
                "datetime) "
                "from item where code = 2",
                "2026/11/21 10:30:00"},
               {"select cast(convert(varchar,made,101) + ' ' + isnull(convert(varchar,made,8),'23:00:00') as "
                "datetime) "
                "from item where code = 2",
                "2026/11/21 10:30:00"},
               {"select cast(convert(varchar,made,111) + ' ' + isnull(convert(varchar,made,8),'00:00:00') as "
                "datetime) "
                "from item where code = 2",
                "2026/11/21 10:30:00"}});
    }
}

TEST_F(Semantics, TheMomentIdiomIsWhatItsPartsSay) {
    run("create table mov (id int, [date] datetime, cdate datetime, time_ datetime)");
    run("insert into mov values (1,'2026/11/21','2026/11/20 15:00','10:42:30')");
    run("insert into mov values (2,'2026/11/21 13:00','2026/11/20',null)");
    run("insert into mov values (3,null,null,'09:00')");
    run("insert into mov values (4,'1850/02/03','1850/02/03','1850/02/03 23:59:59.500')");
    for (const char* day : {"[date]", "date", "mov.date", "[cdate]"}) {
        for (const char* missing : {"00:00:00", "00:00", "", "12:30"}) {
            const std::string d = day, m = missing;
            const std::string time = "isnull(convert(varchar,[time_],8),'" + m + "')";
            const std::string whole = "cast(convert(varchar," + d + ",101) + ' ' + " + time + " as datetime)";
            // The same, but written so that it is not recognised as a whole.
            const std::string apart =
                "cast((convert(varchar(20)," + d + ",101) + (' ' + " + time + ")) as datetime)";
            EXPECT_EQ(outcome("select id," + whole + " from mov order by id"),
                      outcome("select id," + apart + " from mov order by id"))
                << whole;
            for (const char* op : {"<", "<=", ">", ">=", "=", "<>"}) {
                for (const char* moment :
                     {"2026/11/21 10:42:30", "2026/11/21 10:42:31", "2026/11/21", "2026/11/20",
                      "2026/11/21 23:59:59", "2026/11/22", "1850/02/03 23:59:59", "1850/02/04"}) {
                    const std::string rest = std::string(" ") + op + " '" + moment + "' order by id";
                    EXPECT_EQ(outcome("select id from mov where " + whole + rest),
                              outcome("select id from mov where " + apart + rest))
                        << whole << rest;
                    EXPECT_EQ(outcome("select id from mov where not " + whole + rest),
                              outcome("select id from mov where not " + apart + rest))
                        << whole << rest;
                }
            }
        }
    }
    check(
        {{"select id from mov where cast(convert(varchar,[date],101) + ' ' + "
          "isnull(convert(varchar,[time_],8),'00:00') "
          "as datetime) < '2026/11/21 10:42:30'",
          "2 / 4"}});
}

TEST_F(Semantics, Comparisons) {
    check(
        {{"select code from item where name = 'TEA' order by code", "1 / 2"},
         {"select count(*) from item group by name order by name", "1 / 2"},
         {"select distinct name from item where name like 't%' and code < 3 and name = 'TEA'", "Tea"},
         {"select name from item where name between 'r' and 's'", "Rice"},
         {"select code from item where name in ('RICE ','x')", "3"},
         {"select code from item where name not in ('rice','x') order by code", "1 / 2"},
         {"select code from item where code in ('3',1) order by code", "1 / 3"},
         {"select code from item where made = '2026-11-21'", "1"},
         {"select code from item where made between '2026/11/21' and '20261121 10:30:00'", "1 / 2"},
         {"select code from item where made in ('2026/11/21','11/21/2026 10:30 AM')", "1 / 2"},
         {"select code from item where made > 46345", "2"},
         {"select code from item where price = null", ""},
         {"select code from item where price <> 10.5", "2"},
         {"select code from item where not price = 10.5", "2"},
         {"select code from item where price is null", "3"},
         {"select case name when 'TEA' then 'hot' else 'dry' end from item order by code", "hot / hot / dry"},
         {"select case when code = 1 then '1' when code = 2 then 2 end from item where code = 2", "2"},
         {"select code from item where code", "42000"}});
}

TEST_F(Semantics, LettersAndTheirOrder) {
    run("create table word (w nvarchar(20))");
    for (const char* word : {"ب", "أحمد", "احمد", "إيمان", "ا", "Zebra", "apple", "10", "Éa"}) {
        run("insert into word values (?)", {std::string(word)});
    }
    check({{"select w from word order by w", "10 / apple / Zebra / Éa / ا / أحمد / احمد / إيمان / ب"},
           {"select count(*) from word where w = N'أحمد'", "1"},
           {"select count(*) from word where w = N'éA'", "1"},
           {"select count(*) from word where w = N'Ea'", "0"},
           {"select min(w), max(w) from word", "10|ب"},
           {"select max(w+'') from word where w < 'b'", "apple"}});
    run("create table keyed (k nvarchar(5) not null primary key)");
    run("insert into keyed values ('a')");
    check({{"insert into keyed values ('A ')", "23000"}, {"insert into keyed values (null)", "23000"}});
}

TEST_F(Semantics, GroupsSumsAndNulls) {
    check(
        {{"select sum(price), max(price), count(price), count(*), avg(price) from item", "30.5|20|2|3|15.25"},
         {"select sum(pack), avg(pack) from item", "18|9"},
         {"select sum(price) from item where code = 99", "null"},
         {"select count(distinct name), min(name) from item", "2|Rice"},
         {"select item, sum(quan) as q from line group by item having sum(quan) > 3 order by q desc",
          "1|7.5 / 3|4"},
         {"select item from line group by item having item <> 1 order by item", "3 / 9"},
         {"select store, count(*) from line where quan > 1 group by store having store = 1", "1|2"},
         {"select sum(quan) from line having sum(quan) > 100", ""},
         {"select * from line group by item", "42000"},
         {"select item+1, sum(quan) from line group by item order by item", "2|7.5 / 4|4 / 10|1"},
         {"select sum(name) from item", "42000"}});
}

TEST_F(Semantics, Joins) {
    check(
        {{"select i.code,l.quan from item i inner join line l on i.code = l.item order by i.code,l.quan",
          "1|2.5 / 1|5 / 3|4"},
         {"select i.code,l.quan from item as i left join line l on i.code = l.item where l.item is null",
          "2|null"},
         {"select i.code,l.item from item i right outer join line l on i.code = l.item where i.code is null",
          "null|9"},
         {"select count(*) from item i full outer join line l on i.code = l.item", "5"},
         {"select count(*) from item, line where item.code = line.item", "3"},
         {"select count(*) from item cross join line", "12"},
         {"select i.* from item i join line l on i.code=l.item where l.store = 2",
          "1|Tea|10.5|2026/11/21 00:00:00|6|null|null|null"},
         {"select a.code from item a, item b where a.code = b.code + 1 order by a.code", "2 / 3"},
         {"select x.code from item", "42S22"},
         {"select code from item where exists (select * from line where item = code and store = 2)", "1"},
         {"select code,(select sum(quan) from line where item = item.code) from item order by code",
          "1|7.5 / 2|null / 3|4"},
         {"select code from item where code in (select item from line) order by code", "1 / 3"},
         {"select t.name, t.q from (select name, sum(price) as q from item group by name) t where t.q > 1 "
          "and t.name = 'TEA'",
          "Tea|30.5"},
         {"select loud from (select name + '' as loud from item) t where loud = 'RICE'", "Rice"},
         {"select code from item union select item from line order by code", "1 / 2 / 3 / 9"},
         {"select count(*) from (select name from item where code < 3 union select 'TEA') t", "1"},
         {"select code from item union all select item from line where store = 2", "1 / 2 / 3 / 1"}});
}

TEST_F(Semantics, StoredValuesFitTheirColumns) {
    check({{"insert into item (code,name) values (10,'12345678901234567890')", ""},
           {"insert into item (code,name) values (11,'123456789012345678901')", "22001"},
           {"insert into item (code,name) values (11,'12345678901234567890   ')", ""},
           {"insert into item (code,pack) values (12,'x')", "22018"},
           {"insert into item (code,name,pack,price,made) values ('12',5,'7','2.5','20261122')", ""},
           {"select * from item where code = 12", "12|5|2.5|2026/11/22 00:00:00|7|null|null|null"},
           {"update item set name = name + name where code = 10", "22001"},
           {"update item set pack = 2.9, sold = 7, tax = 1.005, note = 'n' where code = 12", ""},
           {"select pack,sold,tax,note from item where code = 12", "2|1|1.01|n"},
           {"insert into item (code,nothing) values (20,20)", "42S22"},
           {"insert into line select 1,2", "21S01"},
           {"insert into nowhere values (1)", "42S02"},
           {"select count(*) from item", "6"}});
    // A statement that fails changes nothing.
    EXPECT_EQ(
        outcome(
            "insert into line (item,quan) select code, case when code = 3 then 'x' else '1' end from item"),
        "22018");
    EXPECT_EQ(rows("select count(*) from line"), "4");
}

TEST_F(Semantics, ValuesOfParameters) {
    using common::Moment;
    run("insert into item (code,name,price,made,pack) values (?,?,?,?,?)",
        {Value(std::int64_t{30}), Value(std::string("d'Or; -- ؟")), Value(2.25),
         Value(Moment{{2026, 1, 2}, {3, 4, 5, 6}}), Value(database::Null{})});
    const auto row = run("select * from item where code = ? and made = ?",
                         {Value(30.0), Value(Moment{{2026, 1, 2}, {3, 4, 5, 6}})})
                         .result;
    ASSERT_EQ(row.size(), 1U);
    EXPECT_EQ(row.front().text("name"), "d'Or; -- ؟");
    EXPECT_EQ(row.front().moment("made"), (Moment{{2026, 1, 2}, {3, 4, 5, 6}}));
    EXPECT_EQ(outcome("select ?", {}), "42000");
    EXPECT_EQ(outcome("select 1", {Value(1.5)}), "42000");
    EXPECT_EQ(outcome("select ? + ?", {Value(std::string("a")), Value(database::Null{})}), "null");
}

TEST_F(Semantics, ChangesOfRows) {
    EXPECT_EQ(run("update item set price = isnull(price,0) + 1 where code >= 2").changed, 2);
    EXPECT_EQ(run("update top (1) line set quan = 100 where store = 1").changed, 1);
    EXPECT_EQ(run("delete top (2) from line").changed, 2);
    EXPECT_EQ(run("update l set quan = i.price from line l inner join item i on i.code = l.item").changed, 1);
    EXPECT_EQ(rows("select item,quan from line order by item"), "3|1 / 9|1");
    EXPECT_EQ(run("delete line from item right outer join line on item.code = line.item where "
                  "isnull(item.name,'') = ''")
                  .changed,
              1);
    EXPECT_EQ(rows("select item from line"), "3");
    EXPECT_EQ(run("update item set pack = pack + 1 where code = 1").changed, 1);
    EXPECT_EQ(rows("select pack from item order by code"), "7 / null / 12");
    // Rows that hold the value already are left alone.
    EXPECT_EQ(run("update item set pack = 7").changed, 2);
    EXPECT_EQ(run("update item set pack = 7").changed, 0);
    EXPECT_EQ(run("update item set name = 'TEA'").changed, 3);
    EXPECT_EQ(rows("select name from item order by code"), "TEA / TEA / TEA");
    EXPECT_EQ(run("update item set made = '2026/11/21', price = null").changed, 3);
    EXPECT_EQ(run("update item set made = '2026/11/21', price = null").changed, 0);
    EXPECT_EQ(run("delete item").changed, 3);
    EXPECT_EQ(outcome("delete nowhere"), "42S02");
    EXPECT_EQ(outcome("update item set nothing = 1"), "42S22");
}

TEST_F(Semantics, Transactions) {
    run("begin transaction");
    run("delete from line");
    run("rollback");
    EXPECT_EQ(rows("select count(*) from line"), "4");
    run("begin tran");
    run("delete from line where item = 9");
    run("create table inside (a int)");
    run("commit tran");
    EXPECT_EQ(rows("select count(*) from line"), "3");
    EXPECT_EQ(rows("select count(*) from inside"), "0");
    EXPECT_EQ(outcome("commit"), "42000");
}

TEST_F(Semantics, WhatIsNotKnownIsRefusedByName) {
    const struct {
        const char* statement;
        const char* names;
    } cases[] = {
        {"select soundex(name) from item", "soundex"},
        {"select ceiling(price) from item", "ceiling"},
        {"select code from item where name like '5!%' escape '!'", "ESCAPE"},
        {"select code from item with (nolock)", "WITH"},
        {"exec sp_who", "exec"},
        {"declare @a int", "declare"},
        {"select @@version", "@@version"},
        {"select * from #temporary", "#temporary"},
        {"select * from other.dbo.item", "other"},
        {"select top 5 percent * from item", "PERCENT"},
        {"select sum(quan) over (partition by item) from line", "OVER"},
        {"select code into copy from item", "INTO"},
        {"select * from print", "print"},
        {"select * from user", "user"},
        {"truncate table item", "truncate"},
        {"set dateformat dmy", "DATEFORMAT"},
        {"create procedure p as select 1", "procedure"},
        {"select code frm item where", "item"},
        {"select * from item; select * from line", "select"},
        {"", "empty"},
    };
    for (const auto& [statement, names] : cases) {
        try {
            run(statement);
            ADD_FAILURE() << statement << " ran";
        } catch (const database::Error& error) {
            EXPECT_EQ(error.sqlstate(), "42000") << statement;
            EXPECT_EQ(error.statement(), statement);
            EXPECT_NE(std::string(error.what()).find(names), std::string::npos)
                << statement << ": " << error.what();
        }
    }
    check({{"set nocount on", ""},
           {"set dateformat ymd", ""},
           {" select 1 ; ", "1"},
           {"select 1 -- all", "1"},
           {"select /* a /* nested */ comment */ 2", "2"}});
}

TEST_F(Semantics, NamesOfColumns) {
    const auto result =
        run("select code, code as [the code], max(price) m, count(*), name as 'n''ame' from item "
            "where code = 1 group by code,name")
            .result;
    EXPECT_EQ(result.columns(), (std::vector<std::string>{"code", "the code", "m", "", "n'ame"}));
    EXPECT_EQ(run("SELECT \"CODE\" FROM [dbo].[Item] WHERE [ITEM].Code = 1").result.size(), 1U);
}

}  // namespace
