// The sales screen without its face (object `Form31`): the invoice being rung up and every action on it.
// A face calls an action and repaints from what this class then holds.
#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/services.h"
#include "database/connection.h"
#include "printing/receipt_printer.h"
#include "sales/invoice.h"
#include "sales/item_info.h"
#include "sales/kinds.h"
#include "sales/payment.h"
#include "sales/recall.h"
#include "sales/saving.h"
#include "sales/screen_lists.h"
#include "sales/search.h"
#include "signin/permissions.h"
#include "signin/session.h"

namespace sales {

// What pressing the save key leads to.
enum class BeginSave {
    refused,      // nothing to save; the message has been shown
    ask_payment,  // open the payment dialog with `payment()`, then SaveInvoice or cancel_payment
    save_now,     // account and card: call SaveInvoice without a payment
};

// The total fields as they are shown.
struct Figures {
    std::string total = "0.00";
    std::string discount_value = "0.00";
    std::string discount_percent = "0.00";
    std::string net = "0.00";
};

// The stock of the selected line's item.
struct StockShown {
    std::string quantity;               // " الكمية بالمخزن : …"
    std::vector<std::string> expiries;  // "==> yyyy/mm/dd" or "==> بدون تاريخ"
};

// An item for which a store is chosen.
struct SourceItem {
    std::int64_t code = 0;
    std::string name;
    double quantity = 1;  // in the unit
    double factor = 1;    // base units in it
    int unit_code = 1;
    std::string unit_name;
    std::optional<std::size_t> row;  // its line; none for an item that is not entered yet
};

// The last receipt saved here, for the cashier who still counts the change, and for printing it again.
struct LastReceipt {
    Invoice invoice;
    PaymentTaken payment;
    std::int64_t shift = 0;
    common::TimeOfDay time;
};

// Lines are counted from 0; the grid shows line 0 as number 1. Every action keeps the screen usable whatever
// happens below it: an error becomes a message and a log line, and the invoice stays as it was.
class SalesScreen {
  public:
    SalesScreen(database::Connection& connection, signin::Session& session, common::Services services,
                printing::ReceiptPrinter& printer);

    // Fills the lists, sets the date, draws the number, loads the sale period, the shifts and the news, and
    // selects the default price level. False when the database failed; the message has been shown.
    bool Open();

    // --- what the screen shows -----------------------------------------------------------------------
    const Invoice& invoice() const { return invoice_; }
    const Lists& lists() const { return lists_; }
    const std::vector<std::string>& news() const { return news_; }
    const std::vector<ShiftRow>& shifts() const { return shifts_; }
    // The open shift of this drawer; 0 between shifts.
    std::int64_t shift_number() const;
    // "بيع نقدي", "مرتجع الي" and the like; on account invoices invoice().customer_name stands beside it.
    std::string_view kind_label() const { return kind_caption(invoice_.kind, invoice_.payment); }
    std::uint32_t grid_colour() const { return sales::grid_colour(invoice_.kind); }  // 0xBBGGRR
    bool payment_enabled(PaymentOption payment) const {
        return sales::payment_enabled(payment, invoice_.kind);
    }
    std::string number_text() const { return std::to_string(invoice_.number); }
    // "hh:mm AM/PM" at opening, "hh:mm:ss AM/PM" from the first tick of the timer on.
    const std::string& clock_text() const { return clock_text_; }
    // At midnight the invoice on the screen takes the new day.
    void tick();
    const Figures& figures() const { return figures_; }
    std::array<std::string, column::count> cells(std::size_t row) const {
        return invoice_.lines[row].cells(static_cast<int>(row) + 1);
    }
    // The line that the cursor is on; none on an empty grid.
    std::optional<std::size_t> current_row() const { return current_row_; }
    const StockShown& stock_shown() const { return stock_shown_; }
    const std::string& display_text() const { return display_text_; }  // last sent to the customer display
    const std::optional<LastReceipt>& last_receipt() const { return last_receipt_; }
    // A saved receipt is on the screen, as it was saved or as the return started from it.
    bool recalled() const { return recalled_.has_value(); }
    const std::optional<RecalledInvoice>& recalled_invoice() const { return recalled_; }
    // The recalled receipt stands as it was saved; a return that was started from it does not.
    bool shows_saved_receipt() const {
        return recalled_ && recalled_->invoice.is_return() == invoice_.is_return();
    }
    // The invoice on the screen was saved in part, up to this step: it stays, unchangeable, until it is
    // cancelled.
    const std::optional<SaveStep>& partly_saved() const { return partly_saved_; }
    // The offer that the invoice on the screen was loaded from; 0 for none.
    std::int64_t loaded_offer() const { return loaded_offer_; }
    // An action is at work, perhaps waiting for an answer; another one would be ignored.
    bool busy() const { return busy_; }

