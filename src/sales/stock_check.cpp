#include "sales/stock_check.h"

#include <algorithm>

#include "common/numbers.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

using database::Sql;

void ItemStock::ask(database::Reads& reads, std::int64_t item, const std::set<std::int64_t>& stores) {
    for (const std::int64_t store : stores) {
        reads.add(Sql("select sum(quan) as qt from stk where icode = ") + item + " AND stcode = " + store,
                  [this, store](const database::Result& rows) { sums_[store] = database::first_cell(rows); });
    }
    reads.add(Sql("select sum(quan1) as rq from reservd where icode = ") + item,
              [this](const database::Result& rows) {
                  reserved_ = database::number_of(database::first_cell(rows));
              });
}

std::set<std::int64_t> stores_asked(const Invoice& invoice, std::int64_t item, std::int64_t supplier) {
    std::set<std::int64_t> stores = {invoice.store};
    if (supplier != 0) stores.insert(supplier);
    for (const Line& line : invoice.lines)
        if (line.item_code == item) stores.insert(invoice.source_of(line));
    return stores;
}

double held_by_lines(const Invoice& invoice, std::int64_t item, std::int64_t store, const Line* except) {
    double held = 0;
    for (const Line& line : invoice.lines) {
        if (&line == except || line.item_code != item) continue;
        if (invoice.source_of(line) == store) held += line.base_quantity();
    }
    return held;
}

bool supplier_suffices(const Invoice& invoice, const Line& line, double quantity, double held) {
    if (!line.is_supplied() || !line.item_code || invoice.is_return()) return true;
    return stock_suffices(
        held, quantity * line.factor + held_by_lines(invoice, *line.item_code, line.source_store, &line));
}

Goods goods_taken(const Invoice& invoice) {
    Goods goods;
    if (invoice.is_return()) return goods;
    for (const Line& line : invoice.lines)
        if (line.moves_stock()) goods[{*line.item_code, invoice.source_of(line)}] += line.base_quantity();
    return goods;
}

Sql levels_statement(const Goods& goods) {
    Sql statement("select icode, stcode, sum(quan) as quan from stk where icode in (0");
    for (const auto& [place, quantity] : goods)
        statement += Sql(", ") + place.first;
    return statement + ") group by icode, stcode";
}

Goods stock_levels(const database::Result& levels) {
    Goods goods;
    for (const auto& row : levels)
        goods[{row.integer("icode"), row.integer("stcode")}] = row.number("quan");
    return goods;
}

Goods without(Goods levels, const Goods& goods) {
    for (const auto& [place, quantity] : goods)
        levels[place] -= quantity;
    return levels;
}

// Servers store the first day of 1900 for a date that was left empty.
void BatchDates::ask(database::Reads& reads, const Goods& goods) {
    Sql statement(
        "select icode, stcode, min(edate) as oldest from stk where quan > 0 and edate > '1900/01/01' "
        "and icode in (0");
    for (const auto& [place, quantity] : goods)
        statement += Sql(", ") + place.first;
    reads.add(statement + ") group by icode, stcode", [this](const database::Result& rows) {
        for (const auto& row : rows)
            oldest_[{row.integer("icode"), row.integer("stcode")}] = row.moment("oldest").date;
    });
}

std::optional<common::Date> BatchDates::expired(const Invoice& invoice, const Line& line) const {
    if (!line.moves_stock() || invoice.is_return()) return std::nullopt;
    const auto batch = oldest_.find({*line.item_code, invoice.source_of(line)});
    return batch == oldest_.end() || batch->second >= invoice.date ? std::nullopt
                                                                   : std::optional(batch->second);
}

const Line* first_short_line(const Invoice& invoice, const Goods& levels) {
    if (invoice.is_return()) return nullptr;
    std::map<std::int64_t, double> needed;
    for (const Line& line : invoice.lines) {
        if (!line.moves_stock() || line.below_stock || line.is_supplied()) continue;
        double& need = needed[*line.item_code];
        need += line.base_quantity();
        const auto level = levels.find({*line.item_code, invoice.store});
        if (!stock_suffices(level == levels.end() ? 0 : level->second, need)) return &line;
    }
    return nullptr;
}

