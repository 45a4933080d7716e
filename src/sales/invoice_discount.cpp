#include "sales/invoice_discount.h"

#include <optional>

#include "common/numbers.h"
#include "common/text.h"
#include "sales/line_limits.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

namespace {

// What the field says; an emptied field says 0.
std::optional<double> typed_discount(std::string_view text) {
    if (common::trim(text).empty()) return 0;
    const auto typed = common::parse_number(text);
    if (!typed || !is_valid_discount(*typed)) return std::nullopt;
    return typed;
}

bool refuse(Invoice& invoice, common::Prompts& prompts, std::string_view text) {
    prompts.message(text);
    invoice.discount_percent = 0;
    return false;
}

bool grant(Invoice& invoice, const signin::Session& session, common::Prompts& prompts, double discount,
           double percent) {
    const double total = invoice.total();
    if (discount >= total) return refuse(invoice, prompts, message::check_discount);
    if (exceeds_ceiling(discount, total, session.settings.max_dis) &&
        !signin::authorise(session, prompts, signin::Action::discount_above_ceiling,
                           message::invoice_discount_refused, common::Icon::none)) {
        invoice.discount_percent = 0;
        return false;
    }
    invoice.discount_percent = percent;
    if (makes_loss(total - discount, invoice.cost())) prompts.message(message::discount_loses);
    return true;
}

}  // namespace

bool commit_discount_value(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                           std::string_view text) {
    const auto value = typed_discount(text);
    if (!value) return refuse(invoice, prompts, message::check_discount);
    const double total = invoice.total();
    return grant(invoice, session, prompts, *value, total > 0 ? *value * 100 / total : 0);
}

bool commit_discount_percent(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                             std::string_view text) {
    const auto percent = typed_discount(text);
    if (!percent) return refuse(invoice, prompts, message::check_discount);
    return grant(invoice, session, prompts, invoice.total() * *percent / 100, *percent);
}

}  // namespace sales
