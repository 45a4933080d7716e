// What must hold before an invoice may be saved.
#pragma once

#include <cstdint>
#include <optional>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "signin/session.h"

namespace sales {

// Runs the checks in their order and shows the message of the first that fails. Reads only. Returns the
// number of the drawer's open shift if all pass.
std::optional<std::int64_t> check_before_saving(database::Connection& connection,
                                                const signin::Session& session, common::Prompts& prompts,
                                                const Invoice& invoice);

}  // namespace sales
