// Results as text: a table for people, CSV for machines.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"

namespace admin {

// The cells of a terminal that a text takes: Arabic vowel marks and joiners none, wide characters two.
std::size_t display_width(std::string_view text);

// A header, a rule, one line for each row; columns as wide as their widest cell and two blanks between them,
// numbers at the right of their column. A null is "NULL"; line ends and other control characters in a cell
// are shown as blanks. No trailing blanks.
std::string aligned_table(const database::Result& result);

// The same as CSV with a header line: a null is an empty cell.
std::string csv_table(const database::Result& result);

}  // namespace admin
