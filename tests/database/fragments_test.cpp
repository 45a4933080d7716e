// The program's statements on the embedded engine: each one runs, and means what it means on a server.
#include <gtest/gtest.h>

#include "support/data_file.h"
#include "support/shop.h"

namespace {

using database::Error;
using database::Sql;

// A shop in the middle of a day.
class WorkingDay : public testing::Test {
  protected:
    WorkingDay() {
        for (const char* statement : {
                 "insert into items (code,name,num1,num2,num3,price11,price12,price22,fact,itype,sale_only) "
                 "values (101,N'لبن كامل',1,6,24,20,25,140,2,3,0)",
                 "insert into items (code,name,num1,price12,sale_only,stop) values (102,'Milk',1,9.5,1,1)",
                 "insert into barcode (bar,code,scode) values ('6221033101234',101,1)",
                 "insert into stk (icode,stcode,quan,edate) values (101,1,3,'2026/12/31')",
                 "insert into stk (icode,stcode,quan,edate) values (101,1,4,'2027/01/31')",
                 "insert into stk (icode,stcode,quan,edate) values (101,2,10,'3000/01/01')",
                 "insert into sales "
                 "(pnum,vcode,[date],time_,ctype,stype,stcode,ptype,ptot,pdis,[user],wcode) "
                 "values (12,-1,'2026/11/21','10:42:00',0,0,1,1,25,0,1,1)",
                 "insert into sales (pnum,vcode,[date],ctype,stype,stcode,ptype,ptot,disboun,note) "
                 "values (13,-1,'2026/11/21',0,2,1,1,50.25,5,'Note')",
                 "insert into sales (pnum,vcode,[date],time_,ctype,stype,stcode,ptype,ptot,note) "
                 "values (1,5,'2026/11/20','09:00:00',0,0,1,1,100,'NOTE ')",
                 "insert into custdata (ccode,cname,cacc) values (5,N'شركة الأمل',10)",
                 "insert into shift (stcode,cash_no,scode,s_date) values (1,1,4,'2026/11/21 08:00:00')",
                 "insert into sal_prd (sale_no,sale_from,sale_to) values (1,'2026/11/01','2026/11/30')",
                 "insert into sale_price (sale_prd,icode,s_price) values (1,101,24)",
             })
            shop_.sql(statement);
        for (const char* number : {"A12", ".", "7", "12", "", "1x"})
            shop_.sql(std::string("insert into vencuspay (chkno,ptype,type,vcode,ztype,quan) values ('") +
                      number + "',2,1,5,2,10)");
    }
    test::Shop shop_;
};

TEST_F(WorkingDay, EveryStatementOfTheProgramRuns) {
    for (const std::string& statement : test::data_lines("database/data/statements.sql", "--")) {
        try {
            shop_.connection().query(Sql::from_administrator(statement));
        } catch (const Error& error) {
            ADD_FAILURE() << statement << "\n    " << error.sqlstate() << ": " << error.what();
        }
    }
}

// What a statement's single cell is as text, "null", or "no row".
struct Meaning {
    const char* statement;
    const char* cell;
};

class Means : public WorkingDay {
  protected:
    void check(std::initializer_list<Meaning> meanings) {
        for (const auto& [statement, expected] : meanings) {
            try {
                const auto result = shop_.connection().query(Sql::from_administrator(statement));
                std::string found = "no row";
                if (!result.empty())
                    found = database::is_null(result.front().cells()[0])
                                ? "null"
                                : database::text_of(result.front().cells()[0]);
                EXPECT_EQ(found, expected) << statement;
            } catch (const Error& error) {
                ADD_FAILURE() << statement << "\n    " << error.sqlstate() << ": " << error.what();
            }
        }
    }
};

TEST_F(Means, TextsCompareWithoutCaseAndTrailingBlanks) {
    check({{"select case when 'x' = 'x ' then 1 else 0 end", "1"},
           {"select case when 'x' = 'X' then 1 else 0 end", "1"},
           {"select case when ' x' = 'x' then 1 else 0 end", "0"},
           {"select case when '' = '  ' then 1 else 0 end", "1"},
           {"select case when N'أحمد' = N'احمد' then 1 else 0 end", "0"},
           {"select code from items where name = 'MILK   '", "102"},
           {"select code from items where name = N'لبن كامل  '", "101"},
           {"select code from items where name like 'mi%'", "102"},
           {"select code from items where (name) like N'%كامل%'", "101"},
           {"select code from items where name like 'm_lk'", "102"},
           {"select code from items where name like 'milk '", "no row"},
           {"select code from items where name in ('none','milk ')", "102"},
           {"select code from items where name <> 'milk'", "101"},
           {"select count(distinct note) from sales", "1"},
           {"select count(*) from sales group by note having note = 'note'", "2"},
           {"select code from barcode where bar ='6221033101234 '", "101"}});
}

TEST_F(Means, TextsAreJoinedAndKeptAsTheyStand) {
    check({{"select 'a' + 'b'", "ab"},
           {"select 'a' + null", "null"},
           {"select 'n ' + convert(varchar,12)", "n 12"},
           {"select 1 + 1", "2"},
           {"select '1' + 1", "2"},
           {"select 'd''Or'", "d'Or"},
           {"select '[a];?-- /* */ $1'", "[a];?-- /* */ $1"},
           {"select N'تحويل من ' + name from cash where stcode = 1 and code = 2", "تحويل من درج 2"},
           {"select isnull(null,'none')", "none"},
           {"select name from users where perm like '1%' and isnull(allow,0) = 0", "مدير"}});
}

TEST_F(Means, NullsAreNoNumbers) {
    check({{"select sum(ptot) as xs from sales where pnum = 999", "null"},
           {"select max(pnum) as last_i from sales where ctype = 2", "null"},
           {"select count(pnum) from sales where pnum = 999", "0"},
           {"select isnull(sum(ptot),0) from sales where pnum = 999", "0"},
           {"select sum(disboun) from sales", "5"},
           {"select count(disboun) from sales", "1"},
           {"select count(*) from sales where disboun <> 5", "0"},
           {"select sum(ptot) as xs from sales where (ctype = 0 Or ctype = 1) and vcode = -1 and stype <> 1 "
            "and ptype = 1",
            "75.25"}});
}

TEST_F(Means, NullComesFirstInOrder) {
    shop_.sql("insert into stk (icode,stcode,quan) values (101,3,1)");
    check({{"select edate from stk where icode = 101 order by edate", "null"},
           {"select edate from stk where icode = 101 order by edate desc", "3000/01/01 00:00:00"}});
}

TEST_F(Means, NumbersKeepTheirKinds) {
    check({{"select 7/2", "3"},
           {"select 7/2.0", "3.5"},
           {"select -7/2", "-3"},
           {"select 7 % 4", "3"},
           {"select sum(quan) as quan from stk where icode = 101 and stcode = 1", "7"},
           {"select round(2.345,2)", "2.35"},
           {"select round(-2.5,0)", "-3"},
           {"select isnumeric('12') + isnumeric('-1.5') + isnumeric('1e3')", "3"},
           {"select isnumeric('A12') + isnumeric('') + isnumeric('1x')", "0"},
           {"select isnumeric('.')", "1"},
           {"select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  cast(chkno as "
            "real) end "
            "else 0 end) as last_c from vencuspay where type <> 0 and ptype = 2",
            "12"},
           {"select price12 from items where code = '102'", "9.5"},
           {"select sale_only from items where code = 102", "1"}});
    // The same text compared as text, as the direct receipt numbers: '7' is above '12'.
    check(
        {{"select max(chkno) as last_ from vencuspay where ztype = 2 and isnumeric(chkno) = 1 and chkno <> "
          "'.'",
          "7"}});
}

TEST_F(Means, DatesAreYearMonthDayInEveryForm) {
    check({{"select count(*) from sales where [date] = '2026/11/21'", "2"},
           {"select count(*) from sales where date = '2026-11-21'", "2"},
           {"select count(*) from sales where date = '20261121'", "2"},
           {"select count(*) from sales where date = '2026/11/21 00:00:00'", "2"},
           {"select count(*) from sales where date = '2026/11/21 '", "2"},
           {"select count(*) from sales where date < '2026/11/21'", "1"},
           {"select count(*) from sales where date >= '2026/2/3' and date <= '2026/11/20'", "1"},
           {"select count(*) from stk where edate = '3000/01/01'", "1"},
           {"select convert(varchar,[date],101) from sales where pnum = 12", "11/21/2026"},
           {"select convert(varchar,[time_],8) from sales where pnum = 12", "10:42:00"},
           {"select time_ from sales where pnum = 12", "1900/01/01 10:42:00"},
           {"select cast('11/21/2026 10:42:00' as datetime)", "2026/11/21 10:42:00"},
           {"select max(edate) from stk", "3000/01/01 00:00:00"},
           {"select sale_no from sal_prd where sale_from <='2026/11/30' and sale_to >= '2026/11/30'", "1"}});
}

TEST_F(Means, AMomentIsDateAndTime) {
    const std::string moment =
        "select count(*) from sales where cast(convert(varchar,[date],101) + ' ' + "
        "isnull(convert(varchar,[time_],8),'00:00:00') as datetime)";
    const struct {
        const char* condition;
        const char* count;
    } cases[] = {
        {"<'2026/11/21 10:42:00'", "2"},  {"<='2026/11/21 10:42:00'", "3"}, {">'2026/11/21 10:41:59 '", "1"},
        {"<='2026/11/21 00:00:00'", "2"}, {"<'2026/11/21 00:00:00'", "1"},  {"<'2026/11/20 09:00:00'", "0"},
        {"<='2026/11/20 9:00'", "1"},     {">'2026/11/20 23:59:59'", "2"},
    };
    for (const auto& [condition, count] : cases)
        check({{(moment + condition).c_str(), count}});
}

TEST_F(Means, GroupsJoinsAndHaving) {
    check({{"select sum(ptot) from sales having sum(ptot) > 1000", "no row"},
           {"select sum(ptot) from sales having sum(ptot) > 100", "175.25"},
           {"select sum(quan) as qq,stcode from stk where icode = 101 and isnull([quan],0)  > 0  Group By "
            "stcode  "
            "having stcode <> 1",
            "10"},
           {"SELECT Sum(stk.quan) AS s1, items.code FROM items LEFT JOIN stk ON items.code = stk.icode "
            "GROUP BY items.code, items.name Having name like 'mi%' and code = 102",
            "null"},
           {"select work_name from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  where "
            "stcode = 1 "
            "AND cash_no = 1  and scode = 4",
            "null"},
           {"SELECT IsNull(tmp_price.p_per,0) AS Expr1 FROM items LEFT JOIN tmp_price ON items.code = "
            "tmp_price.icode "
            " where code = 101",
            "0"},
           {" select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1)  and vcode <> -1 ", "1"},
           {" select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1) and vcode = -1", "13"}});
}

TEST_F(Means, ChangesCountTheirRows) {
    auto& connection = shop_.connection();
    EXPECT_EQ(connection.execute("update custdata set cacc = [cacc] + 12.5 where ccode = 5"), 1);
    EXPECT_EQ(shop_.number("select cacc from custdata where ccode = 5"), 22.5);
    EXPECT_EQ(connection.execute("update custdata set cacc = [cacc] + 12.5 where ccode = 6"), 0);
    EXPECT_EQ(
        connection.execute("INSERT INTO tmp_price (icode,p_per,s_price) select icode,isnull(p_per,0),s_price "
                           "from sale_price where sale_prd = 1"),
        1);
    EXPECT_EQ(shop_.cell("select p_per from tmp_price where icode = 101"), "0");
    EXPECT_EQ(connection.execute("delete from tmp_price"), 1);
    EXPECT_EQ(connection.execute("update stk set quan = IsNull([quan], 0) - 3 where icode = 101 and edate "
                                 "='2026/12/31' and stcode = 1"),
              1);
}

TEST_F(Means, WhatNoServerRunsIsAnError) {
    for (const char* statement :
         {"select * from nowhere", "select nothing from sales", "selec 1", "select * from sales where",
          "insert into sales (pnum) values (1,2)", "update items set code = 101 where code = 102",
          "]([itemcode] nvarchar(50) null) ON [PRIMARY]", "select 'open"})
        EXPECT_THROW(shop_.connection().query(Sql::from_administrator(statement)), Error) << statement;
}

}  // namespace
