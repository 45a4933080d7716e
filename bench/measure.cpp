#include "bench/measure.h"

#include <algorithm>
#include <cmath>

namespace bench {

double percentile(Samples samples, double share) {
    if (samples.empty()) return 0;
    std::sort(samples.begin(), samples.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(samples.size())));
    return samples[std::clamp<std::size_t>(rank, 1, samples.size()) - 1];
}

double slope_per_step(const Samples& values) {
    if (values.size() < 2) return 0;
    const auto count = static_cast<double>(values.size());
    const double middle = (count - 1) / 2;
    double above = 0;
    double below = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double step = static_cast<double>(i) - middle;
        above += step * values[i];
        below += step * step;
    }
    return above / below;
}

std::vector<Samples> take_turns(const std::vector<Runner>& runners, int rounds) {
    std::vector<Samples> samples(runners.size());
    for (int round = -1; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < runners.size(); ++turn) {
            const std::size_t i = (turn + static_cast<std::size_t>(round + 1)) % runners.size();
            if (runners[i].prepare) runners[i].prepare();
            const double taken = runners[i].run();
            if (round >= 0) samples[i].push_back(taken);
        }
    }
    return samples;
}

}  // namespace bench
