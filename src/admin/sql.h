// Results as text: a table for people, CSV for programs.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"

namespace admin {

// The cells of a terminal that a text takes: none for Arabic vowel marks and joiners, two for wide
// characters.
std::size_t display_width(std::string_view text);

// A header, a rule and one line for each row. Columns are as wide as their widest cell, with two blanks
// between them; numbers are right-aligned. A null is "NULL"; control characters are shown as blanks.
std::string aligned_table(const database::Result& result);

// CSV with a header line; a null is an empty cell.
std::string csv_table(const database::Result& result);

}  // namespace admin
