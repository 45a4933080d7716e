#include "sales/payment.h"

#include "common/numbers.h"
#include "sales/display.h"

namespace sales {

Payment::Payment(common::Devices& devices, double net, std::vector<common::Choice> workers,
                 std::int64_t chosen)
    : devices_(devices), net_(common::round_decimals(net, 2)), paid_(net_), workers_(std::move(workers)) {
    choose_worker(chosen);
    refresh_display();
}

// Without what a binary difference leaves below the smallest coin.
double Payment::change() const {
    return common::round_decimals(paid_ - net_, 2);
}

std::string Payment::net_text() const {
    return common::format_amount(net_);
}
std::string Payment::paid_text() const {
    return common::format_amount(paid_);
}
std::string Payment::change_text() const {
    return common::format_amount(change());
}

void Payment::type_paid(std::string_view text) {
    paid_ = common::numeric_value(text);
    refresh_display();
}

void Payment::choose_worker(std::int64_t code) {
    worker_ = contains(workers_, code) ? code : 0;
}

PaymentConfirmed Payment::confirm() {
    show_on_display(devices_, welcome_text);
    return {paid_, change(), worker_, name_of(workers_, worker_)};
}

void Payment::cancel() {
    show_on_display(devices_, welcome_text);
}

void Payment::refresh_display() {
    show_on_display(devices_, display_text(net_, change()));
}

}  // namespace sales
