#include "accounts/voucher_records.h"

#include <algorithm>
#include <set>

#include "accounts/messages.h"
#include "common/amount_in_words.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::FieldKind;
using common::FieldOption;
using common::FormField;
using database::Null;
using database::quoted;
using database::Recordset;
using database::Sql;
using database::Value;

namespace {

using Fields = VoucherFields;

// customers, customers of the second kind, vendors
constexpr FieldOption party_kinds[] = {{static_cast<int>(PartyKind::customer), "عملاء"},
                                       {static_cast<int>(PartyKind::second_customer), "عملاء نوع ثان"},
                                       {static_cast<int>(PartyKind::vendor), "موردون"}};
// cash, cheque
constexpr FieldOption methods[] = {{static_cast<int>(Method::cash), "نقدي"},
                                   {static_cast<int>(Method::cheque), "شيك"}};

// The columns of party and store are set by the statements below, because choosing one reloads lists.
constexpr FormField<Fields> voucher_fields[] = {
    // kind of party
    {{}, {"voucher_party_kind", "نوع الطرف", FieldKind::options, {0, 0}, "", "", "", 0, party_kinds}},
    // voucher number, date
    {&Fields::number, {"voucher_number", "&رقم الإيصال", FieldKind::digits, {0, 1}, "chkno", "", "", 100}},
    {&Fields::date, {"voucher_date", "ال&تاريخ", FieldKind::date, {0, 2}, "Date"}},
    // name of the party, its balance now
    {{}, {"voucher_party", "ا&سم الطرف", FieldKind::choice, {1, 0, 2}}},
    {{}, {"voucher_balance", "الرصيد الحالي", FieldKind::figure, {1, 2}}},
    // amount, discount (does not change the balance), the part due already
    {&Fields::amount, {"voucher_amount", "ال&قيمة", FieldKind::amount, {2, 0}, "quan"}},
    {&Fields::discount, {"voucher_discount", "ال&خصم (لا يغير الرصيد)", FieldKind::amount, {2, 1}, "dis"}},
    {&Fields::second_amount, {"voucher_second_amount", "المستحق &منها", FieldKind::amount, {2, 2}, "quan1"}},
    // method of payment, branch, drawer
    {{}, {"voucher_method", "طريقة الدفع", FieldKind::options, {3, 0}, "", "", "", 0, methods}},
    {{}, {"voucher_notice", "طريقة الدفع", FieldKind::figure, {3, 0}}},  // of a notice
    {{}, {"voucher_store", "ال&فرع", FieldKind::choice, {3, 1}}},
    {&Fields::drawer, {"voucher_drawer", "الخ&زينة", FieldKind::choice, {3, 2}, "cash_n"}},
    // bank, date and owner of the cheque
    {&Fields::bank, {"voucher_bank", "ال&بنك", FieldKind::choice, {4, 0}, "bcode"}},
    {&Fields::cheque_date, {"voucher_cheque_date", "تاريخ الشيك", FieldKind::date, {4, 1}, "tdate"}},
    {&Fields::cheque_owner, {"voucher_cheque_owner", "صاحب الشيك", FieldKind::text, {4, 2}, "chowner"}},
    // representative, notes
    {&Fields::representative, {"voucher_representative", "المن&دوب", FieldKind::choice, {5, 0}, "link"}},
    {&Fields::note, {"voucher_note", "م&لاحظات", FieldKind::text, {5, 1, 2}, "note", "", "", note_length}},
};

constexpr FormField<VoucherPeriod> period_fields[] = {
    // from date, to date
    {&VoucherPeriod::from, {"vouchers_from", "&من تاريخ", FieldKind::date, {0, 0}}},
    {&VoucherPeriod::to, {"vouchers_to", "إ&لى تاريخ", FieldKind::date, {0, 1}}},
};

}  // namespace

common::FormTable<VoucherFields> voucher_form() {
    return voucher_fields;
}

common::FormTable<VoucherPeriod> voucher_period_form() {
    return period_fields;
}

VoucherKey VoucherRecord::key() const {
    return {party_kind, fields.party.value_or(0), fields.date, common::read_amount(fields.amount).value,
            common::western_digits(common::trim(fields.number))};
}

Method method_of(const database::Row& voucher) {
    return voucher.null("Type") ? Method::cash : static_cast<Method>(voucher.integer("Type"));
}

VoucherKey key_of(const database::Row& voucher) {
    return {static_cast<PartyKind>(voucher.integer("ztype")),
            voucher.integer("vcode"),
            voucher.moment("date").date,
            common::Amount(voucher.number("quan")),
            voucher.text("chkno"),
            voucher.integer("pay_id")};
}

namespace {

// Above this a double no longer holds every whole number.
constexpr double most_countable = 9e15;

// The first number from `number` on that no voucher selected by the condition uses.
std::string first_free(database::Connection& connection, const Sql& condition, double number) {
    if (!(number >= 1 && number < most_countable)) number = 1;
    std::string text = common::shortest_text(number);
    if (connection
            .query(Sql("select chkno from vencuspay where ") + condition + " and chkno = " + quoted(text))
            .empty())
        return text;
    std::set<double> taken;
    for (const auto& row : connection.query(Sql("select chkno from vencuspay where ") + condition))
        taken.insert(common::numeric_value(row.text("chkno")));
    while (taken.contains(number))
        ++number;
    return common::shortest_text(number);
}

// The server takes a text such as "-" or "1,5" for numeric and then fails to convert it; in that case the
// numbers are read here.
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
    // Above this a real no longer tells whole numbers apart, and the next number could be a used one.
    constexpr double exact_reals = 16'777'216;
    double highest = 0;
    try {
        highest = database::number_of(connection.scalar(statement));
        if (highest >= exact_reals) highest = highest_read_here(connection, kind);
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        highest = highest_read_here(connection, kind);
    }
    return first_free(connection, Sql("ptype = ") + static_cast<int>(kind), highest + 1);
}

