// The rows of the report: what was measured, its budget and whether that was kept; as a table and as a page.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/measure.h"

namespace bench {

enum class Judged { median, percentile_99 };

// A timed action.
struct Timing {
    std::string name;
    std::optional<double> budget_ms;  // none for an action that is part of one with a budget
    Judged judged = Judged::median;
    std::optional<double> ratio_budget;  // of the medians, ours to by hand
    Samples ours, by_hand;               // on the full shop; by hand may be none
    Samples ours_tenth, by_hand_tenth;

    double figure() const;  // the one that is judged
    std::optional<double> ratio() const;
    // The median on the full shop in medians on a tenth of it.
    std::optional<double> growth() const;
    bool met() const;
};

// A figure that is no time.
struct Reading {
    std::string name, unit;
    double budget = 0;
    double value = 0;
    bool met() const { return value <= budget; }
};

struct Report {
    std::vector<Timing> timings;
    std::vector<Reading> readings;
    // Resident memory in MB, and after how many sales.
    std::vector<std::pair<int, double>> memory;
    // What the machine is and what the shops hold, one line each.
    std::vector<std::string> machine, shops;
    // Budgets hold for the full data set alone.
    bool judged = true;

    // The names of what missed its budget.
    std::vector<std::string> missed() const;
    std::string table() const;     // for a terminal
    std::string document() const;  // docs/performance.md
};

}  // namespace bench
