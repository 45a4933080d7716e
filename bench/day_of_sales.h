// The memory of a till that sells all day, in a process of its own.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

#include "bench/sizes.h"

namespace bench {

// The child's part: goes the program's own road from start-up through sign-in to the sales screen on the shop
// in `home`, sells by key (five scans, F1, Enter, with what the screens paint meanwhile), and prints its
// resident memory in MB: with sign-in shown, with the sales screen open, and after every `step` sales. An
// exit code.
int sell_all_day(const std::filesystem::path& home, const Sizes& sizes, int sales, int step);

// The parent's: what the child printed, by the number of sales, -1 standing for sign-in. Throws when it
// failed.
std::vector<std::pair<int, double>> memory_of_a_day(const std::filesystem::path& home, const Sizes& sizes,
                                                    int sales, int step);

}  // namespace bench
