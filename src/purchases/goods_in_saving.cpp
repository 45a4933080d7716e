// The checks of goods in before a save, and the save.
#include "accounts/parties.h"
#include "common/messages.h"
#include "common/typed.h"
#include "database/choices.h"
#include "database/reads.h"
#include "purchases/goods_in.h"
#include "purchases/messages.h"
#include "purchases/new_prices.h"
#include "reports/frozen_day.h"
#include "signin/permissions.h"

namespace purchases {

using common::Refusal;
using database::quoted;
using database::Sql;

namespace {

constexpr std::size_t names_shown = 5;

}  // namespace

std::optional<Refusal> GoodsIn::check() {
    if (auto refused = take_head()) return refused;
    if (auto refused = take_foot()) return refused;
    if (!receipt_.supplier) return Refusal("receipt_supplier", message::choose_supplier);
    if (receipt_.lines.empty()) return Refusal("", message::no_lines);
    if (!common::read_amount(receipt_.net().text()).is_good()) return Refusal("", message::too_much);
    if (receipt_.drawer && !contains(drawers_, *receipt_.drawer))
        return Refusal("receipt_drawer", common::message::no_such_drawer);
    return std::nullopt;
}

bool GoodsIn::confirm_names(const std::vector<std::string>& names, std::string_view before,
                            std::string_view after) {
    if (names.empty()) return true;
    std::string text(before);
    for (std::size_t at = 0; at < names.size() && at < names_shown; ++at)
        text += (at == 0 ? "\n" : "، ") + names[at];
    if (names.size() > names_shown) text += " …";
    return services_.prompts.question(text + "\n" + std::string(after), common::Icon::exclamation);
}

bool GoodsIn::confirm_invoice() {
    if (receipt_.invoice.empty() || receipt_.is_return()) return true;
    const auto same =
        connection_.query(Sql("select pnum from purchase where ctype = 1 and vcode = ") + *receipt_.supplier +
                          " and perm_no = " + quoted(receipt_.invoice) + " and pnum <> " + receipt_.corrects);
    return same.empty() || services_.prompts.question(
                               std::string(message::same_invoice_before) + receipt_.invoice +
                                   std::string(message::same_invoice_between) + same.front().text("pnum") +
                                   std::string(message::same_invoice_after),
                               common::Icon::exclamation);
}

bool GoodsIn::confirm() {
    std::vector<std::string> free;
    std::vector<std::string> below_cost;
    std::vector<std::string> expired;
    for (std::size_t at = 0; at < receipt_.lines.size(); ++at) {
        const Line& line = receipt_.lines[at];
        if (line.value().is_zero()) free.push_back(line.name);
        if (retail_of(at) > 0 && retail_of(at) <= cost_of(at)) below_cost.push_back(line.name);
        if (line.batch() <= receipt_.date) expired.push_back(line.name);
    }
    if (reports::is_frozen(connection_, receipt_.store, receipt_.date) &&
        !services_.prompts.question(message::ask_closed_day, common::Icon::exclamation))
        return false;
    if (!confirm_invoice() || !confirm_names(free, message::free_goods, message::ask_free_goods))
        return false;
    return receipt_.is_return() ||
           (confirm_names(below_cost, message::below_cost, message::ask_all_the_same) &&
            confirm_names(items_lowered_with_retail(), message::lowered_with_retail,
                          message::ask_all_the_same) &&
            confirm_names(expired, message::expired, message::ask_all_the_same));
}

// The items that have a price of its own below retail, such as wholesale, that the new retail price takes
// along. One that was the retail price follows it without a word, as on the item's card.
std::vector<std::string> GoodsIn::items_lowered_with_retail() {
    const std::vector<common::Amount> costs = receipt_.costs();
    std::vector<std::string> names;
    database::Reads reads;
    for (std::size_t at = 0; at < receipt_.lines.size(); ++at) {
        const Line& line = receipt_.lines[at];
        if (!line.new_retail && !line.margin) continue;
        const double base_cost = costs[at].value() / line.base_quantity();
        reads.add(sales::item_statement(line.item),
                  [&line, &names, base_cost](const database::Result& cards) {
                      if (cards.empty()) return;
                      for (const goods::NewPrice& retail : new_prices(line, base_cost, cards.front())) {
                          const auto now = goods::level_prices(cards.front(), retail.unit_level);
                          const double former = now[sales::retail_level - 1].value_or(0);
                          for (const auto& lowered : goods::lowered_with(retail, now))
                              if (!goods::same_price(*lowered.from, former))
                                  return names.push_back(line.name);
                      }
                  });
    }
    reads.run(connection_);
    return names;
}

std::optional<Refusal> GoodsIn::save() {
    if (auto refused = check()) return refused;
    if (!signin::authorise_change(session_, services_.prompts, signin::Action::receive_goods) ||
        (!number_of(connection_, receipt_) && !confirm()))
        return Refusal("", "");
    try {
        saved_ = purchases::save(connection_, session_, receipt_, services_.clock.now());
    } catch (const Refused& refused) {
        return refused.refusal;
    }
    forget();
    return std::nullopt;
}

}  // namespace purchases
