#include "cash/counted_cash.h"

#include "cash/messages.h"
#include "common/messages.h"
#include "common/typed.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "database/till_settings.h"

namespace cash {

namespace {

constexpr std::string_view drawer_counted_field = "cash_counted";
constexpr std::string_view log_code = "count";

using database::quoted;
using database::Sql;

// The day's one row of surplus or shortage.
Sql difference_row(std::int64_t store, std::int64_t drawer, const common::Date& day) {
    return Sql("select * from mor_les where  ptype = ") + drawer + " and date =" + quoted(day) +
           " and stcode = " + store;
}

}  // namespace

void CountedCash::open() {
    database::Reads reads;
    database::ask_yes_or_no(reads, {{database::setting::blind_count, &is_blind_}});
    reads.run(connection_);
    stores_ = database::load_stores(connection_);
    day_ = services_.clock.now().date;
    counted = "0.00";
    choose_store(session_.store_code);
}

void CountedCash::choose_store(std::int64_t store) {
    store_ = store;
    drawers_ = database::load_drawers(connection_, store);
    if (store == session_.store_code && contains(drawers_, session_.cash_point)) {
        drawer_ = session_.cash_point;
    } else {
        drawer_ = drawers_.empty() ? 0 : drawers_.front().code;
    }
    refresh();
}

void CountedCash::choose_drawer(std::int64_t drawer) {
    drawer_ = drawer;
    refresh();
}

void CountedCash::choose_day(const common::Date& day) {
    day_ = day;
    refresh();
}

void CountedCash::refresh() {
    // Strictly before the next midnight, so the last second of the day is included.
    const common::Moment start{day_, {}};
    const common::Moment end{common::add_days(day_, 1), {}};
    CashPosition computed(connection_, session_, services_.clock);
    computed.compute(store_, start, end, {day_, {23, 59, 59, 0}});
    position_ = card_sales_ = uncollected_ = common::Amount();
    discounts_ = {};
    for (const DrawerPosition& drawer : computed.drawers()) {
        if (drawer.drawer != drawer_) continue;
        position_ = drawer.position;
        card_sales_ = drawer.card_sales;
        uncollected_ = drawer.uncollected;
        discounts_ = drawer.discounts;
    }
    const auto row = connection_.query(difference_row(store_, drawer_, day_));
    count_.reset();
    if (!row.empty()) count_ = read_count(row.front());
    expected_ = position_ - (count_ ? count_->difference : common::Amount());
}

// The row holds the difference and the time; the counted cash is the position at that time, including the
// difference. A count recorded on a later day, or without a time, covered the whole day.
CountedCash::Count CountedCash::read_count(const database::Row& row) const {
    Count count;
    count.difference = common::Amount(row.number("aml"));
    count.counted = position_;
    if (row.null("time_")) return count;
    const common::Moment written = row.moment("time_");
    if (written.date > day_) {
        count.at = written;
        return count;
    }
    count.at = {day_, written.time};
    count.counted = position_at(connection_, {store_, drawer_}, common::next_second(*count.at));
    count.moved_since = position_ - count.counted;
    return count;
}

// A drawer's own cashier may not know about a count that somebody else recorded, so it is logged.
void CountedCash::log_count(common::Amount amount) const {
    if (store_ == session_.store_code && drawer_ == session_.cash_point) return;
    services_.log.log_event("count of drawer " + std::to_string(drawer_) + " of store " +
                                std::to_string(store_) + " on " + common::date_text(day_) + " by user " +
                                std::to_string(session_.user_code) + ": counted " + amount.text() +
                                ", difference " + (amount - expected_).text(),
                            log_code);
}

std::optional<common::Refusal> CountedCash::confirm() {
    const auto refuse = [](std::string_view text) {
        return common::Refusal{drawer_counted_field, std::string(text)};
    };
    const auto amount = common::read_amount(counted);
    if (!amount.is_good()) return refuse(amount.refusal);
    const common::Moment now = services_.clock.now();
    if (day_ > now.date) return refuse(message::future_day);
    if (!contains(database::load_drawers(connection_, store_), drawer_))
        return refuse(common::message::no_such_drawer);

    // The cashier has agreed to the difference that is on the screen.
    const common::Amount seen = expected_;
    refresh();
    if (expected_ != seen) return refuse(message::expected_changed);

    database::Recordset row(connection_, difference_row(store_, drawer_, day_));
    session_.note({.kind = audit::Kind::count,
                   .what = name_of(drawers_, drawer_) + " " + common::date_text(day_) + "، المعدود " +
                           amount.value.text(),
                   .amount = amount.value - expected_});
    if (row.empty()) row.add();
    row.set("time_", database::Value(now));
    row.set("Date", day_);
    row.set("stcode", store_);
    row.set("aml", (amount.value - expected_).value());
    row.set("ptype", drawer_);
    row.update();
    connection_.make_durable();
    log_count(amount.value);
    refresh();
    return std::nullopt;
}

}  // namespace cash
