// What a count found, as rows of a list and as a page to sign.
#pragma once

#include <QStringList>

#include "counting/differences.h"
#include "printing/report.h"

namespace ui {

// The columns of differences, or of goods that nobody counted; the value only for users who may see costs.
QStringList counting_headings(bool sees_cost, bool is_missing);
QStringList counting_cells(const counting::Difference& difference, bool sees_cost, bool is_missing);
// How many items, and what surplus and shortage are worth.
QString totals_text(const std::vector<counting::Difference>& found, bool sees_cost);

// The page, with lines for the signatures of whoever counted and whoever books.
printing::Report count_paper(const signin::Session& session, const counting::Count& count,
                             const std::vector<counting::Difference>& found, bool sees_cost, bool is_missing);

}  // namespace ui
