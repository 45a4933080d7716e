// The payment dialog without its window (object `Form34`): net, paid, change and salesman; and the two
// devices at the desk, the customer display and the cash drawer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/choice.h"
#include "common/prompts.h"
#include "common/services.h"

namespace sales {

// The display reads this file in the working directory.
inline constexpr std::string_view display_file = "xx.txt";
// What it shows between two sales in a shop that has set no greeting of its own.
inline constexpr std::string_view welcome_text = "Welcome to Morvin";
// The port of the keyboard's drawer command.
inline constexpr std::string_view keyboard_drawer_port = "com3";

// Two lines in one text: "Total  " and the amount, padded with blanks to 20 characters, then "Change  " and
// the change.
std::string display_text(common::Amount amount, common::Amount change);

// Replaces what the display shows: control characters 31 (clear) and 17, then the text, without line ends.
// Errors are ignored.
void ShowOnDisplay(common::Devices& devices, std::string_view text);

// Writes the command that opens a drawer there (ReceiptPrinter::drawer_command) to the port.
common::PortFault OpenDrawer(common::Devices& devices, std::string_view port, std::string_view command);

// What was paid for an invoice.
struct PaymentTaken {
    common::Amount paid;
    common::Amount change;
};

// What the payment dialog returns.
struct PaymentConfirmed {
    PaymentTaken taken;
    std::int64_t worker = 0;  // the chosen salesman; 0 for none
    std::string worker_name;
};

class Payment {
  public:
    // Opens for a net amount and proposes it as paid; the display shows it with no change. `workers` is the
    // salesman list, `chosen` the one already on the invoice. The note tells the cashier if the money goes
    // out of the drawer; a sale has none. The greeting is what the display shows at the end.
    Payment(common::Devices& devices, common::Amount net, std::vector<common::Choice> workers,
            std::int64_t chosen = 0, std::string_view note = {}, std::string_view greeting = welcome_text);

    common::Amount net() const { return net_; }
    std::string_view note() const { return note_; }
    common::Amount paid() const { return paid_; }
    common::Amount change() const { return paid_ - net_; }  // negative when too little was paid
    const std::vector<common::Choice>& workers() const { return workers_; }
    std::int64_t worker() const { return worker_; }

    // The paid field changed. Non-numbers count as 0. A number that is not an amount of money is refused and
    // leaves the paid amount as it was.
    void type_paid(std::string_view text);
    // Why the typed text is not an amount, in the cashier's words; empty if the payment can be confirmed.
    std::string_view refusal() const { return refusal_; }
    // The same for an amount that was chosen.
    void pay(common::Amount amount);
    // Asks before less than the net is accepted. Returns true if the payment can be confirmed.
    bool agreed(common::Prompts& prompts) const;
    void choose_worker(std::int64_t code);

    // Both end the dialog; the display then greets the next customer.
    PaymentConfirmed confirm();
    void cancel();

  private:
    void refresh_display();

    common::Devices& devices_;
    common::Amount net_;
    common::Amount paid_;
    std::string_view note_;
    std::string greeting_;
    std::string_view refusal_;
    std::vector<common::Choice> workers_;
    std::int64_t worker_ = 0;
};

}  // namespace sales
