#include "accounts/voucher.h"

#include "accounts/messages.h"
#include "accounts/voucher_statements.h"
#include "common/numbers.h"
#include "common/text.h"

namespace accounts {

using database::Sql;

std::string_view Voucher::title() const {
    if (kind_ == VoucherKind::receipt) return is_editing() ? "تعديل مقبوضات" : "اضافة مقبوضات";
    return is_editing() ? "تعديل مدفوعات" : "اضافة مدفوعات";
}

bool Voucher::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

void Voucher::load_lists() {
    representatives_ =
        database::choices(connection_.query("select * from link order by ccode"), "ccode", "cname");
    stores_ = database::choices(connection_.query("select * from stocks"), "code", "name");
    banks_ = database::choices(connection_.query("select * from bankdata"), "bcode", "bname");
}

void Voucher::load_parties() {
    parties_ = database::choices(connection_.query(parties_statement(party_kind_)), "x1", "x2");
}

void Voucher::open_new() {
    opened_.reset();
    seen_.clear();
    unmoved_ = 0;
    load_lists();
    party_kind_ = kind_ == VoucherKind::receipt ? PartyKind::customer : PartyKind::vendor;
    party_.reset();
    load_parties();
    date = cheque_date = services_.clock.now().date;
    number = propose_number(connection_, kind_);
    amount_ = second_amount_ = discount = "0.00";
    second_changed_ = false;
    note.clear();
    cheque_owner.clear();
    representative.reset();
    bank.reset();
    method = Method::cash;
    choose_store(session_.store_code);
    if (contains(drawers_, session_.cash_point)) drawer = session_.cash_point;
}

bool Voucher::open_edit(const VoucherKey& key) {
    const auto found = connection_.query(find_statement(kind_, key));
    if (found.empty()) return refuse(message::no_such_voucher);
    const database::Row& row = found.front();
    load_lists();
    party_kind_ = key.party_kind;
    load_parties();
    party_ = key.party;
    opened_ = key;
    seen_ = row.cells();
    unmoved_ = 0;
    date = row.moment("Date").date;
    number = row.text("chkno");
    amount_ = common::format_amount(row.number("quan"));
    second_amount_ = common::format_amount(row.number("quan1"));
    second_changed_ = second_amount_ != amount_;
    discount = common::format_amount(row.number("dis"));
    note = row.text("note");
    const auto code = [&row](std::string_view column) {
        return row.null(column) || row.integer(column) == 0 ? std::optional<std::int64_t>()
                                                            : std::optional(row.integer(column));
    };
    representative = code("link");
    method = static_cast<Method>(row.integer("Type"));
    choose_store(row.integer("stcode"));
    drawer = code("cash_n");
    bank = code("bcode");
    cheque_date = row.null("tdate") ? date : row.moment("tdate").date;
    cheque_owner = row.text("chowner");
    return true;
}

void Voucher::choose_party_kind(PartyKind kind) {
    if (is_editing()) return;
    party_kind_ = kind;
    party_.reset();
    load_parties();
}

void Voucher::choose_party(std::optional<std::int64_t> party) {
    if (is_editing()) return;
    party_ = party;
    representative.reset();
    if (!party || party_kind_ == PartyKind::vendor) return;
    const auto customer = connection_.query(Sql("select * from custdata where ccode = ") + *party);
    if (customer.empty() || customer.front().null("link")) return;
    const std::int64_t code = customer.front().integer("link");
    if (!connection_.query(Sql("select * from link where ccode =") + code).empty()) representative = code;
}

void Voucher::choose_store(std::int64_t store) {
    store_ = store;
    drawer.reset();
    drawers_ = database::choices(connection_.query(Sql("select * from cash where stcode =") + store), "code",
                                 "name");
}

void Voucher::set_amount(std::string text) {
    amount_ = std::move(text);
    if (!second_changed_) second_amount_ = amount_;
}

void Voucher::set_second_amount(std::string text) {
    second_amount_ = std::move(text);
    second_changed_ = second_amount_ != amount_;
}

double Voucher::party_balance() {
    if (!party_) return 0;
    const auto party = find_party(connection_, ledger_of(party_kind_), *party_);
    return party ? party->balance : 0;
}

// What may be said of the fields alone and of the rows they name, in this order; nothing has been written.
std::optional<Voucher::Amounts> Voucher::checked() {
    const auto refused = [this](std::string_view text) {
        refuse(text);
        return std::optional<Amounts>();
    };
    Amounts amounts;
    const Amount amount = read_amount(amount_);
    const Amount reduction = read_amount(discount);
    const Amount second = read_amount(second_amount_);
    for (const Amount* read : {&amount, &reduction, &second}) {
        if (!read->message.empty()) return refused(read->message);
    }
    amounts = {amount.value, reduction.value, second.value};
    if (amounts.amount == 0) return refused(message::enter_value);
    if (common::trim(number).empty()) return refused(message::enter_number);
    const database::TextLimits limits(connection_, "vencuspay");
    if (!limits.fits("chkno", common::trim(number)) || !limits.fits("chowner", cheque_owner))
        return refused(message::too_long);
    if (!is_editing() && is_duplicate(connection_, kind_, common::trim(number))) {
        number.clear();
        return refused(message::duplicate_voucher);
    }
    if (method == Method::cash) {
        if (!drawer) return refused(message::enter_drawer);
        const auto drawers = connection_.query(Sql("select * from cash where stcode =") + store_);
        if (!contains(database::choices(drawers, "code", "name"), *drawer))
            return refused(message::no_such_drawer);
    } else if (method == Method::cheque) {
        if (!bank) return refused(message::enter_bank);
        if (!contains(database::choices(connection_.query("select * from bankdata"), "bcode", "bname"),
                      *bank))
            return refused(message::no_such_bank);
        if (!common::is_valid(cheque_date)) return refused(message::wrong_date);
    }
    if (!common::is_valid(date)) return refused(message::wrong_date);
    if (!party_) return refused(message::choose_party);
    if (!find_party(connection_, ledger_of(party_kind_), *party_)) return refused(message::no_such_party);
    return amounts;
}

bool Voucher::save() {
    printed_.reset();
    const auto amounts = checked();
    if (!amounts) return false;

    VoucherRow row;
    row.kind = kind_;
    row.key = {party_kind_, *party_, date, amounts->amount, std::string(common::trim(number))};
    row.method = method;
    row.discount = amounts->discount;
    row.second_amount = amounts->second;
    row.note = common::left(note, note_length);
    row.representative = representative;
    row.store = store_;
    row.drawer = drawer;
    row.bank = bank;
    row.cheque_date = cheque_date;
    row.cheque_owner = cheque_owner;
    row.written_at = services_.clock.now();

    const double before = opened_ ? opened_->amount : 0;
    if (opened_) {
        if (!rewrite_voucher(connection_, row, *opened_, seen_)) return refuse(message::voucher_changed);
    } else {
        add_voucher(connection_, row);
    }
    // From here on the voucher is one that is edited, so that saving again does not write it twice; and a
    // balance that an error keeps from moving is moved by the next save.
    opened_ = row.key;
    seen_.clear();

    // A receipt lowers what a customer owes and raises what a vendor is owed; a payment the other way round.
    const bool raises = (kind_ == VoucherKind::payment) == (party_kind_ != PartyKind::vendor);
    const double sign = raises ? 1 : -1;
    unmoved_ = common::round_decimals(unmoved_ + sign * (amounts->amount - before), 2);
    const Moved moved = move_balance(connection_, ledger_of(party_kind_), *party_, unmoved_);
    unmoved_ = 0;
    connection_.make_durable();
    set_printed(row, moved, sign * amounts->amount);

    const auto written = connection_.query(find_statement(kind_, row.key));
    if (!written.empty()) seen_ = written.front().cells();
    return true;
}

void Voucher::set_printed(const VoucherRow& row, const Moved& moved, double effect) {
    PrintedVoucher paper;
    paper.title = printed_title(kind_, method);
    paper.number = row.key.number;
    paper.date = row.key.date;
    const auto party = find_party(connection_, ledger_of(party_kind_), row.key.party);
    paper.party = party ? party->name : "";
    paper.amount = row.key.amount;
    paper.words = words_of(row.key.amount);
    paper.method = method_name(method);
    if (method == Method::cash) paper.place = name_of(drawers_, drawer.value_or(0));
    if (method == Method::cheque) paper.place = name_of(banks_, bank.value_or(0));
    paper.note = row.note;
    // The balance without the voucher, then with it, also when it was edited.
    paper.balance_before = common::round_decimals(moved.after - effect, 2);
    paper.balance_after = moved.after;
    printed_ = std::move(paper);
}

}  // namespace accounts
