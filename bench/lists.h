// How long the lists of the program take to open and to answer a key, at every length.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/report.h"

namespace bench {

// Measures every list at each of these lengths, on shops made under `folder` for it, and prints its progress.
// Throws if a list does not show its rows. `only` is part of the lists' names, or empty for all.
std::vector<ListTiming> measure_lists(const std::filesystem::path& folder, const std::vector<int>& lengths,
                                      int rounds, const std::string& only);

}  // namespace bench
