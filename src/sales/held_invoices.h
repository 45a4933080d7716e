// Invoices that are put aside until their customer comes back: rows of the table till_held. They take no
// number and no goods, and every till of the store sees them.
//
// The till that resumes one marks its row with the mark of its draft. The row stays until the invoice is
// saved, cancelled or held again, so a power cut loses no more of it than what was changed since.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "sales/sale.h"

namespace sales {

// A row of the list.
struct HeldInvoice {
    std::int64_t id = 0;
    common::Moment moment;  // when it was put aside
    std::string customer;
    common::Amount net;
    std::int64_t line_count = 0;
    std::int64_t drawer = 0;  // of the till that put it aside
    std::string user_name;
    std::int64_t taken = 0;  // the mark of the draft that has it now; 0 for none
    std::int64_t taken_drawer = 0;
    std::string taken_user;
    std::string content;  // the invoice as a text
};

// What a drawer's till has put aside and nobody has resumed, newest first. Empty in a shop without the table.
std::vector<HeldInvoice> held_by_drawer(database::Connection& connection, std::int64_t store,
                                        std::int64_t drawer);
// The same as a text for a cashier who closes the shift; it describes the first few of them. It begins with a
// new line, and is empty if there are none.
std::string held_words(database::Connection& connection, const signin::Session& session);

// The goods of a store that held sales contain, in base units by item. They have left the shelf but still
// count as stock.
std::map<std::int64_t, double> goods_held(database::Connection& connection, std::int64_t store);

// Holding and resuming at the sales desk.
class HeldInvoices : DeskPart {
  public:
    explicit HeldInvoices(DeskState& state) : DeskPart(state) {}

    // The held invoices of the till's store, newest first, including those that another till has resumed.
    std::vector<HeldInvoice> list();
    // What the list calls a drawer of the store.
    std::string drawer_name(std::int64_t drawer) const;

    // The held invoice that is on the screen, after it was resumed; 0 for none.
    std::int64_t id_on_screen() const { return state_.draft.mark().held; }

    // Puts the invoice on the screen aside and begins a new one. Returns false after showing why not.
    bool hold();
    // Brings a held invoice to the screen, as a new one of today with the prices that it was held at. An
    // invoice in work is put aside first, if the cashier agrees. One that another till has resumed can be
    // taken over, as it was held: that till may be gone for good.
    bool resume(const HeldInvoice& held);
    // Removes a held invoice for good, after asking.
    bool discard(const HeldInvoice& held);

    // Adds what the first reads of a run need.
    void ask(database::Reads& reads);
    // After a crash: offers the invoice that was on the screen, and gives back those that were resumed here
    // and are not.
    void offer_draft();

    // Asks whether to leave the program, or to start it again, and says what becomes of an invoice in work.
    bool may_leave(bool restarts);
    // Puts an invoice in work aside, so that every till sees it; before a restart, or if that fails, it stays
    // in the draft, to be offered at the next start. A held one whose lines were all deleted is given up.
    void leave(bool restarts);

  private:
    void put_aside(KeptInvoice kept, DraftMark mark);
    void retake(std::int64_t id) noexcept;
    std::optional<HeldInvoice> take(std::int64_t id, std::int64_t former);
    std::optional<HeldInvoice> open_elsewhere(std::int64_t id);
    std::string place_of(const HeldInvoice& held);
    bool show_who_has(std::int64_t id);
    bool takes_over(const HeldInvoice& held);
    void show(KeptInvoice kept);
    // draft_recovery.cpp
    bool is_in_work(const DraftMark& mark, std::int64_t& past);
    void give_back_others(std::int64_t kept);
    std::optional<database::JournalEntry> unfinished_save_of(const DraftMark& mark);
    void show_partly_saved(KeptInvoice kept, const database::JournalEntry& save);
    bool wants_back(const KeptInvoice& kept);

    bool has_taken_ = false;  // rows that this cash point resumed in an earlier run
    std::vector<common::Choice> drawers_;
};

}  // namespace sales
