#include "sales/payment.h"

#include "common/ports.h"
#include "common/typed.h"
#include "sales/messages.h"

namespace sales {

std::string display_text(common::Amount amount, common::Amount change) {
    constexpr std::size_t line_length = 20;
    std::string text = "Total  " + amount.text();
    if (text.size() < line_length) text.resize(line_length, ' ');
    return text + "Change  " + change.text();
}

void ShowOnDisplay(common::Devices& devices, std::string_view text) {
    std::string bytes = "\x1F\x11";
    bytes += text;
    devices.write_file(display_file, bytes);
}

common::PortFault OpenDrawer(common::Devices& devices, std::string_view port, std::string_view command) {
    return port.empty() ? common::PortFault::none : devices.write_port(port, command);
}

Payment::Payment(common::Devices& devices, common::Amount net, std::vector<common::Choice> workers,
                 std::int64_t chosen, std::string_view note, std::string_view greeting)
    : devices_(devices),
      net_(net),
      paid_(net),
      note_(note),
      greeting_(greeting),
      workers_(std::move(workers)) {
    choose_worker(chosen);
    refresh_display();
}

void Payment::type_paid(std::string_view text) {
    const bool no_number = common::number_fault(text) == common::NumberFault::no_number;
    const auto typed = no_number ? common::TypedAmount() : common::read_amount(text);
    refusal_ = typed.refusal;
    if (typed.is_good()) paid_ = typed.value;
    refresh_display();
}

void Payment::pay(common::Amount amount) {
    refusal_ = {};
    paid_ = amount;
    refresh_display();
}

bool Payment::agreed(common::Prompts& prompts) const {
    if (change() >= common::Amount()) return true;
    return prompts.question(
        std::string(message::underpaid) + (-change()).text() + std::string(message::underpaid_question),
        common::Icon::critical);
}

void Payment::choose_worker(std::int64_t code) {
    worker_ = contains(workers_, code) ? code : 0;
}

PaymentConfirmed Payment::confirm() {
    ShowOnDisplay(devices_, greeting_);
    return {{paid_, change()}, worker_, name_of(workers_, worker_)};
}

void Payment::cancel() {
    ShowOnDisplay(devices_, greeting_);
}

void Payment::refresh_display() {
    ShowOnDisplay(devices_, display_text(net_, change()));
}

}  // namespace sales
