#include "bench/report.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <thread>

#include "common/text.h"

namespace bench {

namespace {

// A figure with three significant digits.
std::string figure_text(double value) {
    if (value >= 100) return fmt::format("{:.0f}", value);
    if (value >= 10) return fmt::format("{:.1f}", value);
    if (value >= 0.1) return fmt::format("{:.2f}", value);
    return fmt::format("{:.3f}", value);
}

std::string ms(double value) {
    return figure_text(value) + " ms";
}

std::string figure_of(const std::optional<double>& value, const char* unit = "") {
    return value ? figure_text(*value) + unit : "–";
}

std::string budget_text(const Timing& row) {
    if (!row.budget_ms) return "–";
    std::string text = fmt::format("{:.0f} ms", *row.budget_ms);
    if (row.judged == Judged::percentile_99) text += " (99th)";
    if (row.ratio_budget) text += fmt::format(", {:.1f} × by hand", *row.ratio_budget);
    return text;
}

using Line = std::vector<std::string>;

std::vector<Line> lines_of(const Report& report) {
    std::vector<Line> lines = {{"action", "budget", "median", "99th", "by hand", "ratio", "tenth",
                                "tenth's ratio", "full/tenth", "verdict"}};
    const auto verdict = [&](bool has_budget, bool met) -> std::string {
        if (!has_budget || !report.judged) return "–";
        return met ? "met" : "MISSED";
    };
    for (const Timing& row : report.timings) {
        const bool hand = !row.by_hand.empty();
        const double of_tenth = median(row.by_hand_tenth);
        lines.push_back({row.name, budget_text(row), ms(median(row.ours)), ms(percentile(row.ours, 0.99)),
                         hand ? ms(median(row.by_hand)) : "–", figure_of(row.ratio()),
                         row.ours_tenth.empty() ? "–" : ms(median(row.ours_tenth)),
                         of_tenth > 0 ? figure_text(median(row.ours_tenth) / of_tenth) : "–",
                         figure_of(row.growth()), verdict(row.budget_ms.has_value(), row.met())});
    }
    for (const Reading& row : report.readings)
        lines.push_back({row.name, figure_text(row.budget) + " " + row.unit,
                         figure_text(row.value) + " " + row.unit, "–", "–", "–", "–", "–", "–",
                         verdict(true, row.met())});
    return lines;
}

std::vector<Line> lines_of_lists(const Report& report) {
    std::vector<Line> lines = {{"list", "rows", "opening", "99th", "a key", "99th", "verdict"}};
    for (const ListTiming& list : report.lists)
        for (const ListTimes& at : list.lengths) {
            const bool judged = report.judged && &at == &list.lengths.back();
            lines.push_back({&at == &list.lengths.front() ? list.name : "", fmt::format("{}", at.rows),
                             ms(median(at.opening)), ms(percentile(at.opening, 0.99)), ms(median(at.key)),
                             ms(percentile(at.key, 0.99)),
                             !judged      ? "–"
                             : list.met() ? "met"
                                          : "MISSED"});
        }
    return lines;
}

std::vector<Line> lines_of_requests(const Report& report) {
    Line heading = {"action", "first edition", "to reach", "requests", "statements"};
    if (!report.requests.empty())
        for (const RequestTimes& at : report.requests.front().times)
            heading.insert(heading.end(), {fmt::format("{} ms late", at.latency_ms), "by hand"});
    heading.emplace_back("verdict");
    std::vector<Line> lines = {heading};
    for (const RequestTiming& row : report.requests) {
        Line line = {row.name, std::to_string(row.first_edition), std::to_string(row.budget),
                     std::to_string(row.requests), std::to_string(row.statements)};
        for (const RequestTimes& at : row.times)
            line.insert(line.end(), {ms(median(at.till)), ms(median(at.by_hand))});
        line.emplace_back(row.met() ? "met" : "MISSED");
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<Line> lines_of_loads(const Report& report) {
    Line heading = {"load", "first edition", "to reach"};
    if (!report.loads.empty())
        for (const auto& [latency_ms, samples] : report.loads.front().times)
            heading.push_back(fmt::format("{} ms late", latency_ms));
    heading.emplace_back("verdict");
    std::vector<Line> lines = {heading};
    for (const LoadTiming& row : report.loads) {
        Line line = {row.name, fmt::format("{:.1f} s", row.first_edition_s),
                     fmt::format("{:.1f} s", row.budget_s)};
        for (const auto& [latency_ms, samples] : row.times)
            line.push_back(fmt::format("{:.2f} s", median(samples) / 1000));
        line.emplace_back(!report.judged ? "–" : row.met() ? "met" : "MISSED");
        lines.push_back(std::move(line));
    }
    return lines;
}

// Counts letters, not bytes.
std::size_t width_of(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string laid_out(const std::vector<Line>& lines, const char* before, const char* between,
                     const char* after, bool ruled) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const Line& line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], width_of(line[i]));
    std::string text;
    const auto add = [&](const Line& line) {
        std::string row = before;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::string blanks(widths[i] - width_of(line[i]), ' ');
            row += (i == 0 ? "" : between) + (i == 0 ? line[i] + blanks : blanks + line[i]);
        }
        text += row + after + "\n";
    };
    add(lines.front());
    if (ruled) {
        text += "|";
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += std::string(widths[i] + (i == 0 ? 2 : 1), '-') + (i == 0 ? "|" : ":|");
        text += "\n";
    }
    for (std::size_t i = 1; i < lines.size(); ++i)
        add(lines[i]);
    return text;
}

}  // namespace

