#include "accounts/voucher.h"

#include <stdexcept>

#include "accounts/messages.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::Amount;
using common::FieldKind;
using common::Refusal;
using database::quoted;
using database::Sql;

namespace {

std::vector<common::Choice> load_banks(database::Connection& connection) {
    return database::choices(connection.query("select * from bankdata"), "bcode", "bname");
}

}  // namespace

std::string_view Voucher::title() const {
    if (kind_ == VoucherKind::receipt) return is_editing() ? "تعديل مقبوضات" : "اضافة مقبوضات";
    return is_editing() ? "تعديل مدفوعات" : "اضافة مدفوعات";
}

void Voucher::load_lists() {
    representatives_ =
        database::choices(connection_.query("select * from link order by ccode"), "ccode", "cname");
    stores_ = database::load_stores(connection_);
    banks_ = load_banks(connection_);
    parties_ = load_parties(connection_, party_kind_);
}

void Voucher::open_new() {
    opened_.reset();
    seen_.clear();
    unmoved_ = {};
    party_kind_ = kind_ == VoucherKind::receipt ? PartyKind::customer : PartyKind::vendor;
    load_lists();
    fields = {};
    fields.date = fields.cheque_date = clock_.now().date;
    fields.number = propose_number(connection_, kind_);
    second_changed_ = false;
    method = Method::cash;
    choose_store(session_.store_code);
    if (contains(drawers_, session_.cash_point)) fields.drawer = session_.cash_point;
}

std::optional<Refusal> Voucher::open_edit(const VoucherKey& key) {
    const auto found = connection_.query(find_statement(kind_, key));
    if (found.empty()) return Refusal("", message::no_such_voucher);
    const database::Row& row = found.front();
    party_kind_ = key.party_kind;
    load_lists();
    choose_store(row.integer("stcode"));
    database::load(voucher_form(), row, fields);
    fields.party = key.party;
    for (auto* code : {&fields.representative, &fields.drawer, &fields.bank}) {
        if (*code == 0) code->reset();
    }
    if (row.null("tdate")) fields.cheque_date = fields.date;
    method = static_cast<Method>(row.integer("Type"));
    second_changed_ = fields.second_amount != fields.amount;
    opened_ = key;
    seen_ = row.cells();
    unmoved_ = {};
    return std::nullopt;
}

void Voucher::choose_party_kind(PartyKind kind) {
    if (is_editing()) return;
    party_kind_ = kind;
    fields.party.reset();
    parties_ = load_parties(connection_, party_kind_);
}

void Voucher::choose_party(std::optional<std::int64_t> party) {
    if (is_editing()) return;
    fields.party = party;
    fields.representative.reset();
    if (!party || party_kind_ == PartyKind::vendor) return;
    const auto customer = connection_.query(Sql("select * from custdata where ccode = ") + *party);
    if (customer.empty() || customer.front().null("link")) return;
    const std::int64_t code = customer.front().integer("link");
    if (!connection_.query(Sql("select * from link where ccode =") + code).empty())
        fields.representative = code;
}

void Voucher::choose_store(std::optional<std::int64_t> store) {
    fields.store = store;
    fields.drawer.reset();
    drawers_ = database::load_drawers(connection_, store.value_or(0));
}

void Voucher::set_amount(std::string text) {
    fields.amount = std::move(text);
    if (!second_changed_) fields.second_amount = fields.amount;
}

void Voucher::set_second_amount(std::string text) {
    fields.second_amount = std::move(text);
    second_changed_ = fields.second_amount != fields.amount;
}

double Voucher::party_balance() {
    if (!fields.party) return 0;
    const auto party = find_party(connection_, party_kind_, *fields.party);
    return party ? party->balance : 0;
}

// The fields by themselves first, then the rows they name.
std::optional<Refusal> Voucher::check() {
    fields.note = common::left(fields.note, note_length);
    const database::TextLimits limits(connection_, "vencuspay");
    if (auto refused = database::check(voucher_form(), fields, limits)) return refused;
    if (common::read_amount(fields.amount).value.is_zero())
        return Refusal("voucher_amount", common::message::enter_value);
    const std::string_view number = common::trim(fields.number);
    if (number.empty()) return Refusal("voucher_number", message::enter_number);
    if (!is_editing() && is_duplicate(connection_, kind_, number)) {
        fields.number.clear();
        return Refusal("voucher_number", message::duplicate_voucher);
    }
    if (auto refused = check_place()) return refused;
    if (!fields.party) return Refusal("voucher_party", message::choose_party);
    if (!find_party(connection_, party_kind_, *fields.party))
        return Refusal("voucher_party", message::no_such_party);
    return std::nullopt;
}

// The drawer of cash and the bank of a cheque; another program may have deleted them since.
std::optional<Refusal> Voucher::check_place() {
    if (method == Method::cash) {
        if (!fields.drawer) return Refusal("voucher_drawer", common::message::enter_drawer);
        if (!contains(database::load_drawers(connection_, fields.store.value_or(0)), *fields.drawer))
            return Refusal("voucher_drawer", common::message::no_such_drawer);
    } else if (method == Method::cheque) {
        if (!fields.bank) return Refusal("voucher_bank", message::enter_bank);
        if (!contains(load_banks(connection_), *fields.bank))
            return Refusal("voucher_bank", common::message::no_such_bank);
    }
    return std::nullopt;
}

