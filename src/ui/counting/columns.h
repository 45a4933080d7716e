// The columns of a list that is shown and printed alike.
#pragma once

#include <QStringList>
#include <span>
#include <string>
#include <vector>

#include "printing/report.h"

namespace ui {

struct Column {
    const char* heading;
    double share;  // of the width
    bool is_figure;
};

QStringList headings_of(std::span<const Column> columns);
// The texts of the rows as cells of a table.
std::vector<QStringList> cells_of(const std::vector<std::vector<std::string>>& rows,
                                  std::span<const Column> columns);
void add_columns(printing::Report& report, std::span<const Column> columns);

}  // namespace ui
