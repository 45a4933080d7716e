// The payment dialog without its window (object `Form34`): net, paid, change and salesman; and the two
// devices at the desk, the customer display and the cash drawer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/services.h"

namespace sales {

// The display reads this file in the working directory.
inline constexpr std::string_view display_file = "xx.txt";
inline constexpr std::string_view welcome_text = "Welcome to Morvin";
// The port of the keyboard's drawer command.
inline constexpr std::string_view keyboard_drawer_port = "com3";

// Two lines in one text: "Total  " and the amount, padded with blanks to 20 characters, then "Change  " and
// the change.
std::string display_text(double amount, double change);

// Replaces what the display shows: control characters 31 (clear) and 17, then the text, without line ends.
// Errors are ignored.
void ShowOnDisplay(common::Devices& devices, std::string_view text);

// Writes the character 7 to the port. Errors are ignored.
void OpenDrawer(common::Devices& devices, std::string_view port);

// What was paid for an invoice.
struct PaymentTaken {
    double paid = 0;
    double change = 0;
};

// What the payment dialog returns.
struct PaymentConfirmed {
    double paid = 0;
    double change = 0;
    std::int64_t worker = 0;  // the chosen salesman; 0 for none
    std::string worker_name;
};

class Payment {
  public:
    // Opens for a net amount, rounded to the two decimals that are shown, because these are what the customer
    // pays. The net is proposed as paid, and the display shows it with no change. `workers` is the salesman
    // list, `chosen` the one already on the invoice.
    Payment(common::Devices& devices, double net, std::vector<common::Choice> workers,
            std::int64_t chosen = 0);

    double net() const { return net_; }
    double paid() const { return paid_; }
    double change() const;
    std::string net_text() const;
    std::string paid_text() const;    // "0.00"
    std::string change_text() const;  // "0.00", negative when too little was paid
    const std::vector<common::Choice>& workers() const { return workers_; }
    std::int64_t worker() const { return worker_; }

    // The paid field changed. Non-numbers count as 0.
    void type_paid(std::string_view text);
    void choose_worker(std::int64_t code);

    // Both end the dialog; the display then greets the next customer.
    PaymentConfirmed confirm();
    void cancel();

  private:
    void refresh_display();

    common::Devices& devices_;
    double net_ = 0;
    double paid_ = 0;
    std::vector<common::Choice> workers_;
    std::int64_t worker_ = 0;
};

}  // namespace sales