namespace {

audit::Event event_of(const Line& line, double quantity) {
    return {.what = line.name + ": " + common::format_quantity(quantity) + " " + line.unit_name,
            .amount = common::Amount(quantity * line.price),
            .item = line.item_code};
}

}  // namespace

bool StockCheck::line_allows(const Invoice& invoice, const Line& line, double quantity,
                             const ItemStock& stock, const std::optional<CraftsmanLine>& work) {
    const auto refuse = [this](std::string_view text) {
        prompts_.message(text);
        return false;
    };
    if (line.returnable && !stock_suffices(*line.returnable, quantity))
        return refuse(message::quantity_not_allowed);
    if (line.salver_code != 0) {
        double needed = quantity;
        for (const Line& other : invoice.lines)
            if (&other != &line && other.salver_code == line.salver_code) needed += other.quantity;
        if (!work || !stock_suffices(work->left, needed)) return refuse(message::quantity_not_allowed);
    }
    if (line.is_supplied() && !supplier_suffices(invoice, line, quantity, stock.in(line.source_store)))
        return refuse(message::transfer_store_short);
    return true;
}

StockAnswer StockCheck::selling_store_allows(const Invoice& invoice, const Line& line, double quantity,
                                             const ItemStock& stock, std::string_view refusal) {
    approval_.reset();
    if (!line.moves_stock() || invoice.is_return()) return StockAnswer::enough;
    const std::int64_t item = *line.item_code;
    const double needed = quantity * line.factor + held_by_lines(invoice, item, invoice.store, &line);
    const double available = stock.in(invoice.store);
    if (stock_suffices(available, needed)) return StockAnswer::enough;
    // Reserved goods are there, so selling them is one question and not also a sale below stock.
    if (stock.reserved() > 0 && stock_suffices(stock.reserved(), needed - available))
        return ask_for_reserved(event_of(line, quantity));
    const auto permit = signin::authorise(session_, prompts_, signin::Action::sell_below_stock, refusal,
                                          common::Icon::none, event_of(line, quantity));
    if (!permit || permit.approver) return judge(permit, signin::Action::sell_below_stock);
    return ask_override(line, available, needed) ? StockAnswer::confirmed : StockAnswer::refused;
}

// What a supervisor allows needs no second question.
StockAnswer StockCheck::judge(const signin::Permit& permit, signin::Action action) {
    if (permit.approver) approval_ = Approval{action, *permit.approver};
    return permit ? StockAnswer::confirmed : StockAnswer::refused;
}

void StockCheck::keep_approval(Approvals& approvals, double quantity) const {
    if (!approval_) return;
    approve(approvals, *approval_);
    use_approval(approvals, approval_->action, quantity, std::nullopt);
}

bool StockCheck::dates_allow(const Invoice& invoice, Line& line, const BatchDates& dates) {
    const bool was_asked = std::any_of(invoice.lines.begin(), invoice.lines.end(), [&](const Line& other) {
        return other.dates_checked && other.item_code == line.item_code &&
               invoice.source_of(other) == invoice.source_of(line);
    });
    const auto expired = dates.expired(invoice, line);
    if (expired && !was_asked) {
        std::string text(message::override_item);
        text += line.name;
        text += message::expired_on;
        text += common::date_text(*expired);
        text += message::expired_question;
        if (!prompts_.question(text, common::Icon::exclamation)) return false;
    }
    line.dates_checked = true;
    return true;
}

StockAnswer StockCheck::ask_for_reserved(const audit::Event& about) {
    if (!prompts_.question(message::stock_reserved, common::Icon::critical)) return StockAnswer::refused;
    return judge(signin::authorise(session_, prompts_, signin::Action::sell_reserved,
                                   message::may_not_sell_reserved, common::Icon::critical, about),
                 signin::Action::sell_reserved);
}

// Names item, stock and need in the cashier's unit.
bool StockCheck::ask_override(const Line& line, double available, double needed) {
    const auto quantity = [&](double base) {
        return common::format_quantity(base / line.factor) + " " + line.unit_name;
    };
    std::string text(message::override_item);
    text += line.name;
    text += message::override_stock;
    text += quantity(available);
    text += message::override_need;
    text += quantity(needed);
    text += message::override_question;
    return prompts_.question(text, common::Icon::critical);
}

}  // namespace sales
