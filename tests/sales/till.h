// A till for tests of saving: a shop with items and an open shift, and the services that the logic needs.
#pragma once

#include <string>

#include "sales/invoice.h"
#include "sales/saving.h"
#include "signin/session.h"
#include "support/printer.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

// The signed-in manager of store 1, drawer 1, for any shop. The services record what they are asked for.
class Desk {
  public:
    Desk() {
        session.cash_point = 1;
        session.store_code = 1;
        session.user_code = 1;
        session.user_name = "مدير";
        session.permissions = std::string(400, '1');
        session.settings.aname = "بقالة النور";
    }

    sales::Invoice invoice() const {
        sales::Invoice made;
        made.date = {2026, 11, 21};
        made.store = 1;
        return made;
    }
    static sales::Line line(std::int64_t item, double quantity, double price, double factor = 1) {
        sales::Line made;
        made.item_code = item;
        made.name = item == 100 ? "أرز" : item == 200 ? "زيت" : "توصيل";
        made.quantity = quantity;
        made.price = price;
        made.factor = factor;
        made.unit_code = factor == 1 ? 1 : 2;
        made.stock_kept = item != 300;
        return made;
    }
    sales::Saving saving_on(database::Connection& connection) {
        return {connection, session, services.all(), printer};
    }

    signin::Session session;
    RememberedServices services;
    RememberedPrinter printer;
};

// A shop of its own. Item 100 (rice, stock in batches of 3 expiring 2027/01/01 and 4 expiring 2027/06/01),
// item 200 (oil, 50 pieces without expiry), item 300 (a service, never in stock). Account customer 7, tips
// receiver 5, bank 3, walk-in customer 1, craftsman line 9 (of item 200, 6 made and unsold). Shift 14 of
// store 1, drawer 1 is open.
class Till : public Desk {
  public:
    Till() {
        shop.go_by(services.clock);
        for (const char* statement : {
                 "insert into items (code,name,num1,price11,price12,sale_only) select 100,N'أرز',1,8,10,0",
                 "insert into items (code,name,num1,NUM2,price11,price12,price21,sale_only) select "
                 "200,N'زيت',1,12,20,25,240,0",
                 "insert into items (code,name,num1,price11,price12,sale_only) select 300,N'توصيل',1,0,15,1",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2027/06/01',4",
                 "insert into stk (icode,stcode,edate,quan) select 100,1,'2027/01/01',3",
                 "insert into stk (icode,stcode,edate,quan) select 100,2,'2026/12/01',50",
                 "insert into stk (icode,stcode,edate,quan) select 200,1,'3000/01/01',50",
                 "insert into custdata (ccode,cname,copen,cacc) select 7,N'مطعم الأمل',100,100",
                 "insert into boundata (ccode,cname) select 5,N'حسن'",
                 "insert into bankdata (bcode,bname) select 3,N'البنك الأهلي'",
                 "insert into cust_cash (zcode,zname,zphone,zmail) select 1,N'منى','010','m@x'",
                 "insert into salver (scode,icode,tot,qty,cqty) select 9,200,30,6,6",
                 "insert into shift (stcode,cash_no,scode,s_date,man_) select 1,1,14,'2026/11/21 08:00:00',1",
             })
            shop.sql(statement);
    }
    database::Connection& connection() { return shop.connection(); }
    sales::Saving saving() { return saving_on(connection()); }

    Shop shop;
};

}  // namespace test
