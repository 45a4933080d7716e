// What an import of items would do, as rows of a list and in a sentence.
#pragma once

#include <QStringList>
#include <vector>

#include "goods/item_import.h"

namespace ui {

// Line of the file, code, name, what will happen.
QStringList import_headings();
inline constexpr int import_stretched = 3;
// First refused lines, then lines to be looked at, then what is added or changed. Only the first thousands of
// rows.
std::vector<QStringList> import_rows(const goods::ImportPlan& plan);
QString import_text(const goods::ImportPlan& plan);

}  // namespace ui
