// A shop with customers, vendors, banks and places for tests of the accounts; today is 2026/11/21.
#pragma once

#include "signin/session.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

class Office {
  public:
    Office() {
        session.cash_point = 1;
        session.store_code = 1;
        session.user_name = "مدير";
        for (const char* statement :
             {"insert into custdata (ccode,cname,mname,copen,cacc,link) select 7,N'مطعم "
              "الأمل',N'سامي',100,250,2",
              "insert into custdata (ccode,cname,copen,cacc,ctype) select 8,N'فندق النيل',0,0,1",
              "insert into vendata (vcode,vname,vopen,vacc) select 3,N'شركة الزيوت',0,900",
              "insert into link (ccode,cname) select 2,N'مندوب الشمال'",
              "insert into bankdata (bcode,bname) select 3,N'البنك الأهلي'",
              "insert into cust_typ (code,name) select 1,N'قطاعي'",
              "insert into cust_typ (code,name) select 2,N'جملة'",
              "insert into cust_typ (code,name) select 3,N'جملة الجملة'",
              "insert into country (ccode,cname) select 1,N'مصر'",
              "insert into gover (ccode,cgover,cname) select 1,10,N'القاهرة'",
              "insert into gover (ccode,cgover,cname) select 2,20,N'عمان'",
              "insert into cityn (cgov,ccity,cname) select 10,100,N'المعادي'",
              "insert into dist (ccity,cdist,cname) select 100,1000,N'الحي السابع'"})
            shop.sql(statement);
    }
    double customer_balance(int code) {
        return shop.number("select cacc from custdata where ccode = " + std::to_string(code));
    }
    double vendor_balance(int code) {
        return shop.number("select vacc from vendata where vcode = " + std::to_string(code));
    }

    Shop shop;
    signin::Session session;
    RememberedServices services;
};

}  // namespace test
