// The sales screen without its window (object `Form31`): the invoice being rung up, and the parts that act on
// it. A window calls an action of a part and then repaints from sale().
#pragma once

#include <utility>

#include "sales/entry.h"
#include "sales/held_invoices.h"
#include "sales/items.h"
#include "sales/matches.h"
#include "sales/offers.h"
#include "sales/sale.h"
#include "sales/search.h"
#include "sales/tiles.h"

namespace sales {

// The header of the invoice being rung up: kind, payment, parties, store, date.
class SaleHeader : DeskPart {
  public:
    explicit SaleHeader(DeskState& state) : DeskPart(state) {}

    // Goods that another store was to supply need no transfer if that store now sells them. Draws the number
    // again. Returns false after showing why the store stays.
    bool choose_store(std::int64_t code);
    // The invoice keeps this day; otherwise it gets the day on which it is saved.
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

// An item for which the store that supplies it is chosen.
struct SourceItem {
    std::int64_t code = 0;
    std::string name;
    double quantity = 1;  // in the unit
    double factor = 1;    // base units in it
    int unit_code = 1;
    std::string unit_name;
    std::optional<std::size_t> row;  // its line; none for an item that is not entered yet
};

// The lines of the invoice being rung up: entering, editing and deleting them, and looking items up. Rows are
// counted from 0; the grid shows row 0 as number 1.
class SaleLines : DeskPart, public MatchSource {
  public:
    explicit SaleLines(DeskState& state) : DeskPart(state) {}

    // Enter in the item-code field; "6+" sets the last line's quantity, "5%" and "5-" the invoice discount. A
    // `supplier` is another store that the goods come from; the selling store need not hold them. Returns
    // true if a discount was granted or a line was added or raised; that line is then the current row.
    bool EnterItem(const Entry& entry, std::int64_t supplier = 0);
    // Returns true if the entry is words to search for instead of a code.
    bool is_search(const Entry& entry);
    // The second field, for lines of a recalled invoice.
    bool EnterItemForRecalled(const Entry& entry);
    // Makes a line the current one and shows its stock.
    void select_row(std::size_t row);
    // Returns true if the cell opens for editing, else false after showing why.
    bool begin_edit(std::size_t row, int column);
    // Commits a cell of columns 4 to 7. Returns false after showing why the value was refused.
    bool commit_edit(std::size_t row, int column, std::string_view text);
    // Leaves a cell as it was; what a supervisor allowed in it is over.
    void cancel_edit(std::size_t row);
    // The line that was entered last; none on an empty grid. The pop-up field and "6+" set its quantity.
    std::optional<std::size_t> last_line() const;
    bool quick_quantity(std::string_view text);
    // Turns the current line from unit to pack to carton.
    bool next_unit();
    bool CommitDiscountValue(std::string_view text);
    bool CommitDiscountPercent(std::string_view text);
    void delete_line(std::size_t row);

    // What the line-source dialog opens for: the item of the entry, or the current line's for an empty entry.
    // Returns nothing, after saying so, if another store cannot supply it.
    std::optional<SourceItem> source_item(const Entry& entry);
    // Marks a line as supplied from another store; 0 is the selling store.
    void set_supplier(std::size_t row, std::int64_t supplier);

    // Where Esc goes: the last line's quantity cell (its value shown as 1 for overtyping) if that quantity is
    // 0, otherwise the item-code field (nothing).
    std::optional<std::size_t> escape_to_quantity() const;

    FoundItems search(const SearchFilters& filters);
    MatchQuery match_query(const Entry& entry) const override;
    std::vector<Match> match(const MatchQuery& query) override;
    Popular* popular() override { return &state_.popular; }
    std::optional<ItemInfo> item_info(std::int64_t code);

  private:
    // `begins_anew`: the invoice is a new one without a day and a number yet.
    bool enter(const Entry& entry, std::int64_t supplier, bool begins_anew);
    bool commit_discount(bool (*commit)(Invoice&, const signin::Session&, common::Prompts&, std::string_view),
                         std::string_view text);
    void show_net_on_display();
    std::optional<SourceItem> source_of_line(std::size_t row) const;
};

// What pressing the save key leads to.
enum class BeginSave {
    refused,      // nothing to save; the message has been shown
    ask_payment,  // open the payment dialog with `payment()`, then SaveInvoice or cancel_payment
    save_now,     // account and card: call SaveInvoice without a payment
};

// The end of an invoice: payment, saving and cancelling, and the drawer.
class Checkout : DeskPart {
  public:
    explicit Checkout(DeskState& state)
        : DeskPart(state), saving_(connection_, session_, services_, state.printer) {}

    // Asks first about the saves that this till has not finished. After an answer nothing is begun, so that
    // the cashier sees what has become of them.
    BeginSave begin_save();
    // Asks about them, if there may be any. Returns true if one was finished or undone.
    bool settle_unfinished();
    // The reports of the shift changes that were finished since the last call, to be printed.
    std::vector<cash::ShiftReport> take_shift_reports() { return std::exchange(state_.shift_reports, {}); }
    // The dialog opened by begin_save; null without one.
    Payment* payment() { return sale_.begun_save ? sale_.begun_save->payment.get() : nullptr; }
    void cancel_payment();
    // The field that begin_save wants filled first; "" if it refused for something else or not at all.
    std::string_view refused_field() const { return refused_field_; }
    // Saves with what the open dialog holds, or with nothing paid if there is none. Each save must be begun
    // first: a second press without begin_save does nothing and returns `refused`.
    SaveOutcome SaveInvoice();

