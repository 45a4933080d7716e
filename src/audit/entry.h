// A row of the till's journal, and the end of a chain of them.
#pragma once

#include <cstdint>
#include <string>

#include "audit/event.h"
#include "common/date_time.h"

namespace audit {

// An event with its circumstances.
struct Entry {
    std::int64_t id = 0;  // drawn at random; shows that a row was written before
    common::Moment moment;
    std::int64_t store = 0;
    Person user;
    std::string kind;
    Event event;  // without its kind, which may be one of a later version
};

// The last row of a till's chain; number 0 before the first.
struct End {
    std::int64_t number = 0;
    std::string hash;
};

}  // namespace audit
