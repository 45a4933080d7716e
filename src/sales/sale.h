// The invoice being rung up with everything that belongs to it, and what the parts of the sales desk share.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cash/shift_report.h"
#include "common/denominations.h"
#include "common/services.h"
#include "database/connection.h"
#include "database/reads.h"
#include "printing/receipt_printer.h"
#include "sales/draft.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "sales/lists.h"
#include "sales/payment.h"
#include "sales/popular.h"
#include "sales/recall.h"
#include "sales/saving.h"
#include "signin/permissions.h"
#include "signin/session.h"

namespace sales {

// The total fields as they are shown.
struct Figures {
    std::string total = "0.00";
    std::string discount_value = "0.00";
    std::string discount_percent = "0.00";
    std::string net = "0.00";
};

// A save that the cashier has begun and not yet confirmed.
struct BegunSave {
    std::int64_t shift = 0;            // the drawer's open shift
    std::shared_ptr<Payment> payment;  // of the open payment dialog; null for account and card
};

// A new invoice is an assignment, an undo is a copy.
struct Sale {
    Invoice invoice;
    // Where the next invoice sells from; a recalled one keeps the store that it was saved in.
    std::int64_t chosen_store = 0;
    std::int64_t chosen_customer = walk_in_customer;  // kept while another payment is selected
    bool date_chosen = false;                         // the invoice keeps its date
    bool sale_period_checked = false;                 // since the invoice was begun
    std::optional<RecalledInvoice> recalled;          // the saved receipt that it is, or is a return of
    bool edited = false;                              // since it was recalled
    std::int64_t offer = 0;                           // the offer it was loaded from; 0 for none
    // Of a save that stopped part-way. The invoice then cannot be changed until it is finished, undone or
    // cancelled.
    std::optional<PartlySaved> partly_saved;
    std::optional<std::size_t> current_row;  // the line that the cursor is on; none on an empty grid
    std::optional<std::size_t> entered_row;  // the line that was entered or raised last
    Figures figures;
    StockShown stock;
    std::optional<BegunSave> begun_save;

    // The recalled receipt is shown as it was saved; a return that was started from it is a new invoice.
    bool shows_saved_receipt() const {
        return recalled && recalled->invoice.is_return() == invoice.is_return();
    }
    // A saved receipt that makes way for the next customer without a question.
    bool is_only_looked_at() const { return shows_saved_receipt() && !edited; }
    // An invoice that would be lost with the screen.
    bool is_in_work() const { return !invoice.lines.empty() && !is_only_looked_at() && !partly_saved; }
};

// The message for a change to an invoice that was saved in part.
std::string_view why_frozen(const PartlySaved& partly);

// An invoice in a line for the cashier: "عدد السطور 3 · الصافي 112.50".
std::string summary_of(const Invoice& invoice);

// The last receipt saved here, for the cashier who still counts the change, and for printing it again.
struct LastReceipt {
    Invoice invoice;
    PaymentTaken payment;
    std::int64_t shift = 0;
    common::TimeOfDay time;  // of its save
    bool is_over = false;    // the next invoice has had a line, so that its customer has gone
};

// What the parts of the sales desk work on.
struct DeskState {
    DeskState(database::Connection& connection_, signin::Session& session_, common::Services services_,
              printing::ReceiptPrinter& printer_)
        : connection(connection_), session(session_), services(services_), printer(printer_) {}

    database::Connection& connection;
    signin::Session& session;
    common::Services services;
    printing::ReceiptPrinter& printer;

    Sale sale;
    Lists lists;
    Popular popular;
    common::Denominations denominations;
    std::optional<std::string> display_greeting;  // if the shop has set one
    std::optional<std::string> screen_greeting;   // likewise
    std::optional<LastReceipt> last_receipt;
    bool raise_equal = false;  // the shop's choice: equal codes raise their line without a question
    std::optional<std::int64_t> sale_period;  // whose prices `tmp_price` holds, as far as this till knows
    bool may_have_unfinished = true;          // saves that stopped part-way stand in the journal
    std::vector<cash::ShiftReport> shift_reports;  // of shift changes that were finished here, to be printed
    Draft draft;                                   // of the invoice
    bool may_hold = false;                         // the shop has a table of held invoices
    bool busy = false;                             // an action runs, perhaps waiting for an answer
};

// The base of the parts: the guard around every action, and what several actions do.
class DeskPart {
  protected:
    explicit DeskPart(DeskState& state)
        : state_(state),
          sale_(state.sale),
          invoice_(state.sale.invoice),
          connection_(state.connection),
          session_(state.session),
          services_(state.services) {}