    // Both ask, then begin a new invoice with the default options. Nothing is written.
    bool CancelInvoice();  // the receipt, F3
    bool CancelRecord();   // the record, F2

    // Opens the drawer on the port of the settings.
    void OpenDrawer();
    // Opens the drawer on "com3", with permission.
    bool open_drawer_by_key();

  private:
    bool cancel(std::string_view name, std::string_view question);
    bool settle_all();
    void after_save();
    void renew_recalled(const common::Date& today);
    void open_drawer_on(std::string_view port);

    Saving saving_;
    std::string_view refused_field_;
};

// Saved receipts at the sales desk: brought back, returned and printed again.
class SavedReceipts : DeskPart {
  public:
    explicit SavedReceipts(DeskState& state) : DeskPart(state) {}

    // The receipts that this drawer saved today, newest first.
    std::vector<ReceiptRow> receipts_today();
    // Brings a saved receipt back by the number typed, in the series of the kind and payment selected, or by
    // the barcode on its paper.
    bool recall(std::string_view number);
    bool recall(const ReceiptRow& receipt);
    // Turns the recalled sale into the return of what is left of it (permission of the return kind).
    bool start_return();
    // The same for a receipt of the list. Returns false if the sale stayed as it was, for example without the
    // permission.
    bool start_return(const ReceiptRow& receipt);
    // Prints the recalled receipt again, or else the last one saved here (permission 221).
    bool reprint();
    // Prints a receipt of the list again and leaves the sale as it is (permission 221).
    bool reprint(const ReceiptRow& receipt);

  private:
    bool show(std::optional<RecalledInvoice> found);
    // Asks for the permit unless there is one.
    bool return_recalled(std::optional<signin::Permit> permit);
    bool print_again(const Invoice& invoice, const PaymentTaken& payment, std::int64_t shift,
                     const common::TimeOfDay& time);
    bool print_again(const RecalledInvoice& recalled);
};

// Constructed before the parts that refer to it.
struct DeskStateHolder {
    DeskState own_state;
};

// Every action keeps the desk usable whatever happens below it: an error becomes a message and a log line,
// and the invoice stays as it was.
class SalesDesk : DeskStateHolder, DeskPart {
  public:
    SalesDesk(database::Connection& connection, signin::Session& session, common::Services services,
              printing::ReceiptPrinter& printer);
    SalesDesk(const SalesDesk&) = delete;
    SalesDesk& operator=(const SalesDesk&) = delete;

    // Fills the lists, sets the date, draws the number, loads the sale period, the shifts and the news, and
    // selects the default price level. Returns false after a message if the database failed.
    bool Open();
    // Every second. At midnight the invoice gets the new day.
    void tick();
    // Reads customers, receivers and shifts again, because another screen may have changed them.
    void reload();

    const Sale& sale() const { return sale_; }
    const Invoice& invoice() const { return invoice_; }
    const Lists& lists() const { return state_.lists; }
    // Whether the invoice is a sale whose cash is counted, so that an amount can be taken by one key.
    bool takes_cash() const { return moves_cash(invoice_.payment) && !invoice_.is_return(); }
    // Whether it is a return whose net is paid out.
    bool pays_cash_out() const { return moves_cash(invoice_.payment) && invoice_.is_return(); }
    // Of the customer's screen, if the shop has set one.
    const std::optional<std::string>& screen_greeting() const { return state_.screen_greeting; }
    // Of the currency.
    const common::Denominations& denominations() const { return state_.denominations; }
    const std::optional<LastReceipt>& last_receipt() const { return state_.last_receipt; }
    const std::vector<std::string>& news() const { return news_; }
    const std::vector<ShiftRow>& shifts() const { return shifts_; }
    // The open shift of this drawer; 0 between shifts.
    std::int64_t shift_number() const;
    // "hh:mm AM/PM" at opening, "hh:mm:ss AM/PM" from the first tick on.
    const std::string& clock_text() const { return clock_text_; }

    SaleHeader& header() { return header_; }
    SaleLines& lines() { return lines_; }
    Checkout& checkout() { return checkout_; }
    SavedReceipts& receipts() { return receipts_; }
    SaleOffers& offers() { return offers_; }
    SaleTiles& tiles() { return tiles_; }
    HeldInvoices& held() { return held_; }

  private:
    SaleHeader header_{state_};
    SaleLines lines_{state_};
    Checkout checkout_{state_};
    SavedReceipts receipts_{state_};
    SaleOffers offers_{state_};
    SaleTiles tiles_{state_};
    HeldInvoices held_{state_};

    std::vector<std::string> news_;
    std::vector<ShiftRow> shifts_;
    std::string clock_text_;
    common::Date last_tick_day_;
};

}  // namespace sales
