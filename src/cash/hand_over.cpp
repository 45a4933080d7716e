#include "cash/hand_over.h"

#include "database/till_settings.h"

namespace cash {

void HandOver::open(const Shift& shift) {
    shift_ = shift;
    compared_ = false;
    count = {};
    database::Reads reads;
    database::ask_denominations(reads, denominations_);
    database::ask_yes_or_no(reads, {{database::setting::blind_count, &is_blind_}});
    reads.run(connection_);
    for (const common::Amount denomination : denominations_)
        count.pieces.push_back({denomination});
    if (!is_blind_) compute();
}

std::optional<common::Amount> HandOver::expected() const {
    if (is_blind_ && !compared_) return std::nullopt;
    return position_.position;
}

void HandOver::compute() {
    CashPosition position(connection_, session_, services_.clock);
    position.compute(session_.store_code, shift_.start, common::next_second(services_.clock.now()));
    position_ = position.own();
}

void HandOver::compare() {
    compute();
    movements_.emplace(connection_, Drawer{session_.store_code, session_.cash_point}, shift_.start,
                       services_.clock.now());
    causes_ = movements_->of(difference(), position_.discounts.beside);
    compared_ = true;
    if (!is_blind_) return;
    session_.note(
        {.kind = audit::Kind::count,
         .what = "عد درج وردية رقم " + std::to_string(shift_.number) + "، المعدود " + count.total().text(),
         .amount = difference()});
}

}  // namespace cash