std::string propose_direct_number(database::Connection& connection, std::int64_t customer) {
    const Sql condition = Sql("ztype = 2 and ptype = 2 and vcode=") + customer;
    const auto highest =
        connection.scalar(Sql("select max(chkno) as last_ from vencuspay where ") + condition);
    // Numbers are texts, and "9" is above "10".
    return first_free(connection, condition, common::numeric_value(database::text_of(highest)) + 1);
}

std::int64_t next_voucher_id(database::Connection& connection) {
    return database::integer_of(connection.scalar("select max(pay_id) as last_c from vencuspay ")) + 1;
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

std::optional<FoundVoucher> find_voucher(database::Connection& connection, VoucherKind kind,
                                         const VoucherKey& key) {
    const Sql spelled = find_statement(kind, key);
    for (const auto& row : connection.query(spelled)) {
        if (key.id == 0 || row.integer("pay_id") == key.id) return FoundVoucher{spelled, row};
    }
    if (key.id == 0) return std::nullopt;
    // Find it by its number: another till may have changed the amount since, and other programs write more
    // decimals.
    const Sql by_id = Sql("select * from vencuspay where pay_id = ") + key.id +
                      " and ptype = " + static_cast<int>(kind) + " and vcode = " + key.party +
                      " and ztype = " + static_cast<int>(key.party_kind);
    const auto found = connection.query(by_id);
    return found.empty() ? std::nullopt : std::optional(FoundVoucher{by_id, found.front()});
}

void move_to(Recordset& rows, const VoucherKey& key) {
    rows.move_first();
    while (key.id != 0 && !rows.at_end() && rows.integer("pay_id") != key.id)
        rows.move_next();
    if (rows.at_end()) throw database::Error("40001", "the voucher is gone", "vencuspay");
}

void set_columns(Recordset& row, const VoucherRecord& record, std::optional<Method> former) {
    const VoucherFields& fields = record.fields;
    row.set("time_", Value(record.written_at));
    row.set("vcode", fields.party.value());
    row.set("Type", static_cast<int>(record.method));
    row.set("ptype", static_cast<int>(record.kind));
    row.set("ztype", static_cast<int>(record.party_kind));
    database::store(voucher_form(), fields, row);
    row.set("chkno", record.key().number);
    row.set("stcode", fields.store.value_or(0));
    if (record.method != Method::cash) row.set("cash_n", Null{});
    const bool is_cheque = record.method == Method::cheque;
    // Other programs change the flags of a cheque, so an edit keeps them.
    if (!is_cheque || former != Method::cheque) {
        for (const char* column : {"ctype", "chk"})
            row.set(column, is_cheque ? Value(std::int64_t{0}) : Value(Null{}));
    }
    // The method of an edited voucher may have changed, so the columns of the former method are emptied.
    if (is_cheque) return;
    for (const char* column : {"tdate", "bcode", "chowner"})
        row.set(column, Null{});
}

std::string voucher_title(VoucherKind kind, Method method) {
    if (method == Method::discount_notice || method == Method::addition_notice) return method_name(method);
    if (method == Method::cheque) return kind == VoucherKind::receipt ? "إيصال استلام شيك" : "إيصال دفع شيك";
    return kind == VoucherKind::receipt ? "إيصال استلام نقدية" : "إيصال دفع نقدية";
}

PrintedVoucher printed_voucher(const VoucherRecord& record, const std::string& party_name,
                               common::Amount balance) {
    const VoucherKey key = record.key();
    PrintedVoucher paper;
    paper.title = voucher_title(record.kind, record.method);
    paper.number = key.number;
    paper.date = key.date;
    paper.party = party_name;
    paper.amount = key.amount;
    paper.discount = common::read_amount(record.fields.discount).value;
    paper.words = common::spell_amount(key.amount.value());
    paper.method = method_name(record.method);
    paper.balance_before =
        balance - effect_on_balance(record.kind, record.party_kind, record.method, paper.amount);
    paper.balance_after = balance;
    return paper;
}

std::string method_name(Method method) {
    switch (method) {
        case Method::cash:
            return "نقدي";
        case Method::cheque:
            return "شيك";
        case Method::discount_notice:
            return "إشعار خصم";
        default:
            return "إشعار إضافة";
    }
}

std::vector<VoucherEntry> list_vouchers(database::Connection& connection, VoucherKind kind,
                                        const VoucherPeriod& period) {
    Sql statement(
        "select vencuspay.chkno, vencuspay.ztype, vencuspay.vcode, vencuspay.[date], vencuspay.quan, "
        "vencuspay.[type], vencuspay.pay_id, custdata.cname, vendata.vname from vencuspay LEFT OUTER JOIN "
        "custdata ON vencuspay.vcode = custdata.ccode LEFT OUTER JOIN vendata ON vencuspay.vcode = "
        "vendata.vcode where vencuspay.ptype = ");
    statement += static_cast<int>(kind);
    statement += Sql(" and vencuspay.[date] >= ") + quoted(period.from) +
                 " and vencuspay.[date] <= " + quoted(period.to) + " order by vencuspay.pay_id";
    std::vector<VoucherEntry> list;
    for (const auto& row : connection.query(statement)) {
        VoucherEntry entry{key_of(row), "", method_of(row)};
        entry.party_name = row.text(entry.key.party_kind == PartyKind::vendor ? "vname" : "cname");
        list.push_back(std::move(entry));
    }
    return list;
}

}  // namespace accounts
