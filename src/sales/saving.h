// Saving an invoice: the checks, the receipt, and every row in its fixed order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/date_time.h"
#include "common/prompts.h"
#include "common/services.h"
#include "database/connection.h"
#include "printing/receipt.h"
#include "printing/receipt_printer.h"
#include "sales/claim.h"
#include "sales/invoice.h"
#include "sales/payment.h"
#include "sales/stock_movement.h"
#include "signin/session.h"

namespace sales {

enum class SaveOutcome {
    saved,         // every row is written and durable
    refused,       // a check failed, or an error came before the first row of the invoice: nothing is written
    partly_saved,  // an error came later, or may have: what was written stays, saving again is forbidden
};

// The steps that write or print, in their order; the log names the last one that finished.
enum class SaveStep {
    none,
    walk_in,
    receipt,
    account_balance,
    header,
    bank,
    lines,
    transfers,  // of lines supplied from another store, just before the sale's own stock movement
    stock,
    craftsman_lines,
    reservations,
};
// The step's name in Arabic, for the cashier and the log.
std::string_view name_of(SaveStep step);

// The receipt of an invoice, as the printers take it.
printing::Receipt receipt_of(const Invoice& invoice, const PaymentTaken& payment,
                             const signin::Session& session, std::int64_t shift,
                             const common::TimeOfDay& time);

// Runs the checks in their order and shows the message of the first that fails. Returns the number of the
// drawer's open shift if all pass. With `claims` number and goods are claimed if all pass, else it only
// reads.
std::optional<std::int64_t> check_before_saving(database::Connection& connection,
                                                const signin::Session& session, common::Prompts& prompts,
                                                const Invoice& invoice, Claims* claims = nullptr);

class Saving {
  public:
    Saving(database::Connection& connection, const signin::Session& session, common::Services services,
           printing::ReceiptPrinter& printer)
        : connection_(connection),
          session_(session),
          services_(services),
          printer_(printer),
          claims_(connection) {}

    // Saves the invoice under the next number of its series, which is left in `invoice`, and shows the
    // message if there is one. After `saved` everything is durable, so the drawer may open.
    SaveOutcome save(Invoice& invoice, const PaymentTaken& payment);
    // How far the last save came.
    SaveStep finished_step() const { return finished_; }

  private:
    void log_begin(const Invoice& invoice);
    void write_all(Invoice& invoice, const PaymentTaken& payment);
    void write_walk_in_customer(Invoice& invoice);
    void print_receipts(const Invoice& invoice, const PaymentTaken& payment);
    void take_another_number(Invoice& invoice);
    void find_goods_sold_elsewhere(const Invoice& invoice, StockBatches& batches);
    void move_account_balance(const Invoice& invoice);
    void write_header(const Invoice& invoice);
    void write_bank_row(const Invoice& invoice);
    void write_lines(const Invoice& invoice, StockBatches& batches);
    void fetch_from_other_stores(const Invoice& invoice, StockBatches& batches);
    void move_stock(const Invoice& invoice, StockBatches& batches);
    void move_craftsman_lines(const Invoice& invoice);
    void move_reservations(const Invoice& invoice);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    printing::ReceiptPrinter& printer_;
    Claims claims_;

    common::Moment moment_;   // of the running save
    std::int64_t shift_ = 0;  // the open shift
    SaveStep finished_ = SaveStep::none;
    bool has_written_ = false;    // a row of the invoice
    std::string sold_elsewhere_;  // the item whose goods were gone once the receipt was printed
    bool is_running_ = false;
};

// The note of the bank row of a card payment, by which tallvex-admin check finds the row again. It begins
// with a blank.
std::string card_note(bool is_sale, std::string_view reference);

}  // namespace sales
