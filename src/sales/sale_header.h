// The header of the invoice being rung up: kind, payment, parties, store, date.
#pragma once

#include "sales/sale.h"

namespace sales {

class SaleHeader : DeskPart {
  public:
    explicit SaleHeader(DeskState& state) : DeskPart(state) {}

    // Goods that another store was to supply need no transfer if that store now sells them. Draws the number
    // again. Returns false after showing why the store stays.
    bool choose_store(std::int64_t code);
    // The invoice keeps this day; without it, it is of the day on which it is saved.
    bool choose_date(const common::Date& date);
    // These return false, with nothing changed, if the code is not in the list or the invoice is partly
    // saved.
    bool choose_customer(std::int64_t code);
    bool choose_tips_receiver(std::int64_t code);
    bool choose_bank(std::int64_t code);
    bool choose_worker(std::int64_t code);  // 0 for none
    void choose_walk_in(std::optional<WalkInCustomer> customer) { invoice_.walk_in = std::move(customer); }
    void enter_card(std::string_view holder, std::string_view reference);
    void enter_note(std::string_view note) { invoice_.note = note; }
    void enter_permit(bool opened, std::string_view number);
    void suppress_receipt(bool suppress) { invoice_.suppress_receipt = suppress; }
    void choose_price_level(int level);  // 2 retail, 3 wholesale, 4, 5; for lines to come

    // A refused switch leaves the option of the current kind selected.
    bool SwitchKind(KindOption kind);
    bool SwitchPayment(PaymentOption payment);
    // F4: from a sale to a return, from the return and the third kind to a sale.
    bool toggle_kind();
    // F5: from cash to account, from the other payments to cash.
    bool toggle_payment();

  private:
    void apply_kind(KindOption kind);
    void apply_payment(PaymentOption payment);
};

}  // namespace sales
