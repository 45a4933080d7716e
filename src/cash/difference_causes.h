// What may explain a difference in a drawer: movements of its shift with the same amount or half of it.
#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "cash/cash_position.h"
#include "cash/figures.h"

namespace cash {

// A movement, and what may have happened to it.
struct Cause {
    std::string_view text;
    Figure figure{};
    std::size_t row = 0;  // of the figure's rows
};

class DifferenceCauses {
  public:
    // Reads the movements of a drawer after `from` up to `until`.
    DifferenceCauses(database::Connection& connection, const Drawer& drawer, const common::Moment& from,
                     const common::Moment& until);

    // The causes of counted less expected cash, the likeliest first. `beside` are invoice discounts that the
    // expected cash still contains.
    std::vector<Cause> of(common::Amount difference, common::Amount beside) const;
    const FigureRows& rows(Figure figure) const { return rows_.at(figure); }

  private:
    std::map<Figure, FigureRows> rows_;
};

}  // namespace cash