std::optional<Refusal> Voucher::save() {
    printed_.reset();
    if (auto refused = check()) return refused;
    const VoucherRecord record{kind_, party_kind_, method, fields, clock_.now()};
    const VoucherKey key = record.key();
    const Amount before(opened_ ? opened_->amount : 0);
    if (opened_) {
        if (!rewrite_voucher(connection_, record, *opened_, seen_))
            return Refusal("", message::voucher_changed);
    } else {
        add_voucher(connection_, record);
    }
    // From here on the voucher is an edited one, so that saving again does not write it twice; and if an
    // error keeps the balance from moving, the next save moves it.
    opened_ = key;
    seen_.clear();

    unmoved_ += effect_on_balance(kind_, party_kind_, method, Amount(key.amount) - before);
    const Amount balance = move_balance(connection_, party_kind_, key.party, unmoved_);
    unmoved_ = {};
    connection_.make_durable();
    set_printed(key, balance);

    const auto written = connection_.query(find_statement(kind_, key));
    if (!written.empty()) seen_ = written.front().cells();
    return std::nullopt;
}

void Voucher::set_printed(const VoucherKey& key, Amount balance) {
    const auto party = find_party(connection_, party_kind_, key.party);
    PrintedVoucher paper = printed_voucher(kind_, method, key, party ? party->name : "", balance);
    if (method == Method::cash) paper.place = name_of(drawers_, fields.drawer.value_or(0));
    if (method == Method::cheque) paper.place = name_of(banks_, fields.bank.value_or(0));
    paper.note = fields.note;
    printed_ = std::move(paper);
}

namespace {

// Above this, a double no longer holds every whole number.
constexpr double most_countable = 9e15;

// The highest number of the customer's receipts plus 1. Numbers are texts, and "9" is above "10", so used
// numbers are skipped.
std::string next_number(database::Connection& connection, std::int64_t customer) {
    const auto highest = connection.scalar(
        Sql("select max(chkno) as last_ from vencuspay where ztype = 2 and ptype = 2 and vcode=") + customer);
    double number = common::numeric_value(database::text_of(highest)) + 1;
    if (number > most_countable) number = 1;
    for (;; ++number) {
        const std::string text = common::shortest_text(number);
        const auto taken =
            connection.query(Sql("select chkno from vencuspay where ztype = 2 and ptype = 2 and vcode=") +
                             customer + " and chkno = " + quoted(text));
        if (taken.empty()) return text;
    }
}

template <typename Action>
auto tried_twice(const Action& action) {
    try {
        return action();
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        return action();
    }
}

constexpr common::FormField<DirectReceiptFields> direct_fields[] = {
    // customer
    {&DirectReceiptFields::customer,
     {"direct_customer", "ال&عميل", FieldKind::choice, {0, 0, 2}, "", message::enter_customer}},
    // balance before, balance after
    {{}, {"direct_balance", "الرصيد قبل", FieldKind::figure, {1, 0}}},
    {{}, {"direct_after", "الرصيد بعد", FieldKind::figure, {1, 1}}},
    // amount received
    {&DirectReceiptFields::amount, {"direct_amount", "الم&بلغ المقبوض", FieldKind::amount, {2, 0, 2}}},
};

}  // namespace

common::FormTable<DirectReceiptFields> direct_receipt_form() {
    return direct_fields;
}

std::optional<common::Refusal> check_direct_receipt(database::Connection& connection,
                                                    const DirectReceiptFields& fields) {
    const database::TextLimits limits(connection, "vencuspay");
    if (auto refused = database::check(direct_receipt_form(), fields, limits)) return refused;
    if (common::read_amount(fields.amount).value.is_zero())
        return common::Refusal("direct_amount", common::message::enter_value);
    if (!find_party(connection, PartyKind::customer, *fields.customer))
        return common::Refusal("direct_customer", common::message::no_such_customer);
    return std::nullopt;
}

PrintedVoucher write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                    common::Clock& clock, std::int64_t customer, const common::Date& date,
                                    common::Amount amount) {
    if (amount <= common::Amount()) throw std::invalid_argument("a receipt of nothing");
    const auto party = find_party(connection, PartyKind::customer, customer);
    if (!party) throw std::invalid_argument("a receipt of a customer without a row");

    const VoucherKey key{PartyKind::customer, customer, date, amount.value(),
                         next_number(connection, customer)};
    database::Recordset voucher(connection, "select * from vencuspay");
    voucher.add();
    voucher.set("vcode", customer);
    voucher.set("Date", date);
    voucher.set("Type", static_cast<int>(Method::cash));
    voucher.set("quan", amount.value());
    voucher.set("dis", 0);
    voucher.set("quan1", amount.value());
    voucher.set("note", "قبض مباشر من الكاشير");  // direct receipt by the cashier
    voucher.set("ztype", static_cast<int>(PartyKind::customer));
    voucher.set("ptype", static_cast<int>(VoucherKind::receipt));
    voucher.set("stcode", session.store_code);
    voucher.set("cash_n", session.cash_point);
    voucher.set("chkno", key.number);
    voucher.set("time_", database::Value(clock.now()));
    voucher.update();
    // The money is in the drawer and the voucher is written. A passing error must not make the cashier write
    // it once more, so what follows is tried again first.
    const common::Amount effect =
        effect_on_balance(VoucherKind::receipt, PartyKind::customer, Method::cash, amount);
    const common::Amount balance =
        tried_twice([&] { return move_balance(connection, PartyKind::customer, customer, effect); });
    tried_twice([&] { connection.make_durable(); });
    PrintedVoucher paper = printed_voucher(VoucherKind::receipt, Method::cash, key, party->name, balance);
    paper.place = session.drawer_name;
    return paper;
}

}  // namespace accounts
