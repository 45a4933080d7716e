#include "accounts/voucher_saving.h"

#include "accounts/messages.h"
#include "database/recordset.h"
#include "database/till_tables.h"

namespace accounts {

using common::Amount;
using database::Row;
using database::Sql;
using database::unless_table_is_missing;

namespace {

// The log's code of lines about saving.
constexpr std::string_view log_code = "250";

// A row of till_voucher.
struct Mark {
    double moved = 0;               // by how much the party's balance has moved for the voucher
    std::optional<double> balance;  // the party's before an attempt whose result is unknown
};

// What a voucher adds to its party's balance, unrounded: rows of other programs may hold more decimals.
double effect_of(const Row& voucher) {
    return effect_on_balance(static_cast<VoucherKind>(voucher.integer("ptype")),
                             static_cast<PartyKind>(voucher.integer("ztype")), method_of(voucher),
                             voucher.number("quan"));
}

std::optional<Mark> find_mark(database::Connection& connection, const VoucherKey& key) {
    std::optional<Mark> mark;
    unless_table_is_missing([&] {
        const auto rows = connection.query(Sql("select moved, balance from till_voucher where pay_id = ") +
                                           key.id + " and ztype = " + static_cast<int>(key.party_kind) +
                                           " and vcode = " + key.party);
        if (rows.empty()) return;
        mark = Mark{rows.front().number("moved"), std::nullopt};
        if (!rows.front().null("balance")) mark->balance = rows.front().number("balance");
    });
    return mark;
}

void clear_mark(database::Connection& connection, const VoucherKey& key) {
    unless_table_is_missing(
        [&] { connection.execute(Sql("delete from till_voucher where pay_id = ") + key.id); });
}

void set_mark(database::Connection& connection, const VoucherKey& key, const Mark& mark) {
    unless_table_is_missing([&] {
        database::Recordset row(connection, Sql("select * from till_voucher where pay_id = ") + key.id);
        if (row.empty()) row.add();
        row.set("pay_id", key.id);
        row.set("ztype", static_cast<int>(key.party_kind));
        row.set("vcode", key.party);
        row.set("moved", mark.moved);
        row.set("balance", mark.balance ? database::Value(*mark.balance) : database::Value(database::Null{}));
        row.update();
    });
}

// By how much the balance has moved for a voucher that adds `effect`. After an
// attempt whose result is unknown the balance itself decides: it has moved if it is what that attempt would
// have made it.
double moved_for(double effect, const std::optional<Mark>& mark, double balance) {
    if (!mark) return effect;
    const bool arrived = mark->balance && Amount(balance) == Amount(*mark->balance + effect - mark->moved);
    return arrived ? effect : mark->moved;
}

double moved_for(database::Connection& connection, const Row& voucher, const std::optional<Mark>& mark) {
    const VoucherKey key = key_of(voucher);
    const auto party = mark ? find_party(connection, key.party_kind, key.party) : std::nullopt;
    return moved_for(effect_of(voucher), mark, party ? party->balance : 0);
}

bool may_have_run(const std::exception& error) {
    const auto* failure = dynamic_cast<const database::Error*>(&error);
    return failure != nullptr &&
           (failure->is_connection_lost() || failure->kind() == database::Error::Kind::timed_out);
}

// The voucher is written and the money in the drawer: a passing error must not keep the rest from following.
template <typename Action>
auto tried_twice(const Action& action) {
    try {
        return action();
    } catch (const database::Error& error) {
        if (may_have_run(error)) throw;
        return action();
    }
}

}  // namespace

struct VoucherSaving::Attempt {
    const VoucherRecord& record;
    VoucherKey key;
    double moved = 0;            // before the attempt
    std::optional<Mark> former;  // left by an earlier attempt
};

std::string_view name_of(VoucherStep step) {
    constexpr std::string_view names[] = {
        "لا شيء",         // nothing
        "كتابة الإيصال",  // writing the voucher
        "رصيد الطرف",     // the party's balance
    };
    return names[static_cast<std::size_t>(step)];
}

common::Refusal partly_saved(const SavedVoucher& voucher) {
    return {"", std::string(message::voucher_number) + voucher.key.number +
                    std::string(message::voucher_partly_saved) + std::string(name_of(voucher.finished)) +
                    std::string(message::voucher_partly_advice)};
}

std::string log_name(VoucherKind kind, const VoucherKey& key) {
    return std::string(voucher_log_name) + std::to_string(key.id) + " (kind " +
           std::to_string(static_cast<int>(kind)) + ", kind of party " +
           std::to_string(static_cast<int>(key.party_kind)) + ", party " + std::to_string(key.party) + ")";
}

SavedVoucher VoucherSaving::add(const VoucherRecord& record) {
    Attempt attempt{record, record.key(), 0, std::nullopt};
    attempt.key.id = next_voucher_id(connection_);
    return run(attempt, [&] {
        database::Recordset row(connection_, "select * from vencuspay");
        row.add();
        set_columns(row, record, std::nullopt);
        row.set("pay_id", attempt.key.id);
        row.update();
    });
}

std::optional<SavedVoucher> VoucherSaving::rewrite(const VoucherRecord& record, const VoucherKey& former,
                                                   const std::vector<database::Value>& seen) {
    const auto found = find_voucher(connection_, record.kind, former);
    if (!found || (!seen.empty() && found->row.cells() != seen)) return std::nullopt;
    Attempt attempt{record, record.key(), 0, std::nullopt};
    attempt.key.id = found->row.integer("pay_id");
    attempt.former = find_mark(connection_, attempt.key);
    attempt.moved = moved_for(connection_, found->row, attempt.former);
    if (attempt.key.id == 0) attempt.key.id = next_voucher_id(connection_);
    try {
        return run(attempt, [&] {
            database::Recordset row(connection_, found->statement);
            move_to(row, former);
            set_columns(row, record, method_of(found->row));
            row.set("pay_id", attempt.key.id);
            row.update();
        });
    } catch (const database::Error& error) {
        if (error.kind() != database::Error::Kind::changed_meanwhile) throw;
        return std::nullopt;
    }
}

template <typename Write>
SavedVoucher VoucherSaving::run(const Attempt& attempt, Write write) {
    SavedVoucher saved{attempt.key, VoucherStep::none, std::nullopt};
    log_.log_event("save of " + log_name(attempt.record.kind, attempt.key) + " begins, amount " +
                       attempt.key.amount.text() + ", number " + attempt.key.number,
                   log_code);
    try {
        const auto party = find_party(connection_, attempt.key.party_kind, attempt.key.party);
        set_mark(connection_, attempt.key, {attempt.moved, party ? party->balance : 0});
        write();
        saved.finished = VoucherStep::voucher;
        move_party(attempt, saved);
    } catch (const std::exception& error) {
        saved.balance.reset();
        stop(attempt, saved, error);
        if (saved.finished == VoucherStep::none) throw;
    }
    return saved;
}

void VoucherSaving::move_party(const Attempt& attempt, SavedVoucher& saved) {
    const VoucherRecord& record = attempt.record;
    const double effect =
        effect_on_balance(record.kind, record.party_kind, record.method, attempt.key.amount.value());
    saved.balance = tried_twice([&] {
        return move_balance(connection_, record.party_kind, attempt.key.party, effect - attempt.moved);
    });
    saved.finished = VoucherStep::balance;
    tried_twice([&] { clear_mark(connection_, attempt.key); });
    tried_twice([&] { connection_.make_durable(); });
    log_.log_event("save of " + log_name(record.kind, attempt.key) + " finished", log_code);
}

// Logs the error, and corrects the mark if it is known what the attempt did.
void VoucherSaving::stop(const Attempt& attempt, const SavedVoucher& saved, const std::exception& error) {
    const bool is_known = !may_have_run(error);
    const bool nothing = is_known && saved.finished == VoucherStep::none;
    log_.log_event("save of " + log_name(attempt.record.kind, attempt.key) + " stopped, " +
                       (nothing ? "nothing saved, " : "") +
                       "last finished step: " + std::string(name_of(saved.finished)) + ": " + error.what(),
                   log_code);
    if (!is_known || saved.finished == VoucherStep::balance) return;
    try {
        if (!nothing)
            set_mark(connection_, attempt.key, {attempt.moved, std::nullopt});
        else if (attempt.former)
            set_mark(connection_, attempt.key, *attempt.former);
        else
            clear_mark(connection_, attempt.key);
    } catch (const database::Error&) {
        // The mark keeps what it said before the attempt, which is right until another till moves the
        // balance.
    }
}

std::vector<UnmovedVoucher> unmoved_vouchers(database::Connection& connection) {
    std::vector<UnmovedVoucher> list;
    unless_table_is_missing([&] {
        for (const Row& voucher : connection.query(
                 "select vencuspay.* from vencuspay inner join till_voucher on vencuspay.pay_id = "
                 "till_voucher.pay_id order by vencuspay.pay_id")) {
            const Amount missing = missing_from_balance(connection, voucher);
            if (missing.is_zero()) continue;
            list.push_back({static_cast<VoucherKind>(voucher.integer("ptype")), key_of(voucher), missing});
        }
    });
    return list;
}

Amount missing_from_balance(database::Connection& connection, const Row& voucher) {
    const auto mark = find_mark(connection, key_of(voucher));
    return Amount(effect_of(voucher) - moved_for(connection, voucher, mark));
}

std::optional<VoucherKey> find_half_saved(database::Connection& connection, const VoucherRecord& record) {
    const VoucherKey wanted = record.key();
    for (const Row& voucher : connection.query(find_statement(record.kind, wanted))) {
        const VoucherKey key = key_of(voucher);
        if (find_mark(connection, key)) return key;
    }
    return std::nullopt;
}

}  // namespace accounts
