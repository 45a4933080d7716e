// What is measured: every action of the table, ours and by hand.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/copies.h"
#include "bench/report.h"

namespace bench {

struct Wanted {
    std::filesystem::path till;  // the program whose start is measured
    std::string only;            // measures the actions whose name contains this; all when empty
    double rounds = 1;           // times the usual rounds
};

// Measures on the copies of the full shop and of the tenth, prints what it is at, and throws when ours and
// the work by hand come to different results.
std::vector<Timing> measure_actions(const Wanted& wanted, const Copies& full, const Sizes& full_sizes,
                                    const Copies& tenth, const Sizes& tenth_sizes);

}  // namespace bench
