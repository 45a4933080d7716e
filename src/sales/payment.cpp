#include "sales/payment.h"

#include "common/numbers.h"

namespace sales {

std::string display_text(double amount, double change) {
    constexpr std::size_t line_length = 20;
    std::string text = "Total  " + common::format_amount(amount);
    if (text.size() < line_length) text.resize(line_length, ' ');
    return text + "Change  " + common::format_amount(change);
}

void ShowOnDisplay(common::Devices& devices, std::string_view text) {
    std::string bytes = "\x1F\x11";
    bytes += text;
    devices.write_file(display_file, bytes);
}

void OpenDrawer(common::Devices& devices, std::string_view port) {
    if (!port.empty()) devices.write_port(port, "\x07");
}

Payment::Payment(common::Devices& devices, double net, std::vector<common::Choice> workers,
                 std::int64_t chosen)
    : devices_(devices), net_(common::round_decimals(net, 2)), paid_(net_), workers_(std::move(workers)) {
    choose_worker(chosen);
    refresh_display();
}

// Rounded, because subtracting doubles leaves an error below the smallest coin.
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
    ShowOnDisplay(devices_, welcome_text);
    return {paid_, change(), worker_, name_of(workers_, worker_)};
}

void Payment::cancel() {
    ShowOnDisplay(devices_, welcome_text);
}

void Payment::refresh_display() {
    ShowOnDisplay(devices_, display_text(net_, change()));
}

}  // namespace sales
