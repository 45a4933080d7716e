#include "accounts/statement_sums.h"

#include "common/numbers.h"

namespace accounts {

using database::Fragment;
using database::quoted;
using database::Sql;

namespace {

// One source with its two sums, am1 and am2; `am1_side` is +1 where am1 is a debit.
struct Source {
    Fragment head;  // up to the customer
    Fragment date;  // up to the date's comparison
    Fragment tail;
    int am1_side;
};

// Vouchers of vendors share the codes of customers; only the two kinds of customer count.
constexpr Source purchases{
    "SELECT  Sum(case when[ctype]=1 then [ptot]  else 0 end ) AS am1, Sum(case when [ctype]=3 then [ptot] "
    "else 0 "
    "end ) AS am2 From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =",
    " AND (purchase.date ", ");", -1};
constexpr Source invoices{
    "SELECT  Sum(case when [ctype]=2 then [ptot] else 0 end ) AS am1, Sum(case when [ctype]=0 then [ptot] "
    "else 0 "
    "end ) AS am2 From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=",
    " AND (sales.date", " );", -1};
constexpr Source receipts{
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when "
    "[type]=3 "
    "then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=",
    " and ptype = 2 AND (vencuspay.date", " ) and (ztype = 2 or ztype = 3);", -1};
constexpr Source payments{
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when "
    "[type]=3 "
    "then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=",
    " and ptype = 1 AND (vencuspay.date", " ) and (ztype = 2 or ztype = 3);", +1};
constexpr Fragment due_receipts_and_payments =
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan1] else 0 end ) AS am1, Sum(case when "
    "[type]=3 then [quan1] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=";

// Debit less credit of one source.
double read(database::Connection& connection, const Source& source, std::int64_t customer,
            const common::Date& date, SumsUpTo up_to) {
    Sql statement(source.head);
    statement += customer;
    statement += source.date;
    statement += up_to == SumsUpTo::before_date ? Fragment("<") : Fragment("<=");
    statement += quoted(date);
    statement += source.tail;
    const auto result = connection.query(statement);
    if (result.empty()) return 0;
    const double am1 = common::round_decimals(result.front().number("am1"), 2);
    const double am2 = common::round_decimals(result.front().number("am2"), 2);
    return source.am1_side * (am1 - am2);
}

}  // namespace

double sum_account(database::Connection& connection, std::int64_t customer, const common::Date& date,
                   SumsUpTo up_to, VoucherAmount amount) {
    const auto card = connection.query(Sql("select * from custdata where ccode = ") + customer);
    double total = card.empty() ? 0 : card.front().number("copen");
    for (Source source : {purchases, invoices, receipts, payments}) {
        const bool is_voucher = source.head.text() == receipts.head.text();
        if (is_voucher && amount == VoucherAmount::due) source.head = due_receipts_and_payments;
        total = common::round_decimals(total + read(connection, source, customer, date, up_to), 2);
    }
    return total;
}

namespace {

// What an insert takes from its table, and the conditions around customer and period.
struct Gathering {
    Fragment insert;  // up to the customer
    Fragment from;    // up to the start
    Fragment to;      // up to the end
    Fragment tail;
};

// f1 is the number (of a voucher its internal one, for the typed number is a text and stands in f7), f2 the
// amount, f3 the kind, f4 the store, f6 the source: 1 a purchase, 5 its return, 2 a sale, 6 its return, 4 a
// receipt, 3 a payment. What an insert does not name stays empty.
constexpr Gathering gatherings[] = {
    {"insert into tmp_acc ([date],am1,am2,note1,f1,f2,f3,f4,f6) select [date],"
     "case when ctype = 1 then ptot else 0 end,case when ctype = 3 then ptot else 0 end,"
     "case when ctype = 1 then N'توريد : فاتورة رقم ' else N'مرتجع مورد : اذن رقم ' end + "
     "isnull(convert(varchar,pnum),''),"
     "pnum,ptot,ctype,stcode,case when ctype = 1 then 1 else 5 end "
     "from purchase where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode=",
     " AND (purchase.date>=", " AND purchase.date<=", ");"},
    {"insert into tmp_acc ([date],am2,am1,note1,f1,f2,f3,f10,f12,f11,f5,f4,f8,f9,f6,note2) select [date],"
     "case when ctype = 0 then ptot else 0 end,case when ctype = 2 then ptot else 0 end,"
     "case when ctype = 0 then N'مبيعات : إذن رقم ' else N'مرتجع مبيع : اذن رقم ' end + "
     "isnull(convert(varchar,pnum),''),"
     "pnum,ptot,ctype,null,null,null,null,stcode,null,null,case when ctype = 0 then 2 else 6 end,"
     "case when isnull(perm_no,'') = '' then '' else N'فاتورة رقم :' + perm_no end "
     "from sales where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=",
     " AND (sales.date>=", " AND sales.date<=", ");"},
    {"insert into tmp_acc ([date],am1,am2,note1,f1,f2,f3,f4,f6,f7,note2) select [date],"
     "case when type = 0 or type = 1 or type = 2 then quan else 0 end,case when type = 3 then quan else 0 "
     "end,"
     "case when type = 1 then N'ايصال استلام نقدية رقم : ' when type = 0 then N' شيك رقم ' "
     "when type = 2 then N'اشعار خصم برقم ' else N'اشعار اضافة رقم ' end + isnull(chkno,''),"
     "pay_id,quan,type,stcode,4,chkno,note "
     "from vencuspay where vencuspay.vcode=",
     " And vencuspay.ptype = 2 AND (vencuspay.date>=", " AND vencuspay.date<=",
     ") and (ztype = 2 or ztype = 3);"},
    {"insert into tmp_acc ([date],am1,am2,note1,f1,f2,f3,f4,f6,f7,note2) select [date],"
     "case when type = 3 then quan else 0 end,case when type = 0 or type = 1 or type = 2 then quan else 0 "
     "end,"
     "case when type = 1 then N'ايصال دفع رقم ' when type = 0 then N' شيك رقم ' "
     "when type = 2 then N'مدفوعات :اشعار خصم برقم ' else N'اضافة :  رقم ' end + isnull(chkno,''),"
     "pay_id,quan,type,stcode,3,chkno,note "
     "from vencuspay where vencuspay.vcode=",
     " And vencuspay.ptype = 1 AND (vencuspay.date>=", " AND vencuspay.date<=",
     ") and (ztype = 2 or ztype = 3);"},
};

}  // namespace

void gather_movements(database::Connection& connection, std::int64_t customer, const common::Date& start,
                      const common::Date& end) {
    connection.execute("delete  from tmp_acc");
    for (const Gathering& gathering : gatherings) {
        connection.execute(Sql(gathering.insert) + customer + gathering.from + quoted(start) + gathering.to +
                           quoted(end) + gathering.tail);
    }
}

}  // namespace accounts
