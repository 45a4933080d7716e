// The guard around every action of the sales screen; included by its implementation files only.
#pragma once

#include <exception>
#include <utility>

#include "sales/sales_screen.h"

namespace sales {

template <typename Answer, typename Action>
Answer SalesScreen::guarded(std::string_view name, Answer otherwise, Action action) {
    if (busy_) return otherwise;
    busy_ = true;
    const Invoice before = invoice_;
    const std::optional<RecalledInvoice> recalled_before = recalled_;
    const std::int64_t offer_before = loaded_offer_;
    try {
        Answer answer = action();
        busy_ = false;
        return answer;
    } catch (const std::exception& error) {
        busy_ = false;
        invoice_ = before;
        recalled_ = recalled_before;
        loaded_offer_ = offer_before;
        RecalcTotals();
        report(name, error);
        return otherwise;
    }
}

}  // namespace sales
