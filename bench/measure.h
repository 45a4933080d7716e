// Measured actions and their budgets, run by the benchmark library and shown as one table.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

enum class Figure { median, percentile_99, maximum };

struct Action {
    std::string name;
    Figure figure = Figure::median;
    double budget_ms = 0;
    int rounds = 30;
    std::function<void()> run;                          // one round, timed
    std::function<void()> prepare = {};                 // before each round, not timed
    std::function<void()> by_hand = {};                 // the same work by hand in C on SQLite
    std::optional<double> ratio_budget = std::nullopt;  // of the medians
};

// A figure that is not a time (memory), measured already.
struct Reading {
    std::string name;
    std::string unit;
    double budget = 0;
    double value = 0;
};

// Measures the actions and prints action, budget, figure, and ratio to the work by hand. False when a budget
// is missed.
bool measure_and_print(const std::vector<Action>& actions, const std::vector<Reading>& readings);

}  // namespace bench
