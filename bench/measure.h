// Measures times: the program's and those by hand in turn.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace bench {

using Samples = std::vector<double>;  // milliseconds or another measured unit

// The value below which that share of the samples lies (nearest rank); 0 if there are none.
double percentile(Samples samples, double share);
inline double median(const Samples& samples) {
    return percentile(samples, 0.5);
}

// The slope of the straight line that fits best.
double slope_per_step(const Samples& values);

// One of several that are measured in turn. `run` returns the milliseconds it took.
struct Runner {
    std::function<double()> run;
    std::function<void()> prepare = {};  // before each round, not timed
};

inline double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Runs each of them once per round, in rotating order, so that other load on the machine affects all of them
// alike. An extra first round is not counted. Returns the samples of each runner.
std::vector<Samples> take_turns(const std::vector<Runner>& runners, int rounds);

}  // namespace bench
