#include "bench/measure.h"

#include <string>

namespace {

using bench::Samples;

TEST(Percentile, IsTheNearestRankWhateverTheOrder) {
    Samples hundred;
    for (int i = 100; i >= 1; --i)
        hundred.push_back(i);
    const struct {
        Samples samples;
        double share, expected;
    } cases[] = {{{}, 0.5, 0},           {{7}, 0.5, 7},        {{7}, 0.99, 7},      {{3, 1, 2}, 0.5, 2},
                 {{4, 1, 3, 2}, 0.5, 2}, {hundred, 0.5, 50},   {hundred, 0.99, 99}, {hundred, 1, 100},
                 {hundred, 0, 1},        {{1, 1, 9}, 0.99, 9}, {{5, 9, 7}, 1, 9}};
    for (const auto& [samples, share, expected] : cases)
        EXPECT_EQ(bench::percentile(samples, share), expected) << samples.size() << " samples, " << share;
}

TEST(Slope, FollowsTheTrendAndNotTheNoise) {
    EXPECT_DOUBLE_EQ(bench::slope_per_step({}), 0);
    EXPECT_DOUBLE_EQ(bench::slope_per_step({50}), 0);
    EXPECT_DOUBLE_EQ(bench::slope_per_step({50, 50, 50}), 0);
    EXPECT_DOUBLE_EQ(bench::slope_per_step({50, 50.1, 50.2, 50.3}), 0.1);
    EXPECT_DOUBLE_EQ(bench::slope_per_step({53, 52, 51}), -1);
    EXPECT_NEAR(bench::slope_per_step({50, 51, 50, 51, 50}), 0, 0.01);
}

TEST(Turns, GiveEveryRunnerEachPlaceAndLeaveTheFirstRoundOut) {
    std::string order;
    const auto runner = [&](char name) {
        return bench::Runner{[&order, name] {
                                 order += name;
                                 return static_cast<double>(order.size());
                             },
                             [&order, name] { order += static_cast<char>(name + 32); }};
    };
    const auto samples = bench::take_turns({runner('A'), runner('B'), runner('C')}, 2);
    EXPECT_EQ(order, "aAbBcCbBcCaAcCaAbB");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[0], (Samples{12, 16}));
    EXPECT_EQ(samples[2], (Samples{10, 14}));
}

}  // namespace
