#include "sales/tiles.h"

#include <map>

#include "common/text.h"
#include "database/next_number.h"
#include "database/transaction.h"
#include "sales/items.h"
#include "sales/messages.h"

namespace sales {

using database::quoted;
using database::Result;
using database::Row;
using database::Sql;

namespace {

// Place 0 of a page holds its name, the places behind it its tiles.
std::vector<TilePage> pages_in(const Result& rows) {
    std::vector<TilePage> pages;
    for (const Row& row : rows) {
        const std::int64_t number = row.integer("page");
        if (pages.empty() || pages.back().number != number) pages.push_back({number, {}, {}, {}});
        for (const char* column : {"place", "name", "icode", "scode", "colour"})
            pages.back().rows += row.text(column) + '\n';
        if (row.integer("place") == 0)
            pages.back().name = row.text("name");
        else
            pages.back().tiles.push_back({row.integer("icode"),
                                          unit_level_of(row.integer("scode")),
                                          static_cast<int>(row.integer("colour")),
                                          "",
                                          {}});
    }
    return pages;
}

void complete(Tile& tile, const Row& card, int price_level) {
    const Item item = item_of(card, tile.unit);
    tile.name = item.name;
    const auto price = entry_price(item, price_level);
    if (!item_refusal(item, false) && price && *price > 0) tile.price = price;
}

// A page that is not stored yet cannot have changed.
bool has_changed(database::Connection& connection, const TilePage& page) {
    if (page.number == 0) return false;
    const auto now = pages_in(
        connection.query(Sql("select * from till_tile where page = ") + page.number + " order by place"));
    return now.empty() || now.front().rows != page.rows;
}

std::vector<database::Command> rows_of(const TilePage& page) {
    const auto insert = [&](std::size_t place) {
        return Sql("insert into till_tile (page, place, [name], icode, scode, colour) values (") +
               page.number + ", " + place + ", ";
    };
    std::vector<database::Command> rows;
    rows.emplace_back(Sql("delete from till_tile where page = ") + page.number);
    rows.emplace_back(insert(0) + "N" + quoted(page.name) + ", null, null, null)");
    for (std::size_t i = 0; i < page.tiles.size(); ++i) {
        const Tile& tile = page.tiles[i];
        rows.emplace_back(insert(i + 1) + "null, " + tile.item + ", " + tile.unit + ", " + tile.colour + ")");
    }
    return rows;
}

}  // namespace

std::vector<TilePage> SaleTiles::pages() {
    return look_up("read the tiles", std::vector<TilePage>(), [&] {
        std::vector<TilePage> pages;
        std::map<std::int64_t, Row> cards;
        database::Reads reads;
        reads.add_optional("select * from till_tile order by page, place",
                           [&](const Result& rows) { pages = pages_in(rows); });
        reads.add_optional(Sql("SELECT ") + item_cards + "where items.code in (select icode from till_tile)",
                           [&](const Result& rows) {
                               for (const Row& row : rows)
                                   cards.emplace(row.integer("code"), row);
                           });
        reads.run(connection_);
        for (TilePage& page : pages) {
            std::erase_if(page.tiles, [&](const Tile& tile) { return !cards.contains(tile.item); });
            for (Tile& tile : page.tiles)
                complete(tile, cards.at(tile.item), invoice_.price_level);
        }
        return pages;
    });
}

bool SaleTiles::store(TilePage& page) {
    return look_up("store a page of tiles", false, [&] {
        if (!may_edit()) return false;
        page.name = std::string(common::trim(page.name));
        if (page.name.empty()) {
            services_.prompts.message(message::name_tile_page);
            return false;
        }
        const std::int64_t known = page.number;
        bool changed = false;
        database::in_transaction(connection_, [&] {
            changed = has_changed(connection_, page);
            if (changed) return;
            page.number =
                known != 0 ? known : database::next_number(connection_, "select max(page) from till_tile");
            connection_.run_all(rows_of(page));
        });
        if (changed) {
            services_.prompts.message(message::tile_page_changed, common::Icon::exclamation);
            return false;
        }
        connection_.make_durable();
        return true;
    });
}

bool SaleTiles::remove(const TilePage& page) {
    return look_up("remove a page of tiles", false, [&] {
        if (!may_edit()) return false;
        connection_.execute(Sql("delete from till_tile where page = ") + page.number);
        connection_.make_durable();
        return true;
    });
}

std::optional<Tile> SaleTiles::tile_of(const Entry& entry) {
    using Answer = std::optional<Tile>;
    return look_up("find a tile's item", Answer(), [&]() -> Answer {
        if (entry.form == EntryForm::chosen_item) return Tile{entry.number, entry.unit_level, 0, "", {}};
        const Lookup lookup = look_up_item(connection_, entry.text);
        if (const auto refusal = lookup_refusal(lookup.found)) {
            services_.prompts.message(*refusal);
            return std::nullopt;
        }
        return Tile{lookup.item.code, lookup.item.unit_level, 0, lookup.item.name, {}};
    });
}

}  // namespace sales
