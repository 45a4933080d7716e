#include "sales/item_checks.h"

#include "sales/messages.h"

namespace sales {

std::optional<std::string_view> item_refusal(const Item& item, bool is_return) {
    if (item.stopped) return message::stopped;
    if (is_return && item.sale_only) return message::sale_only;
    // A factor of 0 or below says as little as a missing one.
    if (!(item.factor > 0)) {
        switch (item.unit_level) {
            case 2:
                return message::set_packs;
            case 3:
                return message::set_cartons;
            default:
                return message::set_units;
        }
    }
    return std::nullopt;
}

}  // namespace sales
