// The card of an item: its fields as they stand on the screen, how they are checked, and how they are saved.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/clock.h"
#include "common/form.h"
#include "common/prompts.h"
#include "common/refusal.h"
#include "database/connection.h"
#include "goods/prices.h"
#include "signin/session.h"

namespace goods {

struct CardBarcode {
    std::string text;
    int unit_level = 1;
    auto operator<=>(const CardBarcode&) const = default;
};

struct CardFields {
    std::string code;
    std::string name;
    std::string description;
    std::string group;  // by name; a new one is added
    std::string maker;
    std::string pack;  // base units in a pack, in a carton; empty if the item has none
    std::string carton;
    std::string minimum;
    bool is_service = false;  // sold without stock
    bool is_stopped = false;
    // By unit and level, as typed. An empty price of a unit that the item has is computed when the card is
    // saved.
    std::array<std::array<std::string, price_levels>, units> prices;
    std::vector<CardBarcode> barcodes;

    bool operator==(const CardFields&) const = default;
};

common::FormTable<CardFields> card_form();
inline constexpr std::string_view group_field = "item_group";
inline constexpr std::string_view maker_field = "item_maker";
inline constexpr std::string_view barcode_field = "item_barcode";
// "item_price_12": the object name of a price's field, by unit and level from 1.
std::string_view price_field(int unit_level, int price_level);
// What a level is called: "التكلفة" (cost), "قطاعي" (retail), "جملة" (wholesale), "سعر 4", "سعر 5".
std::string_view level_name(int price_level);

class ItemCard {
  public:
    ItemCard(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
             common::Clock& clock);

    // An empty card with the next free code.
    void open_new();
    // Refused if there is no such item.
    std::optional<common::Refusal> open(std::int64_t code);
    // Makes a new item of what the card shows, without its barcodes.
    void copy_as_new();

    // Writes the card in one transaction, or nothing. If somebody changed the item since it was opened, that
    // is said, and the fields take over what was changed unless they were edited here too.
    std::optional<common::Refusal> save();
    // Deletes the item. Refused if anything else in the shop refers to it.
    std::optional<common::Refusal> remove();

    // Call after a price was edited: the prices computed from it follow. Returns true if one changed.
    bool follow(int unit_level, int price_level, std::string_view before);

    // Adds a barcode as it was typed or scanned; returns false after showing why not.
    bool add_barcode(std::string_view typed, int unit_level);
    // Adds a free barcode of the shop's own; returns false after saying that there is none.
    bool draw_barcode(int unit_level);
    void remove_barcode(std::size_t at) {
        card.barcodes.erase(card.barcodes.begin() + static_cast<std::ptrdiff_t>(at));
    }

    CardFields card;

    bool is_new() const { return is_new_; }
    bool is_changed() const { return card != shown_; }
    bool shows_cost() const { return shows_cost_; }
    // 0 for a new item.
    std::int64_t code() const { return code_; }
    const std::vector<std::string>& groups() const { return groups_; }
    const std::vector<std::string>& makers() const { return makers_; }
    // The price changes of the item, without costs for those who may not see them.
    std::vector<PriceHistoryRow> history();

  private:
    // What the fields say once they are read.
    struct Checked {
        std::optional<double> pack, carton, minimum;
        std::array<std::array<double, price_levels>, units> prices{};
        bool has_unit(int unit_level) const {
            return unit_level == 1 || (unit_level == 2 ? pack : carton).has_value();
        }
    };
    std::optional<CardFields> read(std::int64_t code);
    void read_lists();
    std::optional<common::Refusal> check(Checked& checked);
    std::optional<common::Refusal> check_texts();
    std::optional<common::Refusal> check_code();
    std::optional<common::Refusal> check_units(Checked& checked);
    std::optional<common::Refusal> check_prices(Checked& checked);
    bool may_be_below_cost(const Checked& checked);
    bool may_add_names();
    std::optional<common::Refusal> write(const Checked& checked);
    std::optional<common::Refusal> take_over_changes();
    void write_row(const Checked& checked);
    void write_prices(const Checked& checked);
    void write_barcodes();
    database::Value name_code(database::Fragment table_codes, database::Fragment insert,
                              const std::string& name);
    std::optional<std::string> barcode_refusal(const std::string& barcode);
    void note() const;

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    common::Clock& clock_;
    bool shows_cost_;
    bool is_new_ = true;
    std::int64_t code_ = 0;
    CardFields shown_;  // as it was opened or saved last
    std::vector<std::string> groups_;
    std::vector<std::string> makers_;
    std::vector<ChangedPrice> changed_prices_;  // by the last save
};

}  // namespace goods
