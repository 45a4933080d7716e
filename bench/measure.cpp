#include "bench/measure.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace bench {

namespace {

using Samples = std::vector<double>;  // milliseconds

double at(Samples samples, double share) {
    if (samples.empty()) return 0;
    std::sort(samples.begin(), samples.end());
    const auto index = static_cast<std::size_t>(std::ceil(share * static_cast<double>(samples.size()))) - 1;
    return samples[std::min(index, samples.size() - 1)];
}

double figure_of(const Samples& samples, Figure figure) {
    switch (figure) {
        case Figure::percentile_99:
            return at(samples, 0.99);
        case Figure::maximum:
            return at(samples, 1.0);
        case Figure::median:
            break;
    }
    return at(samples, 0.5);
}

void add(const std::string& name, int rounds, const std::function<void()>& prepare,
         const std::function<void()>& run, Samples& samples) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [&, prepare, run](benchmark::State& state) {
                                     for (auto _ : state) {
                                         if (prepare) prepare();
                                         const auto start = std::chrono::steady_clock::now();
                                         run();
                                         const std::chrono::duration<double> taken =
                                             std::chrono::steady_clock::now() - start;
                                         state.SetIterationTime(taken.count());
                                         samples.push_back(taken.count() * 1000);
                                     }
                                 })
        ->UseManualTime()
        ->Iterations(rounds);
}

// The table is our own; the library's would repeat it without budgets.
class Quiet final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            std::fprintf(stderr, "measured %s\n", run.benchmark_name().c_str());
    }
};

}  // namespace

bool measure_and_print(const std::vector<Action>& actions, const std::vector<Reading>& readings) {
    std::vector<Samples> ours(actions.size());
    std::vector<Samples> theirs(actions.size());
    for (std::size_t i = 0; i < actions.size(); ++i) {
        const Action& action = actions[i];
        add(action.name, action.rounds, action.prepare, action.run, ours[i]);
        if (action.by_hand) add(action.name + ", by hand", action.rounds, {}, action.by_hand, theirs[i]);
    }
    Quiet reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    bool met = true;
    fmt::print("\n{:<52} {:>10} {:>10} {:>9} {:>7}\n", "action", "budget", "figure", "by hand", "ratio");
    for (std::size_t i = 0; i < actions.size(); ++i) {
        const Action& action = actions[i];
        const double figure = figure_of(ours[i], action.figure);
        bool good = figure <= action.budget_ms;
        fmt::print("{:<52} {:>7.0f} ms {:>7.2f} ms", action.name, action.budget_ms, figure);
        if (action.by_hand) {
            const double hand = at(theirs[i], 0.5);
            const double ratio = at(ours[i], 0.5) / hand;
            if (action.ratio_budget) good = good && ratio <= *action.ratio_budget;
            fmt::print(" {:>6.2f} ms {:>6.2f}", hand, ratio);
            if (action.ratio_budget) fmt::print(" (at most {:.1f})", *action.ratio_budget);
        }
        fmt::print("{}\n", good ? "" : "   MISSED");
        met = met && good;
    }
    for (const Reading& reading : readings) {
        const bool good = reading.value <= reading.budget;
        fmt::print("{:<52} {:>7.0f} {} {:>7.1f} {}{}\n", reading.name, reading.budget, reading.unit,
                   reading.value, reading.unit, good ? "" : "   MISSED");
        met = met && good;
    }
    return met;
}

}  // namespace bench
