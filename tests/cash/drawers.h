// A shop with drawers for tests of the cash: drawers 1 and 2 of store 1, drawer 1 of store 2, the main drawer
// being drawer 2 of store 1; the workstation is drawer 1 of store 1 on 2026/11/21 at 10:42:00.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>

#include "common/numbers.h"
#include "signin/session.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

struct InvoiceRow {
    int number = 1;
    std::int64_t store = 1;
    std::int64_t drawer = 1;
    std::string date = "2026/11/21";
    std::string time = "09:00:00";  // empty: null
    int ctype = 0;
    int stype = 0;
    int vcode = -1;
    std::string ptot = "0";
    std::string disboun = "null";
    std::string safe = "null";
    std::string pdis = "0";
};

class Drawers {
  public:
    Drawers() {
        session.cash_point = 1;
        session.store_code = 1;
        session.store_name = "الفرع الرئيسي";
        session.drawer_name = "درج 1";
        session.user_code = 1;
        session.user_name = "مدير";
        session.permissions = std::string(400, '1');
        shop.sql("update basic set mst = 1, mcash = 2");
        services.clock.moment = {{2026, 11, 21}, {10, 42, 0, 0}};
    }

    void invoice(const InvoiceRow& row) {
        std::ostringstream sql;
        sql << "insert into sales (pnum,stcode,ptype,[date],time_,ctype,stype,vcode,ptot,disboun,safe,pdis) "
               "select "
            << row.number << "," << row.store << "," << row.drawer << ",'" << row.date << "',"
            << (row.time.empty() ? "null" : "'" + row.time + "'") << "," << row.ctype << "," << row.stype
            << "," << row.vcode << "," << row.ptot << "," << row.disboun << "," << row.safe << ","
            << row.pdis;
        shop.sql(sql.str());
    }
    void cash_sale(const std::string& amount, const std::string& time = "09:00:00", std::int64_t drawer = 1) {
        invoice({.drawer = drawer, .time = time, .ptot = amount});
    }
    void open_shift(int number = 1, const std::string& start = "2026/11/21 08:00:00",
                    std::int64_t drawer = 1) {
        shop.sql("insert into shift (stcode,cash_no,scode,s_date,man_) select 1," + std::to_string(drawer) +
                 "," + std::to_string(number) + ",'" + start + "',1");
    }
    std::string transfers() {
        const auto rows = shop.connection().query("select * from cach_t order by cnum");
        std::string text;
        for (const auto& row : rows) {
            text += row.text("cnum") + ": " + row.text("cfr") + "/" + row.text("cash_nf") + " to " +
                    row.text("cto") + "/" + row.text("cash_nt") + " " +
                    common::format_amount(row.number("caml")) + "\n";
        }
        return text;
    }

    Shop shop;
    signin::Session session;
    RememberedServices services;
};

}  // namespace test
