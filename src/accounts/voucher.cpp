#include "accounts/voucher.h"

#include "accounts/messages.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::Amount;
using common::Refusal;
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
    party_kind_ = kind_ == VoucherKind::receipt ? PartyKind::customer : PartyKind::vendor;
    load_lists();
    fields = {};
    fields.date = fields.cheque_date = services_.clock.now().date;
    fields.number = propose_number(connection_, kind_);
    second_changed_ = false;
    method = Method::cash;
    choose_store(session_.store_code);
    if (contains(drawers_, session_.cash_point)) fields.drawer = session_.cash_point;
}

std::optional<Refusal> Voucher::open_edit(const VoucherKey& key) {
    const auto found = find_voucher(connection_, kind_, key);
    if (!found) return Refusal("", message::no_such_voucher);
    const database::Row& row = found->row;
    party_kind_ = key.party_kind;
    load_lists();
    // A direct receipt may be from any kind of customer, so the party may be missing from the list of this
    // kind.
    if (!contains(parties_, key.party)) {
        if (const auto party = find_party(connection_, party_kind_, key.party))
            parties_.push_back({key.party, party->name});
    }
    choose_store(row.integer("stcode"));
    database::load(voucher_form(), row, fields);
    fields.party = key.party;
    for (auto* code : {&fields.representative, &fields.drawer, &fields.bank}) {
        if (*code == 0) code->reset();
    }
    if (row.null("tdate")) fields.cheque_date = fields.date;
    method = method_of(row);
    second_changed_ = fields.second_amount != fields.amount;
    opened_ = key_of(row);
    seen_ = row.cells();
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

// Checks the fields first, then the rows that they refer to.
std::optional<Refusal> Voucher::check() {
    fields.note = common::left(fields.note, note_length);
    const database::TextLimits limits(connection_, "vencuspay");
    if (auto refused = database::check(voucher_form(), fields, limits)) return refused;
    if (common::read_amount(fields.amount).value.is_zero())
        return Refusal("voucher_amount", common::message::enter_value);
    if (auto refused = check_number()) return refused;
    if (auto refused = check_place()) return refused;
    if (!fields.party) return Refusal("voucher_party", message::choose_party);
    if (!find_party(connection_, party_kind_, *fields.party))
        return Refusal("voucher_party", message::no_such_party);
    return std::nullopt;
}

std::optional<Refusal> Voucher::check_number() {
    fields.number = common::western_digits(common::trim(fields.number));
    if (fields.number.empty()) return Refusal("voucher_number", message::enter_number);
    if (is_editing() || !is_duplicate(connection_, kind_, fields.number)) return std::nullopt;
    fields.number.clear();
    return Refusal("voucher_number", message::duplicate_voucher);
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
    VoucherSaving saving(connection_, session_, services_);
    if (saving.settle_earlier()) return Refusal("", message::look_at_vouchers);
    if (auto refused = check()) return refused;
    const VoucherRecord record{kind_, party_kind_, method, fields, services_.clock.now()};
    const auto saved = opened_ ? saving.rewrite(record, *opened_, seen_) : saving.add(record);
    if (!saved) return Refusal("", message::voucher_changed);
    if (saved->outcome != SavedVoucher::Outcome::saved) return why_not_saved(*saved);
    // From here on the voucher is an edited one, so that saving again does not write it twice.
    opened_ = saved->key;
    seen_.clear();
    set_printed(record, saved->balance);
    remember_cells();
    return std::nullopt;
}

// If this fails, the next save compares nothing; the voucher itself is saved.
void Voucher::remember_cells() {
    try {
        if (const auto written = find_voucher(connection_, kind_, *opened_)) seen_ = written->row.cells();
    } catch (const database::Error&) {
    }
}

void Voucher::set_printed(const VoucherRecord& record, Amount balance) {
    PrintedVoucher paper = printed_voucher(record, name_of(parties_, record.fields.party.value()), balance);
    if (method == Method::cash) paper.place = name_of(drawers_, fields.drawer.value_or(0));
    if (method == Method::cheque) paper.place = name_of(banks_, fields.bank.value_or(0));
    paper.note = fields.note;
    printed_ = std::move(paper);
}

}  // namespace accounts