    // --- header --------------------------------------------------------------------------------------
    void choose_store(std::int64_t code);  // draws the number again
    // The invoice keeps this day; without it, it is of the day on which it is saved.
    bool choose_date(const common::Date& date);
    // An account customer by code; false, with nothing changed, when the list has it not.
    bool choose_customer(std::int64_t code);
    bool choose_tips_receiver(std::int64_t code);
    bool choose_bank(std::int64_t code);
    void enter_card(std::string_view holder, std::string_view reference);
    void choose_walk_in(std::optional<WalkInCustomer> customer) { invoice_.walk_in = std::move(customer); }
    bool choose_worker(std::int64_t code);  // 0 for none
    void enter_note(std::string_view note) { invoice_.note = note; }
    void enter_permit(bool opened, std::string_view number);
    void suppress_receipt(bool suppress) { invoice_.suppress_receipt = suppress; }
    void reload_customers();  // after a neighbouring screen added one
    void reload_shifts();     // after the shift screen

    // --- kind, payment, price level, number ----------------------------------------------------------
    // A refused switch leaves the option of the current kind selected; repaint the options from invoice().
    bool SwitchKind(KindOption kind);
    bool SwitchPayment(PaymentOption payment);
    bool toggle_kind();                  // F4
    bool toggle_payment();               // F5
    void choose_price_level(int level);  // 2 retail, 3 wholesale, 4, 5; prices of lines to come
    void NextInvoiceNumber();

    // --- lines ---------------------------------------------------------------------------------------
    // Enter in the item-code field. The field is cleared and focused afterwards whatever came of it. True
    // when a line was added or raised; it is then the current row.
    bool EnterItem(std::string_view text);
    // The second field, for lines of a recalled invoice.
    bool EnterItemForRecalled(std::string_view text);
    // Selects a line and shows its stock.
    void select_row(std::size_t row);
    void show_stock(std::size_t row);
    // True when the cell opens for editing; else the reason has been said.
    bool begin_edit(std::size_t row, int column);
    // Commits a cell of columns 4 to 7. False when the value was refused (the reason has been said).
    bool commit_edit(std::size_t row, int column, std::string_view text);
    // The pop-up field for the last line's quantity.
    bool quick_quantity(std::string_view text);
    bool CommitDiscountValue(std::string_view text);
    bool CommitDiscountPercent(std::string_view text);
    void delete_line(std::size_t row);
    // What a line-source dialog is to be opened for: the item whose code was typed, or the current line's.
    // None, which has been said, when there is nothing that another store could supply.
    std::optional<SourceItem> source_item(std::string_view typed);
    // Enters an item that another store supplies; the selling store need not hold it.
    bool EnterItemFrom(std::string_view text, std::int64_t source_store);
    // Marks a line as supplied from another store, or from the selling store again.
    void set_line_source(std::size_t row, SourceKind kind, std::int64_t source_store);
    void RecalcTotals();
    // What Esc goes to: the last line's quantity cell (its value shown as 1 for overtyping) when that
    // quantity is 0, otherwise the item-code field (none).
    std::optional<std::size_t> escape_to_quantity() const;

    // --- search and information ----------------------------------------------------------------------
    std::vector<FoundItem> search(const SearchFilters& filters);
    std::optional<ItemInfo> item_info(std::int64_t code);

