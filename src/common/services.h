// What logic may use of the world outside the database.
#pragma once

#include "common/clock.h"
#include "common/devices.h"
#include "common/log.h"
#include "common/prompts.h"

namespace common {

struct Services {
    Prompts& prompts;
    Clock& clock;
    Devices& devices;
    Log& log;
};

}  // namespace common
