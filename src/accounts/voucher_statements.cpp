#include "accounts/voucher_statements.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/spelled_amount.h"
#include "database/recordset.h"

namespace accounts {

using database::Null;
using database::quoted;
using database::Recordset;
using database::Sql;
using database::Value;

Ledger ledger_of(PartyKind kind) {
    return kind == PartyKind::vendor ? Ledger::vendors : Ledger::customers;
}

Sql parties_statement(PartyKind kind) {
    switch (kind) {
        case PartyKind::vendor:
            return Sql(" select vcode as x1,vname as x2 from vendata");
        case PartyKind::customer:
            return Sql(
                "select ccode as x1,cname as x2 from custdata where isnull(ctype,0) = 0 order by ccode");
        default:
            return Sql("select ccode as x1,cname as x2 from custdata where ctype = 1 order by ccode");
    }
}

namespace {

// A number such as "-" or "1,5" is numeric to the server and still no real to it: then the numbers are read
// here.
double highest_read_here(database::Connection& connection, VoucherKind kind) {
    double highest = 0;
    for (const auto& row : connection.query(Sql("select chkno from vencuspay where type <> 0 and ptype = ") +
                                            static_cast<int>(kind)))
        highest = std::max(highest, common::numeric_value(row.text("chkno")));
    return highest;
}

}  // namespace

std::string propose_number(database::Connection& connection, VoucherKind kind) {
    const Sql statement =
        kind == VoucherKind::receipt
            ? Sql("select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  "
                  "cast(chkno as "
                  "real) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = 2")
            : Sql("select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  "
                  "convert(real,chkno) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = "
                  "1");
    // A real tells whole numbers apart up to here: above, the next number could be one that is taken.
    constexpr double exact_reals = 16'777'216;
    double highest = 0;
    try {
        highest = database::number_of(connection.scalar(statement));
        if (highest >= exact_reals) highest = highest_read_here(connection, kind);
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        highest = highest_read_here(connection, kind);
    }
    return common::shortest_text(highest + 1);
}

bool is_duplicate(database::Connection& connection, VoucherKind kind, std::string_view number) {
    const Sql statement = kind == VoucherKind::receipt
                              ? Sql("SELECT vencuspay.chkno, vencuspay.vcode, custdata.mname FROM vencuspay "
                                    "INNER JOIN custdata ON "
                                    "vencuspay.vcode = custdata.ccode WHERE (vencuspay.chkno = ") +
                                    quoted(number) + ") AND (vencuspay.ptype = 2)"
                              : Sql("SELECT vencuspay.chkno FROM vencuspay INNER JOIN vendata ON "
                                    "vencuspay.vcode = vendata.vcode "
                                    "WHERE (vencuspay.chkno = ") +
                                    quoted(number) + ")and vencuspay.ptype = 1";
    return !connection.query(statement).empty();
}

Sql find_statement(VoucherKind kind, const VoucherKey& key) {
    const Sql party = Sql("select * from vencuspay where vcode = ") + key.party;
    const int party_kind = static_cast<int>(key.party_kind);
    if (kind == VoucherKind::receipt) {
        return party + " and ptype = 2 and [date] = " + quoted(key.date) + " and quan = " + key.amount +
               " and chkno = " + quoted(key.number) + " and ztype = " + party_kind;
    }
    return party + " and date = " + quoted(key.date) + " and quan  = " + key.amount +
           " and ptype = 1 and chkno = " + quoted(key.number) + " and ztype = " + party_kind;
}

namespace {

void set_columns(Recordset& voucher, const VoucherRow& row) {
    const auto code = [](const std::optional<std::int64_t>& value) {
        return value ? Value(*value) : Value(Null{});
    };
    voucher.set("time_", Value(row.written_at));
    voucher.set("vcode", row.key.party);
    voucher.set("Date", row.key.date);
    voucher.set("Type", static_cast<int>(row.method));
    voucher.set("quan", row.key.amount);
    voucher.set("dis", row.discount);
    voucher.set("ptype", static_cast<int>(row.kind));
    voucher.set("ztype", static_cast<int>(row.key.party_kind));
    voucher.set("link", code(row.representative));
    voucher.set("quan1", row.second_amount);
    voucher.set("note", row.note);
    voucher.set("chkno", row.key.number);
    voucher.set("stcode", row.store);
    // An edited voucher may have changed from one method to the other: what belonged to the former goes.
    const bool in_cash = row.method == Method::cash;
    const bool by_cheque = row.method == Method::cheque;
    voucher.set("cash_n", in_cash ? code(row.drawer) : Value(Null{}));
    voucher.set("tdate", by_cheque ? Value(common::Moment{row.cheque_date, {}}) : Value(Null{}));
    voucher.set("bcode", by_cheque ? code(row.bank) : Value(Null{}));
    voucher.set("chowner", by_cheque ? Value(row.cheque_owner) : Value(Null{}));
    voucher.set("ctype", by_cheque ? Value(std::int64_t{0}) : Value(Null{}));
    voucher.set("chk", by_cheque ? Value(std::int64_t{0}) : Value(Null{}));
}

}  // namespace

void add_voucher(database::Connection& connection, const VoucherRow& row) {
    const std::int64_t internal =
        database::integer_of(connection.scalar("select max(pay_id) as last_c from vencuspay ")) + 1;
    Recordset voucher(connection, "select * from vencuspay");
    voucher.add();
    set_columns(voucher, row);
    voucher.set("pay_id", internal);
    voucher.update();
}

bool rewrite_voucher(database::Connection& connection, const VoucherRow& row, const VoucherKey& former,
                     const std::vector<Value>& seen) {
    const Sql statement = find_statement(row.kind, former);
    const auto now = connection.query(statement);
    if (now.empty() || (!seen.empty() && now.front().cells() != seen)) return false;
    Recordset voucher(connection, statement);
    if (voucher.empty()) return false;
    set_columns(voucher, row);
    try {
        voucher.update();
    } catch (const database::Error& error) {
        if (error.sqlstate() == "40001") return false;
        throw;
    }
    return true;
}

std::string printed_title(VoucherKind kind, Method method) {
    if (method == Method::discount_notice || method == Method::addition_notice) return method_name(method);
    if (method == Method::cheque) return kind == VoucherKind::receipt ? "ايصال استلام شيك" : "ايصال دفع شيك";
    return kind == VoucherKind::receipt ? "ايصال استلام نقدية" : "ايصال دفع نقدية";
}

std::string method_name(Method method) {
    switch (method) {
        case Method::cash:
            return "نقدي";
        case Method::cheque:
            return "شيك";
        case Method::discount_notice:
            return "اشعار خصم";
        default:
            return "اشعار اضافة";
    }
}

std::string words_of(double amount) {
    return common::spell_amount(amount);
}

std::vector<VoucherEntry> list_vouchers(database::Connection& connection, VoucherKind kind,
                                        const common::Date& from, const common::Date& to) {
    std::vector<VoucherEntry> list;
    for (
        const auto& row : connection.query(
            Sql("select vencuspay.chkno, vencuspay.ztype, vencuspay.vcode, vencuspay.[date], vencuspay.quan, "
                "vencuspay.[type], custdata.cname, vendata.vname from vencuspay LEFT OUTER JOIN custdata ON "
                "vencuspay.vcode = custdata.ccode LEFT OUTER JOIN vendata ON vencuspay.vcode = vendata.vcode "
                "where vencuspay.ptype = ") +
            static_cast<int>(kind) + " and vencuspay.[date] >= " + quoted(from) +
            " and vencuspay.[date] <= " + quoted(to) + " order by vencuspay.pay_id")) {
        VoucherEntry entry;
        entry.key.party_kind = static_cast<PartyKind>(row.integer("ztype"));
        entry.key.party = row.integer("vcode");
        entry.key.date = row.moment("date").date;
        entry.key.amount = row.number("quan");
        entry.key.number = row.text("chkno");
        entry.method = static_cast<Method>(row.integer("type"));
        entry.party_name = row.text(entry.key.party_kind == PartyKind::vendor ? "vname" : "cname");
        list.push_back(std::move(entry));
    }
    return list;
}

}  // namespace accounts
