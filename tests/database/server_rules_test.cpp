// The embedded engine answers as a SQL Server does; the server's error numbers stand beside. Both the shipped
// engine and the tests' engine, which refuses more, are tested.
#include "database/engine.h"
#include "support/strict.h"

namespace {

constexpr const char* definitions[] = {
    "create table t (code int not null primary key, name nvarchar(10) null, price float null, tax real null, "
    "made datetime null, small smallint null, tiny tinyint null, flag bit null, amount numeric(8,2) null, "
    "note ntext null)",
    "create table must (a int not null, b int not null default 7, c nvarchar(5) null)",
    "insert into t (code,name,price,tax,made,small) values (1,'5',2.5,2.5,'2026/11/21 10:42:00',3)",
    "insert into t (code,name,price,tax,made,small) values (2,'abc',4,4,'2026/11/22',4)",
};

class ServerRules : public test::Engine {
  protected:
    ServerRules() : shipped_(test::open_as_shipped(folder.path() / "shipped.db", true)) {
        for (const char* statement : definitions) {
            run(statement);
            shipped_->run(statement, {});
        }
    }
    void check_both(std::initializer_list<Case> cases) {
        check(cases);
        std::swap(connection, shipped_);
        check(cases);
        std::swap(connection, shipped_);
    }

