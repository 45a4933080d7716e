#include "cash/shift.h"

#include <algorithm>

#include "cash/messages.h"
#include "common/messages.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/choices.h"
#include "database/till_settings.h"

namespace cash {

using common::FieldKind;
using common::FormField;
using common::Refusal;
using database::Reads;
using database::Result;
using database::Sql;

Sql last_shift_statement(std::int64_t store, std::int64_t drawer) {
    // The end is null while a shift is open, and nulls sort first.
    return Sql("select top 1 * FROM shift  where stcode = ") + store + " and cash_no = " + drawer +
           "  Order By scode desc, e_date";
}

std::optional<Shift> last_shift_in(const database::Result& rows) {
    if (rows.empty()) return std::nullopt;
    const database::Row& row = rows.front();
    Shift shift{row.integer("scode"), row.integer("man_"), row.moment("s_date"), std::nullopt};
    if (!row.null("e_date")) shift.end = row.moment("e_date");
    return shift;
}

std::optional<Shift> current_shift(database::Connection& connection, std::int64_t store,
                                   std::int64_t drawer) {
    return last_shift_in(connection.query(last_shift_statement(store, drawer)));
}

namespace {

// Object names of the fields that a refusal may name.
constexpr char worker_field[] = "shift_worker";
constexpr char time_field[] = "shift_time";
constexpr char entry_counted_field[] = "shift_counted";
constexpr char leave_field[] = "shift_leave";

constexpr FormField<ShiftEntry> shift_fields[] = {
    // number of the new shift, worker
    {{}, {"next_shift", "رقم الوردية الجديدة", FieldKind::figure, {0, 0}}},
    {&ShiftEntry::worker, {worker_field, "ال&موظف", FieldKind::choice, {0, 1}}},
    // date, time
    {&ShiftEntry::date, {"shift_date", "ال&تاريخ", FieldKind::date, {1, 0}}},
    {&ShiftEntry::time, {time_field, "ال&وقت", FieldKind::digits, {1, 1}}},
    // counted cash, cash that stays in the drawer
    {&ShiftEntry::counted, {entry_counted_field, message::counted_cash_field, FieldKind::amount, {2, 0}}},
    {&ShiftEntry::leave, {leave_field, "يترك بال&درج", FieldKind::amount, {2, 1}}},
};

Refusal refuse(std::string_view field, std::string_view text) {
    return {field, std::string(text)};
}

// Refuses a moment that is too early and names the first possible one. The moment is marked as left to right,
// or its halves would change places in the Arabic line.
Refusal too_early(std::string_view text, const common::Moment& first) {
    return {time_field, std::string(text) + std::string(message::not_before) + "\u202a" +
                            common::moment_text(first) + "\u202c"};
}

}  // namespace

common::FormTable<ShiftEntry> shift_form() {
    return shift_fields;
}

std::optional<Refusal> ShiftStart::open() {
    std::optional<common::Date> net_from;
    Reads reads;
    reads.add("select * from basic", [this](const Result& settings) {
        must_count_ = !settings.empty() && settings.front().integer("clos_bal") == 1;
        prints_report_ = !settings.empty() && settings.front().integer("prn_csh_rep") == 1;
    });
    database::ask_workers(reads, workers_);
    ask_last_shift(reads);
    database::ask_net_from(reads, net_from);
    reads.run(connection_);

    const common::Moment now = services_.clock.now();
    entry = {};
    entry.date = now.date;
    entry.time = common::time_text(now.time);
    discounts_ = {};
    common::Amount held;
    ask_worker(reads);
    if (is_in_shift())
        ask_discounts(reads, own_drawer(), last_->start, now, net_from, discounts_);
    else
        ask_calc_position(reads, copy_, own_drawer(), common::next_second(now), net_from, held);
    reads.run(connection_);
    if (!is_in_shift()) entry.leave = std::max(held, common::Amount()).text();
    return check_drawer();
}

void ShiftStart::ask_last_shift(Reads& reads) {
    const std::int64_t store = session_.store_code;
    const std::int64_t drawer = session_.cash_point;
    reads.add(last_shift_statement(store, drawer),
              [this](const Result& rows) { last_ = last_shift_in(rows); });
    reads.add(
        Sql("select max(scode) as last_i from shift where stcode = ") + store + " and cash_no = " + drawer,
        [this](const Result& rows) { next_number_ = database::integer_of(database::first_cell(rows)) + 1; });
    database::ask_drawers(reads, store, drawers_);
}

void ShiftStart::read_last_shift() {
    const std::int64_t known = last_ ? last_->number : 0;
    Reads reads;
    ask_last_shift(reads);
    reads.run(connection_);
    if (last_ && last_->number == known) return;
    ask_worker(reads);
    reads.run(connection_);
}

// The worker of the last shift; "" if he has no row or no name.
void ShiftStart::ask_worker(Reads& reads) {
    last_worker_.clear();
    if (!last_) return;
    reads.add(Sql("select * from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  "
                  "where stcode = ") +
                  session_.store_code + " AND cash_no = " + session_.cash_point +
                  "  and scode = " + last_->number,
              [this](const Result& rows) {
                  if (!rows.empty()) last_worker_ = rows.front().text("work_name");
              });
}

std::optional<Refusal> ShiftStart::check_drawer() const {
    if (contains(drawers_, session_.cash_point)) return std::nullopt;
    return refuse("", common::message::no_such_drawer);
}

std::optional<Refusal> ShiftStart::read_amounts(Amounts& amounts) const {
    const auto counted = common::read_amount(entry.counted);
    if (!counted.is_good()) return refuse(entry_counted_field, counted.refusal);
    const auto leave = common::read_amount(entry.leave);
    if (!leave.is_good()) return refuse(leave_field, leave.refusal);
    if (!common::trim(entry.counted).empty()) amounts.counted = counted.value;
    amounts.leave = leave.value;
    return std::nullopt;
}

std::optional<Refusal> ShiftStart::read_moment(common::Moment& at) const {
    const auto time = common::read_time(entry.time);
    if (!time || !common::is_valid(entry.date)) return refuse(time_field, message::no_time);
    const common::Moment typed{entry.date, *time};
    if (typed > services_.clock.now()) return refuse(time_field, message::in_the_future);
    at = typed;
    return std::nullopt;
}

std::optional<Refusal> ShiftStart::check_close(const common::Moment& at, const Amounts& amounts) const {
    if (must_count_ && amounts.counted.value_or(common::Amount()).is_zero())
        return refuse(entry_counted_field, message::counted_needed);
    // The clock was set back, or the shift was started with a wrong moment.
    if (at < last_->start) return too_early(message::before_last_start, last_->start);
    return std::nullopt;
}

ShiftEnd ShiftStart::plan_close(const common::Moment& at, const Amounts& amounts) {
    const Shift& shift = *last_;
    CashPosition position(connection_, session_, services_.clock);
    position.compute(session_.store_code, shift.start, at);

    ShiftReport closed;
    closed.number = shift.number;
    closed.worker = last_worker_;
    closed.store = session_.store_name;
    closed.drawer = session_.drawer_name;
    closed.start = shift.start;
    closed.end = at;
    closed.counted = amounts.counted;
    if (entry.pieces && entry.pieces->total() == amounts.counted) closed.pieces = *entry.pieces;
    closed.expected = position.own().position;
    closed.card_sales = position.own().card_sales;
    closed.uncollected = position.own().uncollected;
    closed.discounts = position.own().discounts;
    closing_ = closed;
    if (prints_report_) report_ = closed;
    return {shift.number, at, amounts.counted.value_or(common::Amount()),
            position.transfer_from(session_.cash_point, amounts.leave), report_};
}

std::optional<Refusal> ShiftStart::settle_earlier() {
    for (auto& unfinished :
         database::unfinished_saves(connection_, session_.store_code, session_.cash_point)) {
        if (unfinished.kind != shift_resumption.kind) continue;
        const auto settled = database::settle(connection_, services_, unfinished, shift_resumption,
                                              database::Paper::none, nullptr);
        if (settled == database::Settled::left) return refuse("", message::change_unfinished);
        if (settled == database::Settled::finished) report_ = report_to_print(unfinished);
        finish();
        return refuse("", message::look_at_shift);
    }
    return std::nullopt;
}

// The cash goes to the main drawer before the shift is closed.
std::optional<Refusal> ShiftStart::write(const ShiftToSave& save) {
    database::Journal journal(connection_);
    database::JournalEntry unfinished = entry_of(save, services_.clock.now());
    ShiftRows rows(connection_, journal, save);
    bool is_started = true;
    try {
        journal.begin(unfinished);
        note(save);
        is_started = rows.write();
        journal.end();
    } catch (const std::exception& error) {
        unfinished.id = journal.id();
        return stopped(unfinished, save, error);
    }
    if (is_started) return std::nullopt;
    return refuse(worker_field, message::started_elsewhere);
}

// Notes the change before the first row is written, so that a crash cannot leave a change without its note.
void ShiftStart::note(const ShiftToSave& save) const {
    using audit::Kind;
    if (save.closed) {
        const std::string number = std::to_string(closing_.number);
        session_.note(
            {.kind = Kind::shift_changed, .what = "إغلاق وردية رقم " + number + "، " + closing_.worker});
        if (closing_.counted)
            session_.note({.kind = Kind::count,
                           .what = "وردية رقم " + number + "، المعدود " + closing_.counted->text(),
                           .amount = closing_.difference()});
    }
    if (save.started)
        session_.note({.kind = Kind::shift_changed,
                       .what = "بداية وردية رقم " + std::to_string(save.started->number) + "، " +
                               name_of(workers_, save.started->worker)});
}

std::optional<Refusal> ShiftStart::stopped(database::JournalEntry& unfinished, const ShiftToSave& save,
                                           const std::exception& error) {
    if (unfinished.id == 0) throw;  // nothing can be finished or undone
    services_.log.log_event("save of " + log_name(save) + " stopped, " + error.what(), common::saving_code);
    switch (database::settle(connection_, services_, unfinished, shift_resumption, database::Paper::none,
                             &error)) {
        case database::Settled::finished:
            return std::nullopt;
        case database::Settled::undone:
            report_.reset();
            return refuse("", message::change_undone);
        case database::Settled::left:
            break;
    }
    report_.reset();
    return refuse("", message::change_unfinished);
}

void ShiftStart::finish() {
    connection_.make_durable();
    if (report_) write_print_row(connection_, services_.log, *report_, session_.user_name);
    const auto kept = report_;
    open();
    report_ = kept;
}

std::optional<Refusal> ShiftStart::start() {
    report_.reset();
    if (!entry.worker || !contains(workers_, *entry.worker))
        return refuse(worker_field, message::complete_data);
    Amounts amounts;
    common::Moment at;
    if (auto refusal = read_amounts(amounts)) return refusal;
    if (auto refusal = read_moment(at)) return refusal;

    if (auto refusal = settle_earlier()) return refusal;
    const std::int64_t seen = next_number_;
    read_last_shift();
    if (auto refusal = check_drawer()) return refusal;
    if (next_number_ != seen) return refuse(worker_field, message::started_elsewhere);
    ShiftToSave save{own_drawer(), std::nullopt, ShiftBegin{next_number_, at, *entry.worker}};
    if (is_in_shift()) {
        if (auto refusal = check_close(at, amounts)) return refusal;
        save.closed = plan_close(at, amounts);
    } else if (last_ && at < *last_->end) {
        return too_early(message::before_last_end, *last_->end);
    }
    auto refused = write(save);
    if (refused && refused->text != message::started_elsewhere) return refused;
    if (!refused) calc_cash(connection_, session_, services_, copy_, amounts.leave);
    finish();
    return refused;
}

bool ShiftChange::confirm_close(std::string_view also) const {
    return services_.prompts.question(std::string(message::close_question) + std::string(also),
                                      common::Icon::question);
}

std::optional<Refusal> ShiftChange::close_current() {
    report_.reset();
    if (auto refusal = settle_earlier()) return refusal;
    read_last_shift();
    if (!is_in_shift()) return refuse("", message::already_closed);
    Amounts amounts;
    if (auto refusal = read_amounts(amounts)) return refusal;
    if (auto refusal = check_drawer()) return refusal;
    common::Moment now = services_.clock.now();
    now.time.millisecond = 0;  // moments are written in whole seconds
    if (auto refusal = check_close(now, amounts)) return refusal;
    if (auto refusal = write({own_drawer(), plan_close(now, amounts), std::nullopt})) return refusal;
    finish();
    return std::nullopt;
}

}  // namespace cash
