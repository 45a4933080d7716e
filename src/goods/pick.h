// The item that an entry in the office names: a scan, a code, or an item chosen from the matches.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"
#include "sales/entry.h"
#include "sales/items.h"

namespace goods {

struct Pick {
    sales::Item item;  // in the unit that the entry named
    double quantity = 1;
    bool quantity_typed = false;  // the quantity was typed before "*", or stands on a label of the scale
};

struct Picked {
    enum class Outcome { item, words, refused };
    Outcome outcome = Outcome::refused;
    Pick pick;                 // of an item
    std::string_view refusal;  // for people; empty if nothing was entered
};

// Reads what the shop has under the entry. Items that are stopped count: they still have stock. Words that
// are no code are left to a search.
Picked pick_item(database::Connection& connection, const sales::Entry& entry);

}  // namespace goods
