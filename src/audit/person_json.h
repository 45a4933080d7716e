// A person as JSON (common/json.h).
#pragma once

#include "audit/event.h"
#include "common/json.h"

namespace audit {

TALLVEX_JSON(Person, code, name)

}  // namespace audit
