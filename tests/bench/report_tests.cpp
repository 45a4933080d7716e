#include "bench/report.h"

namespace {

using bench::Judged;
using bench::Reading;
using bench::Report;
using bench::Timing;
using testing::ElementsAre;
using testing::HasSubstr;

Timing timing(std::optional<double> budget, bench::Samples ours, bench::Samples by_hand = {},
              std::optional<double> ratio_budget = std::nullopt, Judged judged = Judged::median) {
    Timing row;
    row.name = "an action";
    row.budget_ms = budget;
    row.judged = judged;
    row.ratio_budget = ratio_budget;
    row.ours = std::move(ours);
    row.by_hand = std::move(by_hand);
    return row;
}

TEST(Verdict, GoesByTheFigureThatIsJudgedAndByTheRatio) {
    const struct {
        const char* what;
        Timing row;
        bool met;
    } cases[] = {
        {"the median, whatever the worst", timing(10, {9, 9, 100}), true},
        {"the median above", timing(10, {9, 11, 11}), false},
        {"exactly the budget", timing(10, {10}), true},
        {"the 99th percentile", timing(10, {9, 9, 100}, {}, {}, Judged::percentile_99), false},
        {"a ratio within its budget", timing(10, {1.3}, {1}, 1.3), true},
        {"quick, but too slow beside the work by hand", timing(10, {2}, {1}, 1.3), false},
        {"a slow ratio that nobody judges", timing(10, {2}, {1}), true},
        {"a ratio that could not be taken", timing(10, {2}, {}, 1.3), false},
        {"no budget at all", timing({}, {1e6}), true},
    };
    for (const auto& [what, row, met] : cases)
        EXPECT_EQ(row.met(), met) << what;
}

TEST(Report, NamesWhatMissedItsBudgetAndStillShowsAll) {
    Report report;
    report.timings = {timing(10, {9}, {3}), timing(10, {11})};
    report.timings[0].ours_tenth = {3};
    report.timings[0].by_hand_tenth = {2};
    report.timings[1].name = "a slow action";
    report.readings = {{"memory", "MB", 120, 121}, {"growth", "MB", 1, -0.2}};
    report.memory = {{-1, 40}, {0, 60}, {500, 61.25}};
    // Only the longest length is judged, by both of its figures.
    report.lists = {{"quick", {{100, {500}, {500}}, {10'000, {150}, {50}}}},
                    {"slow to open", {{10'000, {151}, {1}}}},
                    {"slow to answer", {{10'000, {1}, {51}}}}};
    EXPECT_THAT(report.missed(),
                ElementsAre("a slow action", "memory", "the list slow to open", "the list slow to answer"));

    const std::string page = report.document();
    EXPECT_THAT(
        page,
        HasSubstr(
            "| an action     |   10 ms |   9.00 ms | 9.00 ms | 3.00 ms |  3.00 | 3.00 ms |          1.50 |"));
    EXPECT_THAT(page, HasSubstr("**Missed**: a slow action"));
    EXPECT_THAT(page, HasSubstr("**Missed**: memory"));
    EXPECT_THAT(page,
                HasSubstr("| quick          |   100 |  500 ms |  500 ms |  500 ms |  500 ms |       – |"));
    EXPECT_THAT(page,
                HasSubstr("|                | 10000 |  150 ms |  150 ms | 50.0 ms | 50.0 ms |     met |"));
    EXPECT_THAT(page, HasSubstr("| 500 sales     | 61.2 |"));
    EXPECT_THAT(page, HasSubstr("| sign-in shown | 40.0 |"));
    EXPECT_THAT(page, testing::Not(HasSubstr("Every budget is met")));

    report.judged = false;
    EXPECT_TRUE(report.missed().empty());
    EXPECT_THAT(report.table(), testing::Not(HasSubstr("MISSED")));
}

TEST(Report, KeepsItsColumnsInLine) {
    Report report;
    report.timings = {timing(16, {1}, {}, {}, Judged::percentile_99), timing(50, {2}, {1}, 1.3)};
    report.timings[0].name = "فاتورة";
    const std::string table = report.table();
    std::size_t width = 0;
    std::string line;
    for (const char c : table + "\n") {
        if (c != '\n') {
            if ((c & 0xC0) != 0x80) line += c;
            continue;
        }
        if (line.empty()) continue;
        if (width == 0) width = line.size();
        EXPECT_EQ(line.size(), width) << table;
        line.clear();
    }
}

}  // namespace
