// The end of an invoice: payment, saving and cancelling, and the drawer.
#pragma once

#include "sales/sale.h"

namespace sales {

// What pressing the save key leads to.
enum class BeginSave {
    refused,      // nothing to save; the message has been shown
    ask_payment,  // open the payment dialog with `payment()`, then SaveInvoice or cancel_payment
    save_now,     // account and card: call SaveInvoice without a payment
};

class Checkout : DeskPart {
  public:
    explicit Checkout(DeskState& state)
        : DeskPart(state), saving_(connection_, session_, services_, state.printer) {}

    BeginSave begin_save();
    // The dialog opened by begin_save; null without one.
    Payment* payment() { return sale_.begun_save ? sale_.begun_save->payment.get() : nullptr; }
    void cancel_payment();
    // Saves with what the open dialog holds, or with nothing paid if there is none. Each save must be begun
    // first: a second press without begin_save does nothing and returns `refused`.
    SaveOutcome SaveInvoice();

    // Both ask, then leave a new invoice with the default options. Nothing is written.
    bool CancelInvoice();  // the receipt, F3
    bool CancelRecord();   // the record, F2

    // Opens the drawer on the port of the settings.
    void OpenDrawer();
    // Opens the drawer on "com3", with permission.
    bool open_drawer_by_key();

  private:
    bool cancel(std::string_view name, std::string_view question);
    void renew_recalled();

    Saving saving_;
};

}  // namespace sales
