// The memory of a till that sells all day, in a process of its own.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

#include "bench/sizes.h"

namespace bench {

// Runs in the child process: start-up, sign-in and the sales screen on the shop in `home`, then sales by key
// (five scans, F1, Enter, with the painting of the screens). Prints its resident memory in MB: at sign-in,
// with the sales screen open, and after every `step` sales. Returns the exit code.
int sell_all_day(const std::filesystem::path& home, const Sizes& sizes, int sales, int step);

// Runs the child process. Returns what it printed by the number of sales, with -1 for sign-in. Throws if it
// failed.
std::vector<std::pair<int, double>> memory_of_a_day(const std::filesystem::path& home, const Sizes& sizes,
                                                    int sales, int step);

}  // namespace bench
