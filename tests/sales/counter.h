// A cashier at the sales desk of a till with items of every awkward sort.
#pragma once

#include <string>
#include <vector>

#include "sales/sales_desk.h"
#include "sales/till.h"

namespace test {

// The items, beside those of the till: 123 (cheese by weight, 40 kg), 400 (water in units, packs of 6 and
// cartons of 24, all levels priced, 240 pieces), 410 (no pack and no carton data), 420 (stopped), 430 (no
// prices), 440 (one piece), 450 (5 pieces, 5 reserved), 460 (2 pieces, none reserved). Barcodes:
// 6221000400012 water, 6221000400029 its pack, 6221000400036 its carton, 6221000410011 and 6221000410028 the
// pack and carton of 410, 7000 two items.
struct Counter : Till {
    Counter() {
        session.settings.max_dis = 10;
        session.settings.cash = "com1";
        for (const char* statement : {
                 "insert into items (code,name,num1,price11,price12,price13) select 123,N'جبنة',1,80,100,90",
                 "insert into items "
                 "(code,name,num1,NUM2,NUM3,price11,price12,price13,price14,price15,price21,"
                 "price22,price23,price24,price25,price31,price32,price33,price34,price35) select "
                 "400,N'مياه',1,"
                 "6,24,3,5,4.5,4.25,4,17,28,26,25,24,65,105,100,98,95",
                 "insert into items (code,name,num1,price11,price12) select 410,N'شاي',1,10,12",
                 "insert into items (code,name,num1,price11,price12,stop) select 420,N'قديم',1,10,12,1",
                 "insert into items (code,name,num1) select 430,N'جديد',1",
                 "insert into items (code,name,num1,price11,price12) select 440,N'وحيد',1,10,12",
                 "insert into items (code,name,num1,price11,price12) select 450,N'محجوز',1,10,12",
                 "insert into items (code,name,num1,price11,price12) select 460,N'قليل',1,10,12",
                 "insert into stk (icode,stcode,edate,quan) select 123,1,'3000/01/01',40",
                 "insert into stk (icode,stcode,edate,quan) select 400,1,'3000/01/01',240",
                 "insert into stk (icode,stcode,edate,quan) select 410,1,'3000/01/01',100",
                 "insert into stk (icode,stcode,edate,quan) select 430,1,'3000/01/01',100",
                 "insert into stk (icode,stcode,edate,quan) select 440,1,'3000/01/01',1",
                 "insert into stk (icode,stcode,edate,quan) select 450,1,'3000/01/01',5",
                 "insert into stk (icode,stcode,edate,quan) select 460,1,'3000/01/01',2",
                 "insert into reservd (icode,ccode,quan1,quan) select 450,7,5,5",
                 "insert into barcode (bar,code,scode) select '6221000400012',400,1",
                 "insert into barcode (bar,code,scode) select '6221000400029',400,2",
                 "insert into barcode (bar,code,scode) select '6221000400036',400,3",
                 "insert into barcode (bar,code,scode) select '6221000410028',410,2",
                 "insert into barcode (bar,code,scode) select '6221000410035',410,3",
                 "insert into barcode (bar,code,scode) select '7000',400,1",
                 "insert into barcode (bar,code,scode) select '7000',410,1",
             })
            shop.sql(statement);
    }

    // Takes permissions away; at first the user has all of them.
    void forbid(std::initializer_list<int> positions) {
        for (const int position : positions)
            session.permissions[static_cast<std::size_t>(position) - 1] = '0';
    }
    void forbid_below_stock() { forbid({216, 286, 281}); }

    sales::SalesDesk& open() {
        desk.Open();
        return desk;
    }
    // Enter in the item-code field; a supplier is another store that the goods come from.
    bool enter(std::string_view text, std::int64_t supplier = 0) {
        return desk.lines().EnterItem(sales::read_entry(text), supplier);
    }
    // Saves the invoice as it is proposed, without typing anything into the payment dialog.
    bool sell() {
        return desk.checkout().begin_save() == sales::BeginSave::ask_payment &&
               desk.checkout().SaveInvoice() == sales::SaveOutcome::saved;
    }
    // Begins a new invoice.
    void start_anew() {
        answer({true});
        desk.checkout().CancelRecord();
        asked();
    }
    std::string cell(std::size_t row, int column) const {
        return desk.invoice().cells(row)[static_cast<std::size_t>(column)];
    }
    // The messages and the questions since the last call.
    std::vector<std::string> said() { return std::exchange(services.prompts.messages, {}); }
    std::vector<std::string> asked() { return std::exchange(services.prompts.questions, {}); }
    void answer(std::initializer_list<bool> answers) { services.prompts.answers.assign(answers); }

    sales::SalesDesk desk{connection(), session, services.all(), printer};
};

}  // namespace test
