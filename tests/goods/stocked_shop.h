// A shop with three items for tests of goods; today is 2026/11/21.
#pragma once

#include <string>

#include "signin/session.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

class StockedShop {
  public:
    StockedShop() {
        session.store_code = 1;
        session.user_code = 1;
        session.user_name = "مدير";
        session.permissions = std::string(400, '1');
        for (const char* statement :
             {"insert into item_types (code,name) select 1,N'ألبان'",
              "insert into makers (code,name) select 4,N'ندوان'",
              // tea: unit and carton of 12; rice by the unit; a service
              "insert into items "
              "(code,name,itype,fact,num1,num3,mquan,price11,price12,price13,price14,price15,"
              "price31,price32,price33,price34,price35) select "
              "501,N'شاي',1,4,1,12,5,8,10,9.5,10,10,96,115,110,120,120",
              "insert into items (code,name,num1,price11,price12,price13,price14,price15) select "
              "502,N'أرز',1,7,7.35,7.35,7.35,7.35",
              "insert into items (code,name,num1,price11,price12,sale_only) select 503,N'توصيل',1,0,20,1",
              "insert into barcode (bar,code,scode) select '6221031001239',501,1",
              "insert into stk (icode,stcode,quan,edate) select 502,1,3,'3000/01/01'"})
            shop.sql(statement);
    }
    std::string prices(int item) {
        std::string text;
        for (const char* column : {"price11", "price12", "price13", "price31", "price32"})
            text += (text.empty() ? "" : " ") + shop.cell("select " + std::string(column) +
                                                          " from items where code = " + std::to_string(item));
        return text;
    }

    Shop shop;
    signin::Session session;
    RememberedServices services;
};

}  // namespace test
