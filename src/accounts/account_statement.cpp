#include "accounts/account_statement.h"

#include "accounts/messages.h"
#include "accounts/millionths.h"
#include "accounts/voucher_records.h"
#include "common/numbers.h"
#include "database/choices.h"
#include "database/till_settings.h"

namespace accounts {

using common::Amount;
using common::FieldKind;
using common::Refusal;
using database::Fragment;
using database::quoted;
using database::Sql;

const std::array<std::string_view, 6> statement_headings{"التاريخ", "دائن",       "مدين",
                                                         "الرصيد",  "البيــــان", "ملاحظــــــات"};

namespace {

// One source with its two sums, am1 and am2.
struct Source {
    Fragment head;  // up to the customer
    Fragment date;  // up to the comparison of the date
    Fragment tail;
    bool am1_is_debit;
};

constexpr Source purchases{
    "SELECT  Sum(case when[ctype]=1 then [ptot]  else 0 end ) AS am1, Sum(case when [ctype]=3 then [ptot] "
    "else 0 "
    "end ) AS am2 From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =",
    " AND (purchase.date ", ");", false};
constexpr Source invoices{
    "SELECT  Sum(case when [ctype]=2 then [ptot] else 0 end ) AS am1, Sum(case when [ctype]=0 then [ptot] "
    "else 0 "
    "end ) AS am2 From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=",
    " AND (sales.date", " );", false};
// Vendors and customers share codes, so the statements select vouchers of the two kinds of customer.
constexpr Source receipts{
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when "
    "[type]=3 "
    "then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=",
    " and ptype = 2 AND (vencuspay.date", " ) and (ztype = 2 or ztype = 3);",
    raises_balance(VoucherKind::receipt, PartyKind::customer, Method::cash)};
constexpr Source payments{
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when "
    "[type]=3 "
    "then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=",
    " and ptype = 1 AND (vencuspay.date", " ) and (ztype = 2 or ztype = 3);",
    raises_balance(VoucherKind::payment, PartyKind::customer, Method::cash)};
// The discounts of invoices, where the shop counts them.
constexpr Source discounts{
    "SELECT Sum(case when [ctype]=0 then [pdis] else 0 end ) AS am1, Sum(case when [ctype]=2 then [pdis] "
    "else 0 end ) AS am2 From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=",
    " AND (sales.date", " )", false};
constexpr Fragment due_receipts_and_payments =
    "SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan1] else 0 end ) AS am1, Sum(case when "
    "[type]=3 then [quan1] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=";

// Whether the sums stop before the date or include it, and which amount of a voucher they add: the whole
// (quan) or the part that is due (quan1).
enum class SumsUpTo { before_date, and_on_date };
enum class VoucherAmount { whole, due };

// Debits less credits of one source, up to its tail.
Millionths sum_source(database::Connection& connection, const Source& source, const Sql& up_to_tail) {
    const auto result = connection.query(up_to_tail + source.tail);
    if (result.empty()) return 0;
    const Millionths difference =
        millionths(result.front().number("am1")) - millionths(result.front().number("am2"));
    return source.am1_is_debit ? difference : -difference;
}

// The opening balance plus all debits less all credits of the customer.
Millionths sum_account(database::Connection& connection, std::int64_t customer, const common::Date& date,
                       SumsUpTo up_to, VoucherAmount amount, const std::optional<common::Date>& net_from) {
    const auto card = connection.query(Sql("select * from custdata where ccode = ") + customer);
    Millionths total = card.empty() ? 0 : millionths(card.front().number("copen"));
    const auto until = [&](const Source& source) {
        return Sql(source.head) + customer + source.date +
               (up_to == SumsUpTo::before_date ? Fragment("<") : Fragment("<=")) + quoted(date);
    };
    for (Source source : {purchases, invoices, receipts, payments}) {
        const bool is_voucher = source.head.text() == receipts.head.text();
        if (is_voucher && amount == VoucherAmount::due) source.head = due_receipts_and_payments;
        total += sum_source(connection, source, until(source));
    }
    if (net_from)
        total +=
            sum_source(connection, discounts, until(discounts) + " AND sales.date>=" + quoted(*net_from));
    return total;
}

// What an insert selects from its table, and the conditions around customer and period.
struct Gathering {
    Fragment insert;  // up to the customer
    Fragment from;    // up to the start
    Fragment to;      // up to the end
    Fragment tail;
};

// ser is the amount in millionths, debits above 0, since am1 and am2 hold seven digits only; f5 of an invoice
// its discount in millionths. f1 is the number (for a voucher its internal one; the typed number is a text
// and goes into f7), f2 the amount, f3 the kind, f4 the store, f6 the source: 1 a purchase, 5 its return, 2 a
// sale, 6 its return, 4 a receipt, 3 a payment. Columns that an insert does not name stay empty.
constexpr Gathering gatherings[] = {
    {"insert into tmp_acc ([date],ser,am1,am2,note1,f1,f2,f3,f4,f6) select [date],"
     "cast(round(case when ctype = 1 then 0 - ptot else ptot end * 1000000,0) as bigint),"
     "case when ctype = 1 then ptot else 0 end,case when ctype = 3 then ptot else 0 end,"
     "case when ctype = 1 then N'توريد : فاتورة رقم ' else N'مرتجع مورد : اذن رقم ' end + "
     "isnull(convert(varchar,pnum),''),"
     "pnum,ptot,ctype,stcode,case when ctype = 1 then 1 else 5 end "
     "from purchase where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode=",
     " AND (purchase.date>=", " AND purchase.date<=", ");"},
    {"insert into tmp_acc ([date],ser,am2,am1,note1,f1,f2,f3,f10,f12,f11,f5,f4,f8,f9,f6,note2) select [date],"
     "cast(round(case when ctype = 0 then ptot else 0 - ptot end * 1000000,0) as bigint),"
     "case when ctype = 0 then ptot else 0 end,case when ctype = 2 then ptot else 0 end,"
     "case when ctype = 0 then N'مبيعات : إذن رقم ' else N'مرتجع مبيع : اذن رقم ' end + "
     "isnull(convert(varchar,pnum),''),"
     "pnum,ptot,ctype,null,null,null,"
     "convert(nvarchar(50),cast(round(pdis * 1000000,0) as bigint)),stcode,null,null,case when ctype = 0 "
     "then 2 else 6 end,"
     "case when isnull(perm_no,'') = '' then '' else N'فاتورة رقم :' + perm_no end "
     "from sales where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=",
     " AND (sales.date>=", " AND sales.date<=", ");"},
    {"insert into tmp_acc ([date],ser,am1,am2,note1,f1,f2,f3,f4,f6,f7,note2) select [date],"
     "cast(round(case when type = 3 then quan when type = 0 or type = 1 or type = 2 then 0 - quan else 0 end "
     "* 1000000,0) as bigint),"
     "case when type = 0 or type = 1 or type = 2 then quan else 0 end,case when type = 3 then quan else 0 "
     "end,"
     "case when type = 1 then N'ايصال استلام نقدية رقم : ' when type = 0 then N' شيك رقم ' "
     "when type = 2 then N'اشعار خصم برقم ' else N'اشعار اضافة رقم ' end + isnull(chkno,''),"
     "pay_id,quan,type,stcode,4,chkno,note "
     "from vencuspay where vencuspay.vcode=",
     " And vencuspay.ptype = 2 AND (vencuspay.date>=", " AND vencuspay.date<=",
     ") and (ztype = 2 or ztype = 3);"},
    {"insert into tmp_acc ([date],ser,am1,am2,note1,f1,f2,f3,f4,f6,f7,note2) select [date],"
     "cast(round(case when type = 3 then 0 - quan when type = 0 or type = 1 or type = 2 then quan else 0 end "
     "* 1000000,0) as bigint),"
     "case when type = 3 then quan else 0 end,case when type = 0 or type = 1 or type = 2 then quan else 0 "
     "end,"
     "case when type = 1 then N'ايصال دفع رقم ' when type = 0 then N' شيك رقم ' "
     "when type = 2 then N'مدفوعات :اشعار خصم برقم ' else N'اضافة :  رقم ' end + isnull(chkno,''),"
     "pay_id,quan,type,stcode,3,chkno,note "
     "from vencuspay where vencuspay.vcode=",
     " And vencuspay.ptype = 1 AND (vencuspay.date>=", " AND vencuspay.date<=",
     ") and (ztype = 2 or ztype = 3);"},
};

void gather_movements(database::Connection& connection, const StatementFields& fields) {
    connection.execute("delete  from tmp_acc");
    for (const Gathering& gathering : gatherings) {
        connection.execute(Sql(gathering.insert) + *fields.customer + gathering.from + quoted(fields.start) +
                           gathering.to + quoted(fields.end) + gathering.tail);
    }
}

constexpr common::FormField<StatementFields> statement_fields[] = {
    // customer, from date, to date
    {&StatementFields::customer, {"statement_customer", "ال&عميل", FieldKind::choice, {0, 0}}},
    {&StatementFields::start, {"statement_start", "&من تاريخ", FieldKind::date, {0, 1}}},
    {&StatementFields::end, {"statement_end", "إ&لى تاريخ", FieldKind::date, {0, 2}}},
};

StatementRow balance_row(Amount balance, const common::Date& date) {
    return {"", {}, {}, balance, std::string(message::balance_on) + common::date_text(date), ""};
}

}  // namespace

common::FormTable<StatementFields> statement_form() {
    return statement_fields;
}

std::array<std::string, 6> StatementRow::cells() const {
    return {date, credit.text(), debit.text(), balance.text(), description, notes};
}

void AccountStatement::open() {
    customers_ =
        database::choices(connection_.query("select * from custdata order by ccode"), "ccode", "cname");
    fields.customer.reset();
    fields.end = services_.clock.now().date;
    fields.start = {fields.end.year, fields.end.month, 1};
    rows_.clear();
    shown_customer_ = 0;
    brought_forward_ = closing_ = debits_ = credits_ = {};
}

std::string AccountStatement::customer_name() const {
    return name_of(customers_, shown_customer_);
}

std::optional<Refusal> AccountStatement::check() {
    if (!fields.customer) return Refusal("statement_customer", message::enter_customer);
    if (fields.end < fields.start) return Refusal("statement_start", message::end_before_start);
    if (connection_.query(Sql("select ccode from custdata where ccode = ") + *fields.customer).empty())
        return Refusal("statement_customer", common::message::no_such_customer);
    return std::nullopt;
}

std::optional<Refusal> AccountStatement::show() {
    if (auto refused = check()) return refused;
    shown_customer_ = *fields.customer;
    const auto net_from = database::net_from(connection_);
    Millionths balance = sum_account(connection_, shown_customer_, fields.start, SumsUpTo::before_date,
                                     VoucherAmount::whole, net_from);
    brought_forward_ = shown(balance);
    gather_movements(connection_, fields);
    connection_.make_durable();

    rows_.clear();
    rows_.push_back(balance_row(brought_forward_, fields.start));
    Millionths debits = 0;
    Millionths credits = 0;
    const auto add = [&](const database::Row& row, Millionths amount, bool is_credit, std::string_view text,
                         std::string_view notes) {
        balance += amount;
        (is_credit ? credits : debits) += is_credit ? -amount : amount;
        rows_.push_back({common::date_text(row.moment("date").date), shown(is_credit ? -amount : 0),
                         shown(is_credit ? 0 : amount), shown(balance), std::string(text),
                         std::string(notes)});
    };
    for (const auto& row : connection_.query("select * from tmp_acc order by date")) {
        const bool is_credit = row.number("am1") != 0;
        const Millionths amount = row.integer("ser");
        add(row, amount, is_credit, row.text("note1"), row.text("note2"));
        const Millionths discount = common::parse_integer(row.text("f5")).value_or(0);
        if (discount == 0 || !net_from || row.moment("date").date < *net_from) continue;
        add(row, is_credit ? discount : -discount, !is_credit, message::discount, row.text("note1"));
    }
    debits_ = shown(debits);
    credits_ = shown(credits);
    closing_ = shown(balance);
    rows_.push_back(balance_row(closing_, fields.end));
    return std::nullopt;
}

std::optional<Refusal> AccountStatement::check_arrears() {
    if (auto refused = check()) return refused;
    // Counts the part of each voucher that is due, not its whole amount; the opening balance is due at once.
    const Amount arrears = shown(sum_account(connection_, *fields.customer, fields.end, SumsUpTo::and_on_date,
                                             VoucherAmount::due, database::net_from(connection_)));
    if (arrears > Amount()) {
        services_.prompts.message(std::string(message::arrears_of) + arrears.text(),
                                  common::Icon::exclamation);
    } else {
        services_.prompts.message(message::no_arrears, common::Icon::information);
    }
    return std::nullopt;
}

}  // namespace accounts