double Timing::figure() const {
    return judged == Judged::percentile_99 ? percentile(ours, 0.99) : median(ours);
}

std::optional<double> Timing::ratio() const {
    const double hand = median(by_hand);
    return hand > 0 ? std::optional(median(ours) / hand) : std::nullopt;
}

std::optional<double> Timing::growth() const {
    const double tenth = median(ours_tenth);
    return tenth > 0 ? std::optional(median(ours) / tenth) : std::nullopt;
}

bool Timing::met() const {
    if (budget_ms && figure() > *budget_ms) return false;
    return !ratio_budget || (ratio() && *ratio() <= *ratio_budget);
}

bool ListTiming::met() const {
    return lengths.empty() || (median(lengths.back().opening) <= opening_budget_ms &&
                               median(lengths.back().key) <= key_budget_ms);
}

std::vector<std::string> Report::missed() const {
    std::vector<std::string> names;
    for (const RequestTiming& row : requests)
        if (!row.met()) names.push_back("the requests of " + row.name);
    if (!judged) return names;
    for (const LoadTiming& row : loads)
        if (!row.met()) names.push_back(row.name);
    for (const Timing& row : timings)
        if (!row.met()) names.push_back(row.name);
    for (const Reading& row : readings)
        if (!row.met()) names.push_back(row.name);
    for (const ListTiming& list : lists)
        if (!list.met()) names.push_back("the list " + list.name);
    return names;
}

std::string Report::table() const {
    std::string text = laid_out(lines_of(*this), "", "  ", "", false);
    if (!lists.empty()) text += "\n" + laid_out(lines_of_lists(*this), "", "  ", "", false);
    if (!requests.empty()) text += "\n" + laid_out(lines_of_requests(*this), "", "  ", "", false);
    if (!loads.empty()) text += "\n" + laid_out(lines_of_loads(*this), "", "  ", "", false);
    return text;
}

