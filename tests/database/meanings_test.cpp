// What the program relies on in its statements, on a shop in the middle of a day. A real server can be asked
// too.
#include <gtest/gtest.h>

#include "support/shop.h"

namespace {

using database::Error;
using database::Sql;

class Means : public testing::Test {
  protected:
    Means() {
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
    // A statement and its single cell as text, "null", or "no row".
    struct Meaning {
        const char* statement;
        const char* cell;
    };
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
    test::Shop shop_;
};

TEST_F(Means, WhatAServerMeans) {
    check({{"select case when 'x' = 'X ' then 1 else 0 end", "1"},
           {"select case when ' x' = 'x' then 1 else 0 end", "0"},
           {"select case when N'أحمد' = N'احمد' then 1 else 0 end", "0"},
           {"select code from items where (name) like N'%كامل%'", "101"},
           {"select count(*) from sales group by note having note = 'note'", "2"},
           {"select code from barcode where bar ='6221033101234 '", "101"},
           {"select name from users where perm like '1%' and isnull(allow,0) = 0", "مدير"},
           {"select max(pnum) as last_i from sales where ctype = 2", "null"},
           {"select count(*) from sales where disboun <> 5", "0"},
           {"select price12 from items where code = '102'", "9.5"},
           {"select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  cast(chkno as "
            "real) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = 2",
            "12"},
           // Direct receipt numbers are compared as texts: '7' is above '12'.
           {"select max(chkno) as last_ from vencuspay where ztype = 2 and isnumeric(chkno) = 1 and chkno <> "
            "'.'",
            "7"},
           {"select count(*) from sales where date = '20261121'", "2"},
           {"select count(*) from sales where date >= '2026/2/3' and date <= '2026/11/20'", "1"},
           {"select time_ from sales where pnum = 12", "1900/01/01 10:42:00"},
           {"select cast('11/21/2026 10:42:00' as datetime)", "2026/11/21 10:42:00"},
           {"select work_name from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  where "
            "stcode = 1 AND cash_no = 1  and scode = 4",
            "null"}});
    shop_.sql("insert into stk (icode,stcode,quan) values (101,3,1)");
    check({{"select edate from stk where icode = 101 order by edate", "null"},
           {"select edate from stk where icode = 101 order by edate desc", "3000/01/01 00:00:00"}});
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
}

}  // namespace
