// Taking times: ours and the work by hand in turn, on the full shop and on a tenth of it.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace bench {

using Samples = std::vector<double>;  // milliseconds, or whatever was measured

// The value below which so great a share of the samples lies (nearest rank); 0 of none.
double percentile(Samples samples, double share);
inline double median(const Samples& samples) {
    return percentile(samples, 0.5);
}

// How much a value grows with each step, by the straight line that fits best.
double slope_per_step(const Samples& values);

// One of several that take turns. `run` returns the milliseconds it took.
struct Runner {
    std::function<double()> run;
    std::function<void()> prepare = {};  // before each round, not timed
};

inline double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Lets each run once in a round, in an order that goes round as well, so that whatever else the machine does
// meets all of them alike. One round before the first is not counted. Samples by runner.
std::vector<Samples> take_turns(const std::vector<Runner>& runners, int rounds);

}  // namespace bench
