#include "common/denominations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using common::Amount;
using testing::ElementsAreArray;

TEST(Denominations, AreReadInAnyOrderAndRefusedWhole) {
    EXPECT_EQ(common::denominations_text(common::default_denominations()), "200 100 50 20 10 5 1 0.50 0.25");
    const struct {
        const char* typed;
        const char* read;  // "" if refused
    } cases[] = {{" ٢٠  0.5 100 20", "100 20 0.50"},
                 {"5", "5"},
                 {"", ""},
                 {"0", ""},
                 {"20 0", ""},
                 {"20 -5", ""},
                 {"20,10", ""},
                 {"0.125", ""},
                 {"20 x", ""},
                 {"1 2 3 4 5 6 7 8 9 10 11 12 13", ""}};
    for (const auto& c : cases) {
        const auto read = common::read_denominations(c.typed);
        EXPECT_EQ(read ? common::denominations_text(*read) : "", c.read) << c.typed;
    }
}

TEST(Denominations, OfferWhatCustomersHandOver) {
    const struct {
        double net;
        std::vector<double> offered;
    } cases[] = {
        {41.5, {50, 100, 200}},    // the next notes
        {3.25, {5, 10, 20}},       // the smaller ones first
        {50, {100, 200}},          // the net itself has a button of its own
        {64, {70, 100, 200}},      // 50 + 20
        {137.5, {140, 150, 200}},  // 100 + 2 × 20, 100 + 50
        {327, {330, 350, 400}},    // 200 + 100 + 20 + 10, 200 + 100 + 50, 2 × 200
        {200, {}},                 // nothing larger is of fewer pieces than what is handed over exactly
        {4000.5, {}},              // more than twenty pieces
        {0, {}},
        {-5, {}},
    };
    for (const auto& c : cases) {
        std::vector<Amount> expected;
        for (const double amount : c.offered)
            expected.emplace_back(amount);
        EXPECT_THAT(likely_payments(Amount(c.net), common::default_denominations()),
                    ElementsAreArray(expected))
            << c.net;
    }
}

}  // namespace
