#include "sales/rights.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/numbers.h"
#include "database/reads.h"
#include "sales/items.h"
#include "sales/line_editing.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

namespace {

using signin::Action;

bool has_granted_price(const Line& line) {
    return line.granted && line.quantity <= line.granted->quantity &&
           is_same_price(line.price, line.granted->price);
}

// The prices of the cards and work lines of an invoice's lines, where they decide, read together.
class CardPrices {
  public:
    // For the lines that have no granted price.
    CardPrices(database::Connection& connection, const Invoice& invoice) {
        database::Reads reads;
        for (const Line& line : invoice.lines)
            if (line.item_code && !has_granted_price(line)) ask(reads, invoice, line);
        reads.run(connection);
    }

    // Returns true if the line has the price of its unit on the item's card, at any level, or of its
    // craftsman's work line.
    bool holds(const Line& line) const {
        const auto prices = prices_.find(&line);
        return prices != prices_.end() && std::ranges::any_of(prices->second, [&](double price) {
                   return is_same_price(line.price, price);
               });
    }

  private:
    void ask(database::Reads& reads, const Invoice& invoice, const Line& line) {
        std::vector<double>& prices = prices_[&line];
        if (line.salver_code != 0) {
            const bool is_return = invoice.is_return();
            reads.add(craftsman_statement(line.salver_code, is_return),
                      [&prices, is_return](const database::Result& rows) {
                          const auto work = craftsman_line_of(rows, is_return);
                          if (work && work->price) prices.push_back(*work->price);
                      });
            return;
        }
        reads.add(item_statement(*line.item_code), [&prices, &line](const database::Result& cards) {
            const auto item = item_of(cards, unit_level_of(line.unit_code));
            if (!item || item->factor != line.factor) return;
            for (int level = retail_level; level <= last_level; ++level)
                if (const auto price = entry_price(*item, level)) prices.push_back(*price);
        });
    }

    std::map<const Line*, std::vector<double>> prices_;
};

// A line that was just entered, of whatever quantity, was not on the receipt or offer with the discount.
bool is_as_granted(const Line& line) {
    return has_granted_price(line) && has_granted_discount(line) && std::isfinite(line.granted->quantity);
}

}  // namespace

// For a larger quantity no more than was granted.
bool has_granted_discount(const Line& line) {
    const double share =
        line.granted ? line.granted->discount * std::min(1.0, line.quantity / line.granted->quantity) : 0;
    return line.discount <= share + two_roundings;
}

bool has_granted_discount(const Invoice& invoice) {
    return invoice.discount_percent <= invoice.granted_percent &&
           std::ranges::all_of(invoice.lines, is_as_granted);
}

bool authorise_invoice(database::Connection& connection, const signin::Session& session,
                       common::Prompts& prompts, const Invoice& invoice) {
    const auto may = [&](Action action, std::string_view what, const Line* line = nullptr) {
        const std::string name = line == nullptr ? std::string() : line->name;
        return signin::authorise(session, prompts, action,
                                 std::string(signin::denied) + std::string(what) + name,
                                 common::Icon::critical,
                                 {.what = name,
                                  .amount = line == nullptr ? invoice.net() : line->total(),
                                  .item = line == nullptr ? std::nullopt : line->item_code});
    };
    if (invoice.is_return() && !may(Action::return_kind, message::saving_a_return)) return false;
    const bool may_set_prices = signin::allows(session, Action::edit_price);
    std::optional<CardPrices> cards;
    if (!may_set_prices) cards.emplace(connection, invoice);
    for (const Line& line : invoice.lines) {
        // Which of the two rights was asked for depended on the stock then.
        if (line.below_stock && !signin::allows(session, Action::sell_reserved) &&
            !may(Action::sell_below_stock, message::below_stock_of_item, &line))
            return false;
        if (!may_set_prices && !has_granted_price(line) && !cards->holds(line) &&
            !may(Action::edit_price, message::price_of_item, &line))
            return false;
        if (!has_granted_discount(line) && !may(Action::edit_discount, message::discount_of_item, &line))
            return false;
    }
    if (!exceeds_ceiling(invoice.discount_percent, 100, session.settings.max_dis) ||
        has_granted_discount(invoice))
        return true;
    return signin::authorise(
        session, prompts, Action::discount_above_ceiling,
        std::string(message::invoice_discount_refused) + std::string(message::discount_of_other_goods),
        common::Icon::none,
        {.what = common::format_amount(invoice.discount_percent) + "%", .amount = invoice.discount()});
}

}  // namespace sales
