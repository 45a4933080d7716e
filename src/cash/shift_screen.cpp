#include "cash/shift_screen.h"

#include "cash/messages.h"
#include "common/numbers.h"
#include "database/recordset.h"

namespace cash {

using database::quoted;
using database::Sql;
using database::Value;

namespace {

// A time that came too early, with the moment from which on it would do. Left to right, or its halves change
// places in the Arabic line.
std::string before(std::string_view what, const common::Moment& moment) {
    return std::string(what) + std::string(message::not_before) + "\u202a" + common::moment_text(moment) +
           "\u202c";
}

}  // namespace

bool ShiftStartScreen::open() {
    const auto settings = connection_.query("select * from basic");
    clos_bal_ = settings.empty() ? 0 : static_cast<int>(settings.front().integer("clos_bal"));
    prn_csh_rep_ = settings.empty() ? 0 : static_cast<int>(settings.front().integer("prn_csh_rep"));
    workers_ = database::load_workers(connection_);
    read_last_shift();
    const common::Moment now = services_.clock.now();
    date = now.date;
    time = common::time_text(now.time);
    counted = leave = "0.00";
    worker.reset();
    discounts_ = {};
    if (is_in_shift())
        discounts_ =
            invoice_discounts(connection_, {session_.store_code, session_.cash_point}, last_->start, now);
    return has_drawer();
}

void ShiftStartScreen::read_last_shift(database::Fragment order) {
    const std::int64_t store = session_.store_code;
    const std::int64_t drawer = session_.cash_point;
    last_ = current_shift(connection_, store, drawer, order);
    last_worker_ = last_ ? shift_worker(connection_, store, drawer, last_->number) : "";
    next_number_ = next_shift_number(connection_, store, drawer);
}

bool ShiftStartScreen::refuse(std::string_view text, Field field) {
    refused_field_ = field;
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

bool ShiftStartScreen::has_drawer() {
    if (contains(database::load_drawers(connection_, session_.store_code), session_.cash_point)) return true;
    return refuse(message::no_such_drawer);
}

std::optional<ShiftStartScreen::Amounts> ShiftStartScreen::read_amounts() {
    Amounts amounts;
    for (auto [field, amount] : {std::pair{&counted, &amounts.counted}, std::pair{&leave, &amounts.leave}}) {
        const auto read = read_amount(*field);
        if (!read) {
            *field = "0.00";
            refuse(message::no_amount, field == &counted ? Field::counted : Field::leave);
            return std::nullopt;
        }
        *amount = common::Amount(*read);
    }
    return amounts;
}

bool ShiftStartScreen::may_close(const Shift& shift, const common::Moment& at, const Amounts& amounts) {
    if (clos_bal_ == 1 && amounts.counted.is_zero()) return refuse(message::counted_needed, Field::counted);
    // A clock set back, or a start that was written with a wrong one.
    if (at < shift.start) return refuse(before(message::before_last_start, shift.start), Field::time);
    return true;
}

// The cash goes to the main drawer before the shift is closed; both stay when a later step fails.
void ShiftStartScreen::close_shift(const Shift& shift, const common::Moment& at, const Amounts& amounts) {
    CashPosition position(connection_, session_, services_.clock);
    position.compute(session_.store_code, shift.start, at);
    position.move(amounts.leave, session_.cash_point);

    ShiftReport closed;
    closed.number = shift.number;
    closed.worker = shift_worker(connection_, session_.store_code, session_.cash_point, shift.number);
    closed.store = session_.store_name;
    closed.drawer = session_.drawer_name;
    closed.start = shift.start;
    closed.end = at;
    closed.counted = amounts.counted;
    closed.expected = position.own().position;
    closed.difference = closed.counted - closed.expected;
    closed.card_sales = position.own().card_sales;
    closed.uncollected = position.own().uncollected;
    closed.discounts = position.own().discounts;

    // Usually one row; two when workstations with the same number started the shift at one moment.
    database::Recordset rows(connection_, Sql("select * from shift where  stcode = ") + session_.store_code +
                                              " and cash_no = " + session_.cash_point +
                                              " and scode = " + shift.number);
    for (; !rows.at_end(); rows.move_next()) {
        if (!rows.null("e_date")) continue;
        rows.set("e_date", Value(at));
        rows.set("cur_bal", amounts.counted.value());
        rows.update();
    }
    if (prn_csh_rep_ == 1) report_ = closed;
}

// The shift change stands, whatever becomes of its report: the page needs no more than what was read, and the
// cashier is not sent to close a closed shift again.
void ShiftStartScreen::finish() {
    connection_.make_durable();
    try {
        if (report_) write_print_row(connection_, *report_, session_.user_name);
    } catch (const database::Error& error) {
        services_.log.log_event(error.what(), error.sqlstate());
    }
    const auto kept = report_;
    open();
    report_ = kept;
}

bool ShiftStartScreen::start() {
    report_.reset();
    refused_field_ = Field::none;
    if (!worker || !contains(workers_, *worker)) return refuse(message::complete_data, Field::worker);
    const auto amounts = read_amounts();
    if (!amounts || !has_drawer()) return false;
    const auto at = common::parse_moment(common::date_text(date) + " " + time);
    if (!at || !common::is_valid(date)) return refuse(message::no_time, Field::time);
    if (*at > services_.clock.now()) return refuse(message::in_the_future, Field::time);

    const std::int64_t seen = next_number_;
    read_last_shift();
    if (next_number_ != seen) return refuse(message::started_elsewhere);
    if (last_) {
        if (last_->is_open()) {
            if (!may_close(*last_, *at, *amounts)) return false;
        } else if (*at < *last_->end) {
            return refuse(before(message::before_last_end, *last_->end), Field::time);
        }
    }

    if (is_in_shift()) close_shift(*last_, *at, *amounts);
    const bool alone = add_shift(*at);
    if (alone) calc_cash(connection_, session_, services_, copy_, amounts->leave);
    finish();
    return alone || refuse(message::started_elsewhere);
}

// False when another workstation with this drawer's number wrote the same shift in this moment: then the own
// row is taken back, for one drawer has one responsible worker. Both may take theirs back; neither has
// started then, and one of them starts it again. Rows that are equal in everything are one and the same shift
// and stay.
bool ShiftStartScreen::add_shift(const common::Moment& at) {
    database::Recordset shifts(connection_, "select * from shift ");
    shifts.add();
    shifts.set("scode", next_number_);
    shifts.set("s_date", Value(at));
    shifts.set("man_", *worker);
    shifts.set("stcode", session_.store_code);
    shifts.set("cash_no", session_.cash_point);
    shifts.update();

    const Sql same_number = Sql(" from shift where stcode = ") + session_.store_code +
                            " and cash_no = " + session_.cash_point + " and scode = " + next_number_;
    for (const auto& row : connection_.query(Sql("select *") + same_number)) {
        if (row.moment("s_date") == at && row.integer("man_") == *worker) continue;
        connection_.execute(Sql("delete") + same_number + " and s_date = " + quoted(at) +
                            " and man_ = " + *worker + " and e_date is null");
        return false;
    }
    return true;
}

bool ShiftScreen::close_current() {
    report_.reset();
    refused_field_ = Field::none;
    if (!services_.prompts.question(message::close_question, common::Icon::question)) return false;
    read_last_shift(by_number_at_close);
    if (!is_in_shift()) return refuse(message::already_closed);
    const auto amounts = read_amounts();
    if (!amounts || !has_drawer()) return false;
    common::Moment now = services_.clock.now();
    now.time.millisecond = 0;  // moments are written in whole seconds
    if (!may_close(*last_, now, *amounts)) return false;
    close_shift(*last_, now, *amounts);
    finish();
    return true;
}

}  // namespace cash
