// Whether the stock allows a quantity: the one rule for entering and raising lines and for editing
// quantities.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "common/prompts.h"
#include "database/connection.h"
#include "database/reads.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "signin/permissions.h"
#include "stock/line_source.h"

namespace sales {

using stock::stock_suffices;

// What an action reads of an item's stock, once and together. It serves that action alone: the next one asks
// again, because other tills sell meanwhile.
class ItemStock {
  public:
    // Adds the reads of what these stores hold of the item and of what is reserved of it. The object must
    // still be there when they run.
    void ask(database::Reads& reads, std::int64_t item, const std::set<std::int64_t>& stores);

    // The sum of its rows in a store that was asked for; null without a row.
    const database::Value& sum(std::int64_t store) const { return sums_.at(store); }
    // The same in base units; 0 without a row.
    double in(std::int64_t store) const { return database::number_of(sum(store)); }
    double reserved() const { return reserved_; }

  private:
    std::map<std::int64_t, database::Value> sums_;
    double reserved_ = 0;
};
// The stores whose stock decides about a line of the item: the store of the invoice, the one that supplies
// the line, and those that supply the item's other lines.
std::set<std::int64_t> stores_asked(const Invoice& invoice, std::int64_t item, std::int64_t supplier);

// What the lines of an invoice take of an item from a store, in base units; `except` leaves out one line.
double held_by_lines(const Invoice& invoice, std::int64_t item, std::int64_t store,
                     const Line* except = nullptr);

// Returns false if another store supplies the line and what it holds (base units) does not cover this
// quantity and what the other lines take from there.
bool supplier_suffices(const Invoice& invoice, const Line& line, double quantity, double held);

// Base units by item and store.
using Goods = std::map<std::pair<std::int64_t, std::int64_t>, double>;
// What an invoice takes from stock, from the stores that supply its lines; nothing if it is a return.
Goods goods_taken(const Invoice& invoice);
// The statement for what the stores hold of the items of `goods`, and its result.
database::Sql levels_statement(const Goods& goods);
Goods stock_levels(const database::Result& levels);
// `levels` less `goods`.
Goods without(Goods levels, const Goods& goods);
// What the stores of `goods` have left of them, by the date of the oldest batch.
class BatchDates {
  public:
    // Adds the read. The object must still be there when it runs.
    void ask(database::Reads& reads, const Goods& goods);
    // The expiry date of the goods that the line takes first, if it has passed on the invoice's day. Nothing
    // for goods that a return brings back.
    std::optional<common::Date> expired(const Invoice& invoice, const Line& line) const;

  private:
    std::map<std::pair<std::int64_t, std::int64_t>, common::Date> oldest_;
};
// The first line that the selling store has too little for. Lines of one item are added up. Lines that
// another store supplies or that were confirmed below stock do not count.
const Line* first_short_line(const Invoice& invoice, const Goods& levels);

enum class StockAnswer {
    enough,
    confirmed,  // below stock or from reserved stock, by a user with the right to do so
    refused,
};

// Each check takes a line and the quantity that it is to hold, in its unit. The line need not be on the
// invoice yet. What the other lines of the invoice take counts too.
class StockCheck {
  public:
    StockCheck(const signin::Session& session, common::Prompts& prompts)
        : session_(session), prompts_(prompts) {}

    // The limits of the line itself: what may still be returned of its receipt, what is left of its
    // craftsman's `work` line, and what the store that supplies it holds. Returns false after showing why.
    bool line_allows(const Invoice& invoice, const Line& line, double quantity, const ItemStock& stock,
                     const std::optional<CraftsmanLine>& work);

    // The stock of the selling store. Short stock that reservations explain is asked about (permission 291
    // decides after a yes). For any other shortage, users who may sell below stock are asked, and all others
    // get `refusal`.
    StockAnswer selling_store_allows(const Invoice& invoice, const Line& line, double quantity,
                                     const ItemStock& stock, std::string_view refusal);

    // Asks before goods are sold past their date, once for each item of an invoice, and notes on the line
    // that it asked.
    bool dates_allow(const Invoice& invoice, Line& line, const BatchDates& dates);

    // Puts a supervisor's approval of the last sale below stock into a line that then holds this quantity.
    void keep_approval(Approvals& approvals, double quantity) const;

  private:
    StockAnswer judge(const signin::Permit& permit, signin::Action action);
    StockAnswer ask_for_reserved(const audit::Event& about);
    bool ask_override(const Line& line, double available, double needed);

    const signin::Session& session_;
    common::Prompts& prompts_;
    std::optional<Approval> approval_;
};

}  // namespace sales
