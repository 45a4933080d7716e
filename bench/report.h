// The rows of the report, as a table and as a page: what was measured, its budget, and whether it was met.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/requests.h"

namespace bench {

enum class Judged { median, percentile_99 };

// A timed action.
struct Timing {
    std::string name;
    std::optional<double> budget_ms;  // none for an action that is part of one with a budget
    Judged judged = Judged::median;
    std::optional<double> ratio_budget;  // of the medians, program to by hand
    Samples ours, by_hand;               // on the full shop; by hand may be empty
    Samples ours_tenth, by_hand_tenth;

    double figure() const;  // the one that is compared with the budget
    std::optional<double> ratio() const;
    // The median on the full shop divided by the median on a tenth of it.
    std::optional<double> growth() const;
    bool met() const;
};

// A list of one length: opening it, and a key in it, each to the painted rows.
struct ListTimes {
    int rows = 0;
    Samples opening, key;
};

// A list at several lengths; the longest is judged.
struct ListTiming {
    std::string name;
    std::vector<ListTimes> lengths;

    static constexpr double opening_budget_ms = 150;
    static constexpr double key_budget_ms = 50;
    bool met() const;
};

// A figure other than a time.
struct Reading {
    std::string name, unit;
    double budget = 0;
    double value = 0;
    bool met() const { return value <= budget; }
};

struct Report {
    std::vector<Timing> timings;
    std::vector<Reading> readings;
    std::vector<ListTiming> lists;
    std::vector<RequestTiming> requests;  // counts, so judged on every data set
    std::vector<LoadTiming> loads;
    // Resident memory in MB by the number of sales.
    std::vector<std::pair<int, double>> memory;
    // The machine and the contents of the shops, one line each.
    std::vector<std::string> machine, shops;
    // Budgets apply only to the full data set.
    bool judged = true;

    // The names of the rows that missed their budget.
    std::vector<std::string> missed() const;
    std::string table() const;     // for a terminal
    std::string document() const;  // docs/performance.md
};

// Processor, cores, memory, system, compiler, SQLite and Qt, one line each. Leaves out what the system does
// not report.
std::vector<std::string> describe_machine();

}  // namespace bench
