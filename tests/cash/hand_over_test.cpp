#include "cash/hand_over.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "database/till_settings.h"
#include "drawers.h"

namespace cash {
namespace {

using common::Amount;

class HandOvers : public testing::Test {
  protected:
    HandOvers() { drawers.open_shift(); }
    test::Drawers drawers;
};

TEST(DrawerCount, AddsUpPiecesAndTheRest) {
    const DrawerCount count{{{Amount(200), 3}, {Amount(0.25), 7}}, Amount(10.5)};
    EXPECT_EQ(count.total(), Amount(612.25));  // 600 + 1.75 + 10.50
    for (const auto& [typed, pieces] : {std::pair("", 0), std::pair(" ١٢ ", 12), std::pair("99999", 99999)})
        EXPECT_EQ(read_pieces(typed), pieces) << typed;
    for (const char* typed : {"-1", "1.5", "x", "100000", "1,000"})
        EXPECT_FALSE(read_pieces(typed)) << typed;
}

// Each difference, and the numbers of the receipts that are named for it, the likeliest first.
TEST_F(HandOvers, NamesMovementsOfTheDifference) {
    drawers.invoice({.number = 1, .ptot = "100", .pdis = "10"});
    drawers.invoice({.number = 2, .stype = 1, .ptot = "40"});
    drawers.invoice({.number = 3, .ctype = 2, .ptot = "25"});
    const DifferenceCauses movements(drawers.shop.connection(), {1, 1}, {{2026, 11, 21}, {8, 0, 0, 0}},
                                     {{2026, 11, 21}, {12, 0, 0, 0}});
    const struct {
        double difference;
        double beside;
        std::vector<std::string> numbers;
    } cases[] = {
        {-90, 0, {"1"}},       {-100, 0, {"1"}}, {40, 0, {"2"}},   {-40, 0, {}}, {25, 0, {"3"}},
        {-25, 0, {"3"}},       {50, 0, {"3"}},   {-180, 0, {"1"}},  // a return rung up as a sale
        {-10, 10, {"1", "1"}},  // all discounts, and the one of this receipt
        {10, 0, {"1"}},        {0, 10, {}},      {-33, 0, {}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> numbers;
        for (const Cause& cause : movements.of(Amount(c.difference), Amount(c.beside)))
            numbers.push_back(movements.rows(cause.figure).rows[cause.row].number);
        EXPECT_EQ(numbers, c.numbers) << c.difference;
    }
}

TEST_F(HandOvers, WithoutKnowingTheExpectedCashIsSeenAfterTheCount) {
    for (const bool blind : {false, true}) {
        database::set_till_setting(drawers.shop.connection(), database::setting::blind_count,
                                   blind ? "yes" : "no");
        HandOver hand_over(drawers.shop.connection(), drawers.session, drawers.services.all());
        hand_over.open(*current_shift(drawers.shop.connection(), 1, 1));
        EXPECT_EQ(hand_over.expected().has_value(), !blind);
        hand_over.compare();
        EXPECT_TRUE(hand_over.expected());
        hand_over.count_again();
        EXPECT_EQ(hand_over.expected().has_value(), !blind);
    }
}

// The pieces are in the report as long as the amount is their sum.
TEST_F(HandOvers, ReportsWhatTheSumIsMadeOf) {
    drawers.shop.sql("update basic set prn_csh_rep = 1");
    for (const char* counted : {"25.00", "26.00"}) {
        drawers.shop.sql("update shift set e_date = null");
        ShiftChange screen(drawers.shop.connection(), drawers.session, drawers.services.all());
        EXPECT_FALSE(screen.open());
        screen.entry.pieces = DrawerCount{{{Amount(5), 5}}, {}};
        screen.entry.counted = counted;
        EXPECT_FALSE(screen.close_current());
        ASSERT_TRUE(screen.report());
        EXPECT_EQ(screen.report()->pieces.total(), Amount(counted[1] == '5' ? 25 : 0));
    }
}

}  // namespace
}  // namespace cash