  private:
    std::unique_ptr<database::Connection> shipped_;
};

TEST_F(ServerRules, OfWhatAColumnHolds) {
    check_both({
        {"insert into t (code,name) values (10,'12345678901')", "22001"},    // 8152, 2628 since 2019
        {"insert into t (code,name) values (10,N'أبتثجحخدذر')", ""},         // ten letters are ten
        {"insert into t (code,name) values (9,N'😀😀😀😀😀')", ""},               // a smiley counts twice
        {"insert into t (code,name) values (8,N'😀😀😀😀😀x')", "22001"},         // 8152
        {"update t set name = '1234567890  ' where code = 10", ""},          // blanks at the end are dropped
        {"update t set name = name + 'x' where code = 10", "22001"},         // 8152
        {"insert into t (name) values ('x')", "23000"},                      // 515
        {"insert into t (code) values (null)", "23000"},                     // 515
        {"update t set code = null where code = 1", "23000"},                // 515
        {"insert into must (c) values ('x')", "23000"},                      // 515: a has no default
        {"insert into must (a) values (1)", ""},                             // b has one
        {"select b from must", "7"},                                         //
        {"insert into must (a,b) values (1,null)", "23000"},                 // 515: a default is no null
        {"insert into t (code) values (1)", "23000"},                        // 2627
        {"insert into t (code,small) values (11,40000)", "22003"},           // 220
        {"insert into t (code,tiny) values (11,-1)", "22003"},               // 220
        {"insert into t (code) values (3000000000)", "22003"},               // 8115
        {"insert into t (code,amount) values (11,1234567)", "22003"},        // 8115
        {"insert into t (code,amount) values (11,2.675)", ""},               //
        {"select amount from t where code = 11", "2.68"},                    // rounded
        {"insert into t (code,small,flag) values (12,2.7,5)", ""},           //
        {"select small,flag from t where code = 12", "2|1"},                 // cut, and anything but 0 is 1
        {"insert into t (code,small) values (13,'2.7')", "22018"},           // 245
        {"insert into t (code,price) values (13,'x')", "22018"},             // 8114
        {"insert into t (code,made) values (13,'x')", "22007"},              // 241
        {"insert into t (code,small,price,made) values (13,'','','')", ""},  // empty is 0, 0 and 1900
        {"select small,price,made from t where code = 13", "0|0|1900/01/01 00:00:00"},
        {"insert into t (code,amount) values (14,'')", "22018"},  // 8114: but no numeric
    });
}

TEST_F(ServerRules, OfConversions) {
    check_both({
        {"select 7/2, -7/2, 7/2.0, 7%3", "3|-3|3.5|1"},
        {"select avg(small) from t", "3"},                      // of ints is an int
        {"select code from t where code = '2'", "2"},           //
        {"select code from t where name = 5", "22018"},         // 245: 'abc' is met
        {"select code from t where code = 'abc'", "22018"},     // 245
        {"select code from t where code = '1.5'", "22018"},     // 245
        {"select code from t where price = '2.5'", "1"},        //
        {"select code from t where price = 'abc'", "22018"},    // 8114
        {"select code from t where made = '2026/11/22'", "2"},  //
        {"select code from t where made < ''", ""},             // 1900/01/01
        {"select code from t where made = 'abc'", "22007"},     // 241
        {"select cast('1752/12/31' as datetime)", "22007"},     // 242
        {"select cast('2026/02/30' as datetime)", "22007"},     // 242
        {"select cast('11/21/2026 10:42:00' as datetime)", "2026/11/21 10:42:00"},
        {"select cast('21/11/2026' as datetime)", "22007"},  // 242
        {"select cast('' as int), cast('' as float), cast('' as bit)", "0|0|0"},
        {"select cast('' as numeric(8,2))", "22018"},                    // 8114
        {"select cast('1e2' as float), cast(' -5 ' as int)", "100|-5"},  //
        {"select cast('1e2' as int)", "22018"},                          // 245
        {"select cast('1e2' as numeric(8,2))", "22018"},                 // 8114
        {"select cast('1,000' as int)", "22018"},                        // 245
        {"select 'a' + 1", "22018"},                                     // 245
        {"select '5' + 1", "6"},                                         //
        {"select 'No. ' + code from t", "22018"},                        // 245
        {"select 'No. ' + convert(varchar,code) from t where code = 1", "No. 1"},
        {"select isnull(name,0) from t where code = 2", "abc"},  // the first one's type
        {"select isnull(cast(null as nvarchar(2)),name) from t where code = 2", "ab"},  // and its width
        {"select convert(varchar,1234567.891e0), convert(varchar,0.1+0.2)", "1.23457e+006|0.3"},
        {"select len('a  '), 'a' = 'a  '", "42000"},   // 102: no boolean values
        {"select len('a  ') where 'a' = 'A  '", "1"},  //
        {"select convert(nvarchar(3),N'a😀b'), convert(nvarchar(2),N'a😀')", "a😀|a"},
        {"select left('abc',-1)", "42000"},         // 536
        {"select substring('abc',1,-1)", "42000"},  // 537
        {"select 1/0", "22012"},                    // 8134
    });
}

TEST_F(ServerRules, OfGrammar) {
    check_both({
        {"select code from user", "42000"},                                 // 156: reserved
        {"select key from t", "42000"},                                     // 156
        {"select code from t limit 1", "42000"},                            // 102
        {"select code || name from t", "42000"},                            // 102
        {"select ifnull(name,'') from t", "42000"},                         // 195
        {"select concat(name,'x'), trim(name) from t", "42000"},            // 195: of 2012 and 2017
        {"drop table if exists t", "42000"},                                // 156: of 2016
        {"select \"x\" from t", "42S22"},                                   // 207: a name, no text
        {"delete top 1 from t", "42000"},                                   // 102
        {"update top 1 t set name = 'x'", "42000"},                         // 102
        {"select code as c from t where c = 1", "42S22"},                   // 207
        {"select code as c from t group by c", "42S22"},                    // 207
        {"select code as c from t order by c", "1 / 2"},                    //
        {"select code from t a, must b where c = 'x' and d = 1", "42S22"},  // 207
        {"select code from t a, t b", "42000"},                             // 209: ambiguous
        {"select 1 from t, t", "42000"},                                    // 1013
        {"insert into t (code,name) values (20)", "21S01"},                 // 109
        {"insert into t (code,code) values (20,20)", "42000"},              // 264
        {"select code, sum(price) from t", "42000"},                        // 8120
        {"select code, price from t group by code", "42000"},               // 8120
        {"select code from t having price > 1", "42000"},                   // 8121
        {"select code from t union select code, name from t", "42000"},     // 205
        {"select code from t where sum(price) > 1", "42000"},               // 147
        {"select sum(max(price)) from t", "42000"},                         // 130
    });
}

// Only the tests' engine refuses these.
TEST_F(ServerRules, OfStatementsThatOnlyAServerRefuses) {
    check({
        {"select distinct name from t order by code", "42000"},                     // 145
        {"select name from t group by name order by code", "42000"},                // 8127
        {"select code from t order by code, code desc", "42000"},                   // 169
        {"select sum(x.code) from (select code from t order by code) x", "42000"},  // 1033
        {"select 1 from (select code, code from t) x", "42000"},                    // 8156
        {"select (select code from t)", "21000"},                                   // 512
        {"select (select max(code) from t), (select top 1 small from t order by code)", "2|3"},
        {"select sum((select max(code) from t)) from t", "42000"},                         // 130
        {"select case when code = 1 then null end from t", "42000"},                       // 8133
        {"select case code when 1 then 'one' else 0 end from t where code = 9", "22018"},  // 245
        {"select code from t where code in (1,'x') and code > 5", "22018"},                // 245
        {"select 'x' union select 1", "22018"},                                            // 245
        {"select code from t where note = 'x'", "42000"},                                  // 402
        {"select distinct note from t", "42000"},                                          // 421
        {"select code from t order by note", "42000"},                                     // 306
        {"select note from t group by note", "42000"},                                     // 306
        {"select sum(flag) from t", "42000"},                                              // 8117
        {"select price % 2 from t", "42000"},                                              // 402
        {"select -name from t", "42000"},                                                  // 8117
        {"select substring(code,1,1) from t", "42000"},                                    // 8116
        {"update t set price = made", "42000"},                                            // 257
        {"update t set price = getdate() where code = 9", "42000"},                        // 257
        {"insert into t (code,price) select 30,made from t", "42000"},                     // 257
        {"update t set price = sum(price)", "42000"},                                      // 157
        {"select code from t where isnull(small,'x') = 1 and code = 9", "22018"},          // 245
        {"select isnull(cast(null as nvarchar(3)),'abcd')", "22001"},  // would be cut without a word
        // A real column keeps seven digits.
        {"update t set tax = 12345.678 where code = 1", ""},
        {"update t set price = 1234567.89, tax = 1234567.89 where code = 2", ""},
        {"select tax from t where code < 3 order by code", "12345.678 / 1234567.9"},
    });
}

}  // namespace
