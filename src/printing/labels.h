// Labels for goods and shelves as plain data: what stands on each, and the paper they are printed on. Drawn
// in pages/label_page.h.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace printing {

struct Label {
    std::string shop;
    std::string name;
    std::string unit;   // empty for the base unit
    std::string price;  // "12.50"
    std::string barcode;
    int copies = 1;
};

// Measures in millimetres. A roll has one label a page, a sheet several, from the right and from the top.
struct LabelPaper {
    std::string_view name;  // as a workstation keeps it
    std::string_view caption;
    double page_width = 0;
    double page_height = 0;
    int columns = 1;
    int rows = 1;
    double left = 0;  // the margins before the first label
    double top = 0;
    double width = 0;  // of a label
    double height = 0;
    // Printed by the workstation's receipt printer, if it is at a port; the printer cuts after each label.
    bool is_of_receipts = false;
    bool is_sheet() const { return columns * rows > 1; }
};
std::span<const LabelPaper> label_papers();

struct LabelJob {
    LabelPaper paper;
    int used = 0;  // labels already missing from the first sheet
    std::vector<Label> labels;

    // The number of labels, and of the pages that they take.
    int count() const;
    int pages() const;
};

// The most copies of one label.
inline constexpr int most_copies = 1000;

}  // namespace printing
