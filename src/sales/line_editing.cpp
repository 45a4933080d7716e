#include "sales/line_editing.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "sales/items.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

namespace {

// The discount in a field; an empty field counts as 0.
common::TypedNumber read_discount(std::string_view text, std::string_view wrong) {
    if (common::trim(text).empty()) return {};
    const auto typed = common::read_number(text, wrong);
    if (typed.is_good() && !is_valid_discount(typed.value)) return {0, wrong};
    return typed;
}

}  // namespace

bool is_valid_quantity(double quantity) {
    return quantity > 0 && quantity <= largest_quantity && common::round_decimals(quantity, 3) == quantity;
}

double without_noise(double quantity) {
    const double rounded = common::round_decimals(quantity, 3);
    return std::abs(rounded - quantity) < 1e-7 ? rounded : quantity;
}

bool is_valid_price(double price) {
    return price > 0 && is_valid_discount(price);
}

bool is_valid_discount(double discount) {
    return discount >= 0 && discount <= largest_price && common::round_decimals(discount, 4) == discount;
}

bool exceeds_ceiling(double discount, double amount, float max_dis) {
    if (discount <= 0) return false;
    if (amount <= 0) return true;
    return static_cast<float>(percent_of(discount, amount)) > max_dis;
}

bool LineEditing::refuse(std::string_view text) {
    prompts_.message(text);
    return false;
}

bool LineEditing::may(Line& line, signin::Action action) {
    const Approval* approval = approval_of(line.approvals, action);
    if (approval != nullptr && !approval->value) return true;
    const auto permit = signin::authorise(session_, prompts_, action, signin::denied, common::Icon::critical,
                                          {.what = line.name, .item = line.item_code});
    if (permit.approver) approve(line.approvals, {action, *permit.approver});
    return permit;
}

bool LineEditing::may_open(Line& line, int column) {
    const bool discount = column == column::discount_value || column == column::discount_percent;
    if (!discount && column != column::quantity && column != column::price) return false;
    if (column == column::price && !may(line, signin::Action::edit_price)) return false;
    if (discount && !may(line, signin::Action::edit_discount)) return false;
    if (discount && line.clearance) return refuse(message::no_clearance_discount);
    return true;
}

bool LineEditing::commit(Invoice& invoice, std::size_t row, int column, std::string_view text) {
    if (row >= invoice.lines.size() || !may_open(invoice.lines[row], column)) return false;
    Line& line = invoice.lines[row];
    switch (column) {
        case column::quantity:
            return commit_quantity(invoice, line, text);
        case column::price:
            return commit_price(line, text);
        case column::discount_value:
            return commit_discount(line, text, false);
        case column::discount_percent:
            return commit_discount(line, text, true);
        default:
            return false;
    }
}

bool LineEditing::commit_quantity(Invoice& invoice, Line& line, std::string_view text) {
    const auto typed = common::read_number(text, message::wrong_quantity);
    if (!typed.is_good()) return refuse(typed.refusal);
    const double quantity = typed.value;
    if (!is_valid_quantity(quantity)) return refuse(message::wrong_quantity);
    // The discount of a returned line was granted at its sale.
    if (!line.returnable && exceeds_ceiling(line.discount, quantity * line.price, session_.settings.max_dis))
        return refuse(message::quantity_against_discount);
    if (quantity > line.quantity && !stock_allows(invoice, line, quantity)) return false;
    line.set_quantity(quantity);
    return true;
}

bool LineEditing::stock_allows(const Invoice& invoice, Line& line, double quantity) {
    std::optional<CraftsmanLine> work;
    ItemStock stock;
    database::Reads reads;
    if (line.salver_code != 0) {
        reads.add(craftsman_statement(line.salver_code, invoice.is_return()),
                  [&](const database::Result& rows) { work = craftsman_line_of(rows, invoice.is_return()); });
    }
    if (line.item_code) stock.ask(reads, *line.item_code, stores_asked(invoice, *line.item_code, 0));
    reads.run(connection_);
    return stock_allows(invoice, line, quantity, stock, work);
}