    // Runs an action of the cashier. On an error it shows a message, writes a log line and returns
    // `otherwise`. It also returns that for an action that comes while another still runs.
    template <typename Answer, typename Action>
    Answer look_up(std::string_view name, Answer otherwise, Action action) {
        if (state_.busy) return otherwise;
        state_.busy = true;
        try {
            Answer answer = action();
            state_.busy = false;
            if (state_.last_receipt && !invoice_.lines.empty() && !sale_.partly_saved)
                state_.last_receipt->is_over = true;
            keep_draft();
            return answer;
        } catch (const std::exception& error) {
            state_.busy = false;
            report(name, error);
            return otherwise;
        }
    }
    // The same for an action that changes the sale. After an error the sale is as it was before.
    template <typename Answer, typename Action>
    Answer change(std::string_view name, Answer otherwise, Action action) {
        return look_up(name, otherwise, [&] {
            const Sale before = sale_;
            try {
                return action();
            } catch (...) {
                sale_ = before;
                throw;
            }
        });
    }
    void report(std::string_view name, const std::exception& error);
    signin::Permit authorise(signin::Action action, audit::Event about = {}) {
        return signin::authorise(session_, services_.prompts, action, signin::denied, common::Icon::critical,
                                 std::move(about));
    }
    // Lets the invoice be a return; what a supervisor allowed is kept on it.
    static void permit_return(const signin::Permit& permit, Invoice& invoice) {
        if (permit.approver)
            approve(invoice.approvals, {signin::Action::return_kind, *permit.approver, 0, {}});
    }
    // Returns true if the invoice is a held one that another till has taken over, after showing that.
    bool is_taken_over();
    // Keeps the invoice as it now is, or forgets one that is no longer in work. Never throws.
    void keep_draft() noexcept;
    KeptInvoice kept_invoice() const;

    // The server's day; the workstation's own for an embedded shop.
    common::Date server_date();
    void ask_day(database::Reads& reads, common::Date& day);
    // The server's day and the sale period that covers it. The period is read for the workstation's day
    // first; checked_period() reads it again if the server's day differs.
    struct Today {
        common::Date assumed, day;
        std::optional<std::int64_t> period;
    };
    void ask_today(database::Reads& reads, Today& today);
    std::optional<std::int64_t> checked_period(const Today& today);
    // Gives the invoice a day, unless the cashier chose one.
    void take_day(const common::Date& today);
    // Shows the next number of the invoice's series. Saving takes it again.
    void NextInvoiceNumber();
    void ask_invoice_number(database::Reads& reads);
    // Writes the figures that follow from the lines and the discount percent.
    void RecalcTotals();
    // Makes a line the current one, and shows its stock and the totals.
    void show_line(std::optional<std::size_t> row);
    void show_line(std::size_t row, StockShown stock);
    StockShown stock_of(std::optional<std::size_t> row);

    // Selects the price level of the settings.
    void ask_default_level(database::Reads& reads);
    // An empty sale of the store and price level of this one.
    Sale empty_sale() const;
    // Begins an empty invoice with the next number and the default options. It is empty even if the database
    // fails: no data of the finished invoice may reach the next customer.
    void start_next_invoice();
    // The question before the invoice is given up, with what becomes of it on the lines below.
    std::string giving_up(std::string_view question) const;
    // Gives the invoice up: it is no longer a draft, nor held if it was resumed.
    void give_up();
    // Returns true, after saying so, if the invoice was saved in part and may not be changed.
    bool frozen();
    // Asks before an invoice in work is replaced by another.
    bool may_replace_invoice();
    // Returns false if a general item still lacks its quantity or price, after naming the first such line and
    // moving to it.
    bool lines_complete();

    DeskState& state_;
    Sale& sale_;
    Invoice& invoice_;
    database::Connection& connection_;
    signin::Session& session_;
    common::Services& services_;
};

}  // namespace sales
