// What is measured: every action of the table, by the program and by hand.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/copies.h"
#include "bench/report.h"

namespace bench {

struct Wanted {
    std::filesystem::path till;  // the program whose start is measured
    std::string only;            // measures the actions whose name contains this; empty for all
    double rounds = 1;           // factor for the usual number of rounds
};

// Measures on the copies of the full shop and of the tenth, and prints its progress. Throws if the program
// and the work by hand come to different results.
std::vector<Timing> measure_actions(const Wanted& wanted, const Copies& full, const Sizes& full_sizes,
                                    const Copies& tenth, const Sizes& tenth_sizes);

}  // namespace bench
