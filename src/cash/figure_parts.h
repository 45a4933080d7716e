// What each figure of the statement is made of: a sum of movements, or other figures.
#pragma once

#include <span>
#include <string_view>

#include "cash/cash_terms.h"
#include "cash/figures.h"
#include "common/date_time.h"

namespace cash {

struct SummedFigure {
    Figure figure;
    Movement movement;
    std::string_view column;  // of the sum
};
std::span<const SummedFigure> summed_figures();

struct MadeFigure {
    Figure figure;
    Figure part;
    int sign;
};
// A figure that is a part of another stands before it.
std::span<const MadeFigure> made_figures();

// What of a sum belongs to a figure: of a day's count difference, a surplus above zero or a shortage below
// it, as a positive amount; of all others everything.
double share_of_figure(Figure figure, double amount);

Window day_window(const common::Date& day);
Window start_of(const common::Date& day);

}  // namespace cash
