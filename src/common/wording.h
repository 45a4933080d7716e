// Numbers in Arabic sentences: the form of the noun after a count, and the place of a minus.
#pragma once

#include <string>
#include <string_view>

namespace common {

// A noun that is counted: one of it, two, three to ten, and from eleven to ninety-nine.
struct Noun {
    std::string_view one, two, few, many;
};

// The form that follows a count of at least three: few, many, or one after whole hundreds.
std::string_view form_after(long long count, const Noun& noun);

// A count from 0 on with its noun: "صنف واحد", "صنفان", "3 أصناف", "11 صنفا", "100 صنف". A noun that ends in
// ة is feminine.
std::string counted(long long count, const Noun& noun);

// A sentence in which every minus stands left of its number: the mark before it makes both run from left to
// right. For screens and drawn pages; a file or a printer's code page takes the sentence as it is.
std::string with_minus_at_left(std::string_view sentence);

}  // namespace common
