// A shop with suppliers and two items for tests of goods in; today is 2026/11/21.
#pragma once

#include "purchases/goods_in.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

class Buyer {
  public:
    Buyer() {
        session.cash_point = 1;
        session.store_code = 1;
        session.user_code = 1;
        session.user_name = "مدير";
        session.permissions = std::string(400, '1');
        session.program_folder = folder.path();
        for (const char* statement :
             {"insert into vendata (vcode,vname,vopen,vacc) select 3,N'شركة الزيوت',900,900",
              "insert into vendata (vcode,vname,vopen,vacc) select 4,N'مصنع الشاي',0,0",
              "insert into items (code,[name],num1,num2,price11,price12,price21,price22) select "
              "100,N'زيت',1,12,10,12,120,140",
              "insert into items (code,[name],num1,price12) select 200,N'شاي',1,6",
              "insert into items (code,[name],num1,price12,sale_only) select 300,N'توصيل',1,5,1",
              "insert into stk (icode,stcode,quan,edate) select 100,1,20,'3000/01/01'",
              "insert into stk (icode,stcode,quan,edate) select 100,2,5,'3000/01/01'"})
            shop.sql(statement);
    }
    purchases::GoodsIn desk() { return desk(shop.connection()); }
    purchases::GoodsIn desk(database::Connection& connection) {
        return {connection, session, services.all()};
    }
    std::optional<common::Refusal> add(purchases::GoodsIn& desk, std::int64_t item, int unit,
                                       double quantity) {
        return desk.add(*sales::load_item(shop.connection(), item, unit), quantity);
    }
    // Two packs of oil at 126 less 12, thirty of tea at 4 that keep until March, 10 % off the whole: 324.
    purchases::GoodsIn receipt(database::Connection& connection) {
        purchases::GoodsIn made = desk(connection);
        made.begin(purchases::PurchaseKind::supply);
        made.head.supplier = 3;
        made.head.invoice = "A-17";
        add(made, 100, 2, 2);
        auto line = made.line_fields();
        line.price = "126";
        line.discount = "12";
        made.set_line(line);
        add(made, 200, 1, 30);
        line = made.line_fields();
        line.total = "120";
        line.expiry = "31/3/2027";
        made.set_line(line);
        made.foot.discount = "10%";
        return made;
    }
    std::string stock(int item) {
        std::string text;
        for (const auto& row : shop.connection().query(
                 database::Sql("select quan,edate from stk where stcode = 1 and icode = ") + item +
                 " order by edate"))
            text += row.text("quan") + " " + common::date_text(row.moment("edate").date) + ";";
        return text;
    }
    double owed(int supplier) {
        return shop.number("select vacc from vendata where vcode = " + std::to_string(supplier));
    }

    Shop shop;
    TemporaryFolder folder;
    signin::Session session;
    RememberedServices services;
};

}  // namespace test