std::string Report::document() const {
    std::string text =
        "# Performance\n\n"
        "Written by `./check --bench`, which fails when a budget is missed. Nothing here is written by "
        "hand.\n\n";
    text += laid_out(lines_of(*this), "| ", " | ", " |", true);
    const auto names = missed();
    text += "\n";
    if (!judged)
        text += "A small data set: budgets hold for the full one and are not judged.\n";
    else if (names.empty())
        text += "Every budget is met.\n";
    for (const std::string& name : names)
        text += "- **Missed**: " + name + "\n";

    text += fmt::format(
        "\n## Lists\n\nBudgets of the longest: {:.0f} ms to open a list, reading and painting it; {:.0f} ms "
        "from a key in it to the painted answer.\n\n",
        ListTiming::opening_budget_ms, ListTiming::key_budget_ms);
    text += laid_out(lines_of_lists(*this), "| ", " | ", " |", true);

    text +=
        "\n## Requests to a server\n\nEach request costs the cashier the latency of the network. On the test "
        "server, whose answers are held back by 0, 1 and 5 ms.\n\n";
    text += laid_out(lines_of_requests(*this), "| ", " | ", " |", true);
    text += "\nMany rows at once, judged at 1 ms.\n\n";
    text += laid_out(lines_of_loads(*this), "| ", " | ", " |", true);

    text +=
        "\n## Memory\n\nResident memory of one till that sells by key on the real screens, off screen.\n\n";
    std::vector<Line> curve = {{"after", "MB"}};
    for (const auto& [sales, megabytes] : memory)
        curve.push_back(
            {sales < 0 ? "sign-in shown" : fmt::format("{} sales", sales), fmt::format("{:.1f}", megabytes)});
    text += laid_out(curve, "| ", " | ", " |", true);

    text += "\n## Measured on\n\n";
    for (const auto* list : {&machine, &shops})
        for (const std::string& line : *list)
            text += "- " + line + "\n";
    text += R"(
## How to read it

- **budget** is judged by the median, or by the 99th percentile where it says "99th", on the full shop; "1.3 × by
  hand" is the most that the median may be in medians of the work by hand.
- **by hand** is the same work written in C on SQLite (`bench/by_hand_*`), without the program around it: on a copy of
  the same file, with the same tables, indexes and settings; the same reads in the same order, each in a statement
  prepared once; the same rows written, each in a commit of its own, and one sync at the end. What both did to their
  files is compared row by row at the end, and the command fails when it differs. By hand leaves out what is no
  database work: it paints nothing, checks no permission, composes no receipt, and reads the columns that are used
  where the program's statements read all.
- **ratio** is ours in medians of the work by hand.
- **tenth** is the median on a shop of a tenth of the size over the same two years, **full/tenth** how it grows with
  ten times the data. What reads a day or a prefix grows with what there is to list; the cash position adds up all
  invoices of a drawer.
- Ours and by hand, on the full shop and on the tenth, take turns in each round, so that whatever else the machine
  does meets all four alike. All files are in the system's memory before.
- A list is measured in a shop in which every list has that many rows, from the command or button that opens it. The
  key is a letter in the field that searches the list, without the pause in which a search waits for the next letter;
  in a list without such a field it is a page down.
- **requests** are what the till sends to a server and waits for; several statements can travel in one. **first
  edition** is how many it took before they did. The times are medians; beside them the same statements sent by hand
  over the same driver, each by itself, without the program's own work.
- Memory is judged twice: the most that was reached, and how much it grows over 1,000 sales by the straight line
  through the second half of the day, when every cache has been filled.

## How to run it

```
./check --bench                                      # builds, makes the shops once (minutes), measures, writes this page
build-release/bin/tallvex-bench --size 10000         # a small shop: prints the table, judges nothing
build-release/bin/tallvex-bench --only cash          # the actions whose name has the word; writes no page
build-release/bin/tallvex-bench --lists              # the lists alone, of 100, 1,000 and 10,000 rows
build-release/bin/tallvex-bench --requests           # the requests to a server alone
```

The shops are kept in `build-release/bench-data`; each run measures on fresh copies of them, and needs 4 GB of disk.
)";
    return text;
}

namespace {

// The value after "word:" in a system file; empty if there is none.
std::string told(const char* file, const std::string& word, char mark) {
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const auto at = line.find(mark);
        if (at == line.npos || common::trim(line.substr(0, at)) != word) continue;
        std::string value(common::trim(line.substr(at + 1)));
        std::erase(value, '"');
        return value;
    }
    return {};
}

}  // namespace

std::vector<std::string> describe_machine() {
    std::vector<std::string> lines;
    const std::string processor = told("/proc/cpuinfo", "model name", ':');
    lines.push_back(fmt::format("{}{} cores", processor.empty() ? "" : processor + ", ",
                                std::thread::hardware_concurrency()));
    if (const std::string memory = told("/proc/meminfo", "MemTotal", ':'); !memory.empty())
        lines.back() += fmt::format(", {:.0f} GB of memory", std::stod(memory) / 1024 / 1024);
    if (const std::string system = told("/etc/os-release", "PRETTY_NAME", '='); !system.empty())
        lines.push_back(system);
    lines.push_back(
        fmt::format("GCC {}, SQLite {}, Qt {}", __VERSION__, sqlite3_libversion(), BENCH_QT_VERSION));
    return lines;
}

}  // namespace bench