bool LineEditing::stock_allows(const Invoice& invoice, Line& line, double quantity, const ItemStock& stock,
                               const std::optional<CraftsmanLine>& work) {
    if (!check_.line_allows(invoice, line, quantity, stock, work)) return false;
    if (line.is_supplied()) return true;
    const StockAnswer answer =
        check_.selling_store_allows(invoice, line, quantity, stock, message::quantity_not_allowed);
    if (answer == StockAnswer::confirmed) line.below_stock = true;
    check_.keep_approval(line.approvals, quantity);
    return answer != StockAnswer::refused;
}

bool LineEditing::commit_price(Line& line, std::string_view text) {
    const auto price = common::read_number(text, message::wrong_price);
    if (!price.is_good()) return refuse(price.refusal);
    if (!is_valid_price(price.value)) return refuse(message::wrong_price);
    // A general item whose price is typed first has no quantity yet to compare with.
    if (line.quantity > 0 &&
        exceeds_ceiling(line.discount, price.value * line.quantity, session_.settings.max_dis))
        return refuse(message::price_against_discount);
    line.price = price.value;
    // The quantity of a general item is typed after its price.
    use_approval(line.approvals, signin::Action::edit_price, line.price,
                 line.is_general() ? std::nullopt : std::optional(line.quantity));
    return true;
}

bool LineEditing::commit_discount(Line& line, std::string_view text, bool as_percent) {
    const auto typed = read_discount(text, message::wrong_discount);
    if (!typed.is_good()) return refuse(typed.refusal);
    const double discount = as_percent ? line.gross() * typed.value / 100 : typed.value;
    // A percent of a line that is worth nothing yet would be lost without a word.
    const bool of_nothing = typed.value > 0 && line.gross() <= 0;
    // A ceiling above 100 percent must not make the line negative.
    const bool above_all = discount > line.gross();
    if (of_nothing || above_all || exceeds_ceiling(discount, line.gross(), session_.settings.max_dis)) {
        line.discount = 0;
        return refuse(message::line_discount_refused);
    }
    line.discount = discount;
    use_approval(line.approvals, signin::Action::edit_discount, discount, line.quantity);
    if (line.total() < line.cost()) prompts_.message(message::discount_loses);
    return true;
}

namespace {

bool refuse(Invoice& invoice, common::Prompts& prompts, std::string_view text) {
    prompts.message(text);
    invoice.discount_percent = 0;
    return false;
}

bool grant(Invoice& invoice, const signin::Session& session, common::Prompts& prompts, double discount,
           double percent) {
    const common::Amount total = invoice.total();
    if (common::Amount(discount) >= total) return refuse(invoice, prompts, message::check_discount);
    // The ceiling holds for the discount as granted: 10 % of 10.05 is 10 %, although 1.01 is more.
    if (exceeds_ceiling(discount, total.value(), session.settings.max_dis)) {
        using enum signin::Action;
        const auto permit = signin::authorise(
            session, prompts, discount_above_ceiling, message::invoice_discount_refused, common::Icon::none,
            {.what = common::format_amount(percent) + "%", .amount = common::Amount(discount)});
        if (!permit) {
            invoice.discount_percent = 0;
            return false;
        }
        if (permit.approver)
            approve(invoice.approvals, {discount_above_ceiling, *permit.approver, percent, total.value()});
    }
    invoice.discount_percent = percent;
    if (invoice.net() < invoice.cost()) prompts.message(message::discount_loses);
    return true;
}

}  // namespace

bool commit_discount_value(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                           std::string_view text) {
    const auto value = read_discount(text, message::check_discount);
    if (!value.is_good()) return refuse(invoice, prompts, value.refusal);
    return grant(invoice, session, prompts, value.value, percent_of(value.value, invoice.total().value()));
}

bool commit_discount_percent(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                             std::string_view text) {
    const auto percent = read_discount(text, message::check_discount);
    if (!percent.is_good()) return refuse(invoice, prompts, percent.refusal);
    return grant(invoice, session, prompts, invoice.total().value() * percent.value / 100, percent.value);
}

}  // namespace sales
