// The shop's own pages of tiles: items that one tap rings up, such as those without a barcode. They stand in
// the table `till_tile`, so that every till of the shop shows them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "sales/entry.h"
#include "sales/sale.h"

namespace sales {

struct Tile {
    std::int64_t item = 0;
    int unit = 1;
    int colour = 0;               // which of the screen's tile colours
    std::string name;             // from the item's card
    std::optional<double> price;  // of the invoice; nothing if the item cannot be sold in that unit

    Entry entry() const { return chosen_item(item, unit); }
};

struct TilePage {
    std::int64_t number = 0;  // 0 for a page that is not stored yet
    std::string name;
    std::vector<Tile> tiles;
    std::string rows;  // as they were read, by which another till's change is noticed
};

inline constexpr std::size_t most_tile_pages = 12;
inline constexpr std::size_t most_tiles = 60;      // on a page
inline constexpr int longest_tile_page_name = 24;  // so that the names of all pages fit the screen

class SaleTiles : DeskPart {
  public:
    explicit SaleTiles(DeskState& state) : DeskPart(state) {}

    // All pages in their order, at the prices of the invoice. Tiles of deleted items are left out.
    std::vector<TilePage> pages();
    // Whether the user may change pages; says so if not. A supervisor allows it until end_editing().
    bool may_edit() { return allowed_ = allowed_ || authorise(signin::Action::edit_tiles); }
    void end_editing() { allowed_ = false; }
    // Stores a page as it is now, a new one under the next number. Returns false after showing why it was
    // not stored, as when another till has changed it since it was read.
    bool store(TilePage& page);
    bool remove(const TilePage& page);
    // The tile of an item that was chosen or scanned in the search; nothing, after saying so, without one.
    std::optional<Tile> tile_of(const Entry& entry);

  private:
    bool allowed_ = false;
};

}  // namespace sales
