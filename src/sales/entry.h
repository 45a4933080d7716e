// Reading what arrives in the item-code field: typed, scanned, or scanned under an Arabic keyboard layout.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sales {

// The text as a scanner on a Latin layout would have sent it: with Western digits, with the Latin letters of
// the keys for those of the Arabic keyboard layout, and without direction marks, control characters and
// surrounding blanks.
std::string normalize_scan(std::string_view text);

enum class EntryForm {
    empty,        // nothing to do
    general,      // "*", with or without a name: an unlisted item
    scale_label,  // 13 digits from "20": item code and weight
    craftsman,    // "W" or "P" and the number of a craftsman work line
    code,         // a barcode or an item code
    unreadable,   // nothing that any label or keyboard of a shop produces
};

struct Entry {
    EntryForm form = EntryForm::empty;
    std::string text;         // normalised; of a scale label: the item code
    std::string name;         // of an unlisted item: what was typed after "*", as typed
    double quantity = 1;      // of a scale label its weight in units, else 1
    std::int64_t number = 0;  // of a craftsman line; 0 if the text after the letter is not a number
};

// The one interpretation of an entry. Whoever needs to know what was entered asks its result.
Entry read_entry(std::string_view text);

}  // namespace sales
