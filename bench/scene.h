// Everything that the measured actions need on one shop.
#pragma once

#include <vector>

#include "bench/by_hand_cash.h"
#include "bench/by_hand_sale.h"
#include "bench/by_hand_upgrade.h"
#include "bench/copies.h"
#include "bench/painted_till.h"
#include "bench/till.h"
#include "cash/cash_position.h"
#include "cash/daily_statement.h"

namespace bench {

struct Scene {
    Scene(const Copies& copies, const Sizes& wanted)
        : sizes(wanted),
          home(copies.home()),
          till(copies.home(), wanted),
          painted(till),
          engine(copies.by_hand()),
          upgrade(engine),
          sale(engine, copies.by_hand_log()),
          hand_cash(engine),
          position(till.connection(), till.session(), till.nobody()),
          statement(till.connection(), till.session(), till.services()) {}

    Sizes sizes;
    std::filesystem::path home;
    Till till;
    PaintedTill painted;

    HandEngine engine;
    HandUpgrade upgrade;
    HandSale sale;
    HandCash hand_cash;

    cash::CashPosition position;
    cash::DailyStatement statement;

    // The next item that is rung up; the program and the work by hand sell the same ones.
    std::int64_t entered = 0, entered_by_hand = 0, sold = 0, sold_by_hand = 0;
    std::vector<HandLine> lines_by_hand;
    // The result of the last round.
    std::size_t found = 0, found_by_hand = 0;
    std::vector<HandCash::Position> positions_by_hand;
    HandCash::Statement statement_by_hand;
};

}  // namespace bench
