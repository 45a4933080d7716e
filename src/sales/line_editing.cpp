#include "sales/line_editing.h"

#include "common/numbers.h"
#include "common/text.h"
#include "sales/item_lookup.h"
#include "sales/line_limits.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

bool LineEditing::refuse(std::string_view text) {
    prompts_.message(text);
    return false;
}

bool LineEditing::may_open(const Line& line, int column) {
    const bool discount = column == column::discount_value || column == column::discount_percent;
    if (!discount && column != column::quantity && column != column::price) return false;
    if (column == column::price && !signin::authorise(session_, prompts_, signin::Action::edit_price))
        return false;
    if (discount && !signin::authorise(session_, prompts_, signin::Action::edit_discount)) return false;
    if (discount && line.clearance) return refuse(message::no_clearance_discount);
    return true;
}

bool LineEditing::commit(Invoice& invoice, std::size_t row, int column, std::string_view text) {
    if (row >= invoice.lines.size()) return false;
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
    const auto quantity = common::parse_number(text);
    if (!quantity || !is_valid_quantity(*quantity)) return refuse(message::wrong_quantity);
    if (exceeds_ceiling(line.discount, *quantity * line.price, session_.settings.max_dis))
        return refuse(message::quantity_against_discount);
    if (*quantity > line.quantity &&
        (!craftsman_allows(invoice, line, *quantity) || !stock_allows(invoice, line, *quantity)))
        return false;
    line.quantity = *quantity;
    return true;
}

bool LineEditing::craftsman_allows(const Invoice& invoice, const Line& line, double quantity) {
    if (line.salver_code == 0) return true;
    const auto work = load_craftsman_line(connection_, line.salver_code, invoice.is_return());
    const double needed = quantity + salver_quantity(invoice, line.salver_code, &line);
    if (work && stock_suffices(work->left, needed)) return true;
    return refuse(message::quantity_not_allowed);
}

bool LineEditing::stock_allows(const Invoice& invoice, Line& line, double quantity) {
    if (line.returnable && !stock_suffices(*line.returnable, quantity))
        return refuse(message::quantity_not_allowed);
    if (line.is_general() || !line.stock_kept || invoice.is_return()) return true;
    const bool transferred = line.source_kind == SourceKind::other_store;
    const std::int64_t store = transferred ? line.source_store : invoice.store;
    const double needed = quantity * line.factor + held_by_lines(invoice, *line.item_code, store, &line);
    if (transferred) {
        if (stock_suffices(available_stock(connection_, *line.item_code, store), needed)) return true;
        return refuse(message::transfer_store_short);
    }
    const StockNeed need = {*line.item_code, line.name, store, line.factor, line.unit_name, needed};
    const StockAnswer answer = stock_.judge(need, message::quantity_not_allowed);
    if (answer == StockAnswer::confirmed) line.below_stock = true;
    return answer != StockAnswer::refused;
}

bool LineEditing::commit_price(Line& line, std::string_view text) {
    const auto price = common::parse_number(text);
    if (!price || !is_valid_price(*price)) return refuse(message::wrong_price);
    // A general item still waits for its quantity when its price is typed first: there is nothing to compare.
    if (line.quantity > 0 &&
        exceeds_ceiling(line.discount, *price * line.quantity, session_.settings.max_dis))
        return refuse(message::price_against_discount);
    line.price = *price;
    return true;
}

bool LineEditing::commit_discount(Line& line, std::string_view text, bool as_percent) {
    const auto typed = common::trim(text).empty() ? std::optional<double>(0) : common::parse_number(text);
    if (!typed || !is_valid_discount(*typed)) return refuse(message::wrong_discount);
    const double discount = as_percent ? line.gross() * *typed / 100 : *typed;
    // A percent of a line that is worth nothing yet would vanish unseen.
    const bool of_nothing = *typed > 0 && line.gross() <= 0;
    // Whatever the ceiling says, nobody is paid for taking the goods.
    const bool above_all = discount > line.gross();
    if (of_nothing || above_all || exceeds_ceiling(discount, line.gross(), session_.settings.max_dis)) {
        line.discount = 0;
        return refuse(message::line_discount_refused);
    }
    line.discount = discount;
    if (makes_loss(line.gross() - discount, line.quantity * line.unit_cost))
        prompts_.message(message::discount_loses);
    return true;
}

}  // namespace sales
