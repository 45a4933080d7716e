// The requests of the till's actions to a server, and the time they take at a given latency.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "bench/measure.h"

namespace bench {

// An action at one latency: by the till, and its statements sent by hand, each by itself.
struct RequestTimes {
    int latency_ms = 0;
    Samples till, by_hand;
};

struct RequestTiming {
    std::string name;
    int first_edition = 0;  // requests of the first edition
    int budget = 0;
    int requests = 0;    // the most that one round took
    int statements = 0;  // in them
    std::vector<RequestTimes> times = {};
    bool met() const { return requests <= budget; }
};

// Many rows at once, by tallvex-admin's own functions.
struct LoadTiming {
    std::string name;
    double first_edition_s = 0;                       // on a server near by
    double budget_s = 0;                              // at `judged_ms` of latency
    std::vector<std::pair<int, Samples>> times = {};  // latency in ms, milliseconds
    static constexpr int judged_ms = 1;
    bool met() const;
};

// Works through the actions of a morning on a test server with a small shop, again and again at each latency.
// `folder` is for the shops.
std::vector<RequestTiming> measure_requests(const std::filesystem::path& folder, int rounds);

// Imports 1,000 lines of items and copies the demo shop, again and again at each latency.
std::vector<LoadTiming> measure_loads(int rounds);

}  // namespace bench
