// Saved receipts at the sales desk: brought back, returned and printed again.
#pragma once

#include "sales/sale.h"

namespace sales {

class SavedReceipts : DeskPart {
  public:
    explicit SavedReceipts(DeskState& state) : DeskPart(state) {}

    // The receipts that this drawer saved today, newest first.
    std::vector<ReceiptRow> receipts_today();
    // Brings a saved receipt back by the number typed, in the series of the kind and payment selected.
    bool recall(std::string_view number);
    bool recall(const ReceiptRow& receipt);
    // Turns the recalled sale into the return of what is left of it (permission of the return kind).
    bool start_return();
    // Prints the recalled receipt again, or else the last one saved here (permission 221).
    bool reprint();
    // Prints a receipt of the list again and leaves the sale as it is (permission 221).
    bool reprint(const ReceiptRow& receipt);

  private:
    bool show(std::optional<RecalledInvoice> found);
    bool print_again(const RecalledInvoice& recalled);
};

}  // namespace sales