    // --- display and drawer --------------------------------------------------------------------------
    void ShowOnDisplay(std::string_view text);
    void OpenDrawer();          // on the port of the settings
    bool open_drawer_by_key();  // on "com3", with permission

    // --- payment, saving, cancelling -----------------------------------------------------------------
    BeginSave begin_save();
    // The dialog opened by begin_save.
    Payment* payment() { return payment_.get(); }
    void cancel_payment();
    // Saves with what the open dialog holds, or with nothing paid where there is none. Each save must have
    // been begun: a second press without begin_save does nothing and answers `refused`.
    SaveOutcome SaveInvoice();
    // Both ask, then leave a new invoice with the default options: nothing of the cancelled one, neither
    // lines nor customer nor card, may reach the next sale. Nothing is written.
    bool CancelInvoice();  // the receipt, F3
    bool CancelRecord();   // the record, F2
    // Brings a saved receipt back by the number typed, in the series of the kind and payment selected.
    bool recall(std::string_view number);
    bool recall(const ReceiptRow& receipt);
    // The receipts that this drawer saved today, newest first.
    std::vector<ReceiptRow> receipts_today();
    // Turns the recalled sale into the return of what is left of it (permission of the return kind).
    bool start_return();
    // Prints the recalled receipt again, or else the last one saved here (permission 221).
    bool reprint();
    // Prints a receipt of the list again, leaving the screen as it is (permission 221).
    bool reprint(const ReceiptRow& receipt);
    // Keeps the lines as a new offer and clears the screen. Returns the offer's number; 0 when it was
    // refused, which has been said.
    std::int64_t SaveOffer();
    // Replaces the invoice by an offer, as a new invoice with the next number. An unknown number is said and
    // changes nothing.
    bool LoadOffer(std::int64_t number);
    // A new, empty invoice with the next number and the default options, unasked.
    void clear();

  private:
    // Runs one action of the cashier. An error becomes a message and a log line, the invoice is put back as
    // it was, and `otherwise` is answered; so it is for an action that comes while another still runs.
    template <typename Answer, typename Action>
    Answer guarded(std::string_view name, Answer otherwise, Action action);
    void report(std::string_view name, const std::exception& error);

    common::Date server_date();
    void take_day(const common::Date& today);
    void look_for_sale_period();
    void apply_kind(KindOption kind);
    void apply_payment(PaymentOption payment);
    void draw_number();
    bool enter(std::string_view text, std::int64_t source_store = 0);
    void line_changed(std::optional<std::size_t> row);
    void refresh_stock();
    bool lines_complete();
    bool authorise(signin::Action action);
    void reset_invoice();
    void finish_save(const PaymentTaken& taken);
    // True, after saying so, while the invoice is partly saved.
    bool frozen();
    // Asks before an invoice in work makes way for another one.
    bool may_replace_invoice();
    bool show_recalled(std::optional<RecalledInvoice> found);
    void renew_recalled();

    database::Connection& connection_;
    signin::Session& session_;
    common::Services services_;
    printing::ReceiptPrinter& printer_;
    Saving saving_;

    Invoice invoice_;
    Lists lists_;
    std::vector<std::string> news_;
    std::vector<ShiftRow> shifts_;
    std::string clock_text_;
    Figures figures_;
    std::optional<std::size_t> current_row_;
    StockShown stock_shown_;
    std::string display_text_;
    std::int64_t chosen_store_ = 0;
    std::int64_t chosen_customer_ = walk_in_customer;  // kept while the payment is another
    std::optional<LastReceipt> last_receipt_;
    std::optional<RecalledInvoice> recalled_;
    bool recalled_edited_ = false;
    bool date_chosen_ = false;
    common::Date ticked_day_;                  // of the last tick
    std::optional<std::int64_t> sale_period_;  // whose prices `tmp_price` holds, as far as this till knows
    bool period_looked_for_ = false;           // since the invoice on the screen was begun
    std::optional<SaveStep> partly_saved_;
    std::int64_t loaded_offer_ = 0;
    std::unique_ptr<Payment> payment_;
    bool save_begun_ = false;
    std::int64_t shift_ = 0;  // found when the save was begun
    bool busy_ = false;
};

}  // namespace sales
