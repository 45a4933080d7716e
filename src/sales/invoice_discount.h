// The discount on the whole invoice, typed as a value or as a percent.
#pragma once

#include <string_view>

#include "common/prompts.h"
#include "sales/invoice.h"
#include "signin/session.h"

namespace sales {

// Both keep the percent, unrounded, so that the value shown is the value typed and follows the lines
// afterwards. False when refused, which has been said: the invoice then has no discount.
bool commit_discount_value(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                           std::string_view text);
bool commit_discount_percent(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                             std::string_view text);

}  // namespace sales
