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

// The prices on the cards and work lines of an invoice's items, read together where they decide.
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

namespace {

// The part of a discount allowed for one quantity that holds for this one. A larger quantity gets no more.
double share_of(double discount, double quantity, double allowed_for) {
    return discount * std::min(1.0, quantity / allowed_for);
}

}  // namespace

bool has_granted_discount(const Line& line) {
    const double share =
        line.granted ? share_of(line.granted->discount, line.quantity, line.granted->quantity) : 0;
    return line.discount <= share + two_roundings;
}

bool has_granted_discount(const Invoice& invoice) {
    return invoice.discount_percent <= invoice.granted_percent &&
           std::ranges::all_of(invoice.lines, is_as_granted);
}

namespace {

const Approval* used(const Approvals& approvals, Action action) {
    const Approval* approval = approval_of(approvals, action);
    return approval != nullptr && approval->value ? approval : nullptr;
}

bool has_approved_price(const Line& line) {
    const Approval* approval = used(line.approvals, Action::edit_price);
    return approval != nullptr && is_same_price(line.price, *approval->value) &&
           (!approval->most || line.quantity <= *approval->most);
}

bool has_approved_discount(const Line& line) {
    const Approval* approval = used(line.approvals, Action::edit_discount);
    return approval != nullptr && line.discount <= share_of(*approval->value, line.quantity,
                                                            approval->most.value_or(line.quantity)) +
                                                       two_roundings;
}

bool is_approved_below_stock(const Line& line) {
    return std::ranges::any_of(std::initializer_list<Action>{Action::sell_below_stock, Action::sell_reserved},
                               [&](Action action) {
                                   const Approval* approval = used(line.approvals, action);
                                   return approval != nullptr && line.quantity <= *approval->value;
                               });
}

bool has_approved_discount(const Invoice& invoice) {
    const Approval* approval = used(invoice.approvals, Action::discount_above_ceiling);
    return approval != nullptr && invoice.discount_percent <= *approval->value &&
           invoice.total() <= common::Amount(approval->most.value_or(0));
}

// The rights that an invoice needs, tested one by one.
class InvoiceRights {
  public:
    InvoiceRights(const signin::Session& session, common::Prompts& prompts, Invoice& invoice)
        : session_(session), prompts_(prompts), invoice_(invoice) {}

    bool may_return() {
        if (!invoice_.is_return() || approval_of(invoice_.approvals, Action::return_kind) != nullptr)
            return true;
        return keep(ask(Action::return_kind, message::saving_a_return, nullptr), invoice_.approvals,
                    Action::return_kind, 0);
    }
    // Which of the two rights is asked for depended on the stock at that time.
    bool may_sell_below_stock(Line& line) {
        return !line.below_stock || signin::allows(session_, Action::sell_reserved) ||
               is_approved_below_stock(line) ||
               keep(ask(Action::sell_below_stock, message::below_stock_of_item, &line), line.approvals,
                    Action::sell_below_stock, line.quantity);
    }
    bool may_sell_at_price(Line& line) {
        return keep(ask(Action::edit_price, message::price_of_item, &line), line.approvals,
                    Action::edit_price, line.price, line.quantity);
    }
    bool may_give_discount(Line& line) {
        return has_granted_discount(line) || has_approved_discount(line) ||
               keep(ask(Action::edit_discount, message::discount_of_item, &line), line.approvals,
                    Action::edit_discount, line.discount, line.quantity);
    }
    bool may_exceed_ceiling() {
        if (!exceeds_ceiling(invoice_.discount_percent, 100, session_.settings.max_dis) ||
            has_granted_discount(invoice_) || has_approved_discount(invoice_))
            return true;
        const auto permit = signin::authorise(
            session_, prompts_, Action::discount_above_ceiling,
            std::string(message::invoice_discount_refused) + std::string(message::discount_of_other_goods),
            common::Icon::none,
            {.what = common::format_amount(invoice_.discount_percent) + "%", .amount = invoice_.discount()});
        return keep(permit, invoice_.approvals, Action::discount_above_ceiling, invoice_.discount_percent,
                    invoice_.total().value());
    }

  private:
    signin::Permit ask(Action action, std::string_view what, const Line* line) {
        const std::string name = line == nullptr ? std::string() : line->name;
        return signin::authorise(session_, prompts_, action,
                                 std::string(signin::denied) + std::string(what) + name,
                                 common::Icon::critical,
                                 {.what = name,
                                  .amount = line == nullptr ? invoice_.net() : line->total(),
                                  .item = line == nullptr ? std::nullopt : line->item_code});
    }
    bool keep(const signin::Permit& permit, Approvals& approvals, Action action, double value,
              std::optional<double> most = {}) {
        if (permit.approver) approve(approvals, {action, *permit.approver, value, most});
        return permit;
    }

    const signin::Session& session_;
    common::Prompts& prompts_;
    Invoice& invoice_;
};

}  // namespace

bool authorise_invoice(database::Connection& connection, const signin::Session& session,
                       common::Prompts& prompts, Invoice& invoice) {
    InvoiceRights rights(session, prompts, invoice);
    if (!rights.may_return()) return false;
    const bool may_set_prices = signin::allows(session, Action::edit_price);
    std::optional<CardPrices> cards;
    if (!may_set_prices) cards.emplace(connection, invoice);
    for (Line& line : invoice.lines) {
        const bool has_price =
            may_set_prices || has_granted_price(line) || has_approved_price(line) || cards->holds(line);
        if (!rights.may_sell_below_stock(line) || !(has_price || rights.may_sell_at_price(line)) ||
            !rights.may_give_discount(line))
            return false;
    }
    return rights.may_exceed_ceiling();
}

void grant_to_others(const signin::Session& session, Invoice& invoice) {
    const bool may_set_prices = signin::allows(session, Action::edit_price);
    const bool may_discount = signin::allows(session, Action::edit_discount);
    bool all_granted = true;
    for (Line& line : invoice.lines) {
        if (line.is_general()) continue;
        const bool price = has_granted_price(line);
        const bool discount = has_granted_discount(line);
        const bool may = (price || may_set_prices) && (discount || may_discount);
        if (may && !(price && discount)) line.grant_as_it_is();
        all_granted = all_granted && may;
    }
    if (all_granted && signin::allows(session, Action::discount_above_ceiling) &&
        exceeds_ceiling(invoice.discount_percent, 100, session.settings.max_dis))
        invoice.grant_as_it_is();
}

}  // namespace sales
