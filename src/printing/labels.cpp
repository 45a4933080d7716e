#include "printing/labels.h"

#include <numeric>

#include "printing/receipt.h"

namespace printing {

namespace {

constexpr LabelPaper roll(std::string_view name, std::string_view caption, double width, double height) {
    return {name, caption, width, height, 1, 1, 0, 0, width, height};
}

// A roll as wide as the print head.
constexpr LabelPaper receipts(std::string_view name, std::string_view caption, const RollWidth& roll) {
    constexpr double height = 30;
    return {name, caption,      roll.paper, height, 1, 1, (roll.paper - roll.printed) / 2,
            0,    roll.printed, height,     true};
}

constexpr LabelPaper papers[] = {
    roll("roll-50x25", "رول 50 × 25 مم", 50, 25),
    roll("roll-40x30", "رول 40 × 30 مم", 40, 30),
    roll("roll-38x25", "رول 38 × 25 مم", 38, 25),
    roll("roll-58x40", "رول 58 × 40 مم", 58, 40),
    receipts("receipts-80", "بكرة البون 80 مم", wide_roll),
    receipts("receipts-58", "بكرة البون 58 مم", narrow_roll),
    {"a4-24", "ورق A4 · 24 ملصقا (70 × 37 مم)", 210, 297, 3, 8, 0, 0.5, 70, 37},
    {"a4-40", "ورق A4 · 40 ملصقا (52.5 × 29.7 مم)", 210, 297, 4, 10, 0, 0, 52.5, 29.7},
    {"a4-65", "ورق A4 · 65 ملصقا (38 × 21 مم)", 210, 297, 5, 13, 10, 12, 38, 21},
};

}  // namespace

std::span<const LabelPaper> label_papers() {
    return papers;
}

int LabelJob::count() const {
    return std::accumulate(labels.begin(), labels.end(), 0,
                           [](int sum, const Label& label) { return sum + label.copies; });
}

int LabelJob::pages() const {
    const int places = paper.columns * paper.rows;
    const int taken = count() + (paper.is_sheet() ? used : 0);
    return count() == 0 ? 0 : (taken + places - 1) / places;
}

}  // namespace printing
