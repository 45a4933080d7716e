// Imports of items: what a file would do.
#include "common/numbers.h"
#include "common/text.h"
#include "goods/barcodes.h"
#include "goods/import_writing.h"
#include "goods/item_card.h"
#include "goods/item_import.h"

namespace goods {

using database::Connection;
using database::Row;
using database::TextLimits;

namespace {

KnownGoods known_goods(Connection& connection, bool may_update) {
    KnownGoods known{may_update,
                     {},
                     {},
                     {},
                     {},
                     TextLimits(connection, "items"),
                     TextLimits(connection, "makers"),
                     TextLimits(connection, "item_types"),
                     TextLimits(connection, "barcode")};
    for (const auto& row : connection.query("select code,[name] from items")) {
        known.codes.insert(row.integer("code"));
        known.names.emplace(common::lower_ascii(common::trim(row.text("name"))), row.integer("code"));
    }
    for (const auto& row : connection.query("select bar,code from barcode"))
        known.barcodes.emplace(comparable_barcode(row.text("bar")), row.integer("code"));
    for (const auto& row : connection.query("select code from stocks"))
        known.stores.insert(row.integer("code"));
    return known;
}

// Says what a line changes on the card of its item.
class Difference {
  public:
    Difference(const ItemLine& line, const CardNow& card) : line_(line), card_(card) {}

    std::string text() {
        compare("name", "الاسم", card_.name, line_.name);
        compare("maker", "الشركة", card_.maker, line_.maker);
        compare("group", "المجموعة", card_.group, line_.group);
        compare("description", "الوصف", card_.description, line_.description);
        compare("minimum", "الحد الأدنى", card_.minimum, line_.minimum);
        compare("pack", "وحدات العبوة", card_.pack, line_.pack);
        compare("carton", "وحدات الكرتونة", card_.carton, line_.carton);
        if (line_.has("service") && line_.service != card_.is_service)
            add("يباع بدون كميات", card_.is_service ? "نعم" : "لا", line_.service ? "نعم" : "لا");
        for (const NewPrice& price : prices_of(line_, card_)) {
            const auto from = card_.prices[static_cast<std::size_t>(price.unit_level) - 1]
                                          [static_cast<std::size_t>(price.price_level) - 1];
            if (from && same_price(*from, price.price)) continue;
            const bool is_given = line_.has(sales::price_column(price.unit_level, price.price_level));
            add(std::string(level_name(price.price_level)) + " " +
                    std::string(sales::unit_name(price.unit_level)) + (is_given ? "" : " (مع القطاعي)"),
                from ? common::shortest_text(common::round_decimals(*from, 4)) : "",
                common::shortest_text(price.price));
        }
        for (const CardBarcode& barcode : new_barcodes(line_, card_))
            add("باركود " + std::string(sales::unit_name(barcode.unit_level)), "", barcode.text);
        return std::move(text_);
    }

  private:
    void add(const std::string& caption, const std::string& from, const std::string& to) {
        if (!text_.empty()) text_ += "، ";
        text_ += caption + ": " + (from.empty() ? "" : "من " + from + " إلى ") + to;
    }
    void compare(std::string_view column, const std::string& caption, const std::string& from,
                 const std::string& to) {
        if (line_.has(column) && from != to) add(caption, from, to);
    }
    void compare(std::string_view column, const std::string& caption, const std::optional<double>& from,
                 const std::optional<double>& to) {
        if (!to || !line_.has(column) || (from && same_price(*from, *to))) return;
        add(caption, from ? common::shortest_text(*from) : "", common::shortest_text(*to));
    }

    const ItemLine& line_;
    const CardNow& card_;
    std::string text_;
};

}  // namespace

std::string difference_text(const ItemLine& line, const CardNow& card) {
    return Difference(line, card).text();
}

ImportPlan plan_import(Connection& connection, std::string_view csv, bool may_update,
                       const ImportProgress& progress) {
    ItemFile file = read_items(csv, known_goods(connection, may_update), [&](std::size_t bytes) {
        if (progress) progress(ImportStage::reading, bytes, csv.size());
    });
    ImportPlan plan;
    plan.problems = std::move(file.problems);
    plan.notes = std::move(file.notes);
    plan.has_unknown_headings = file.has_unknown_headings;
    std::set<std::int64_t> codes;
    for (const ItemLine& line : file.lines)
        if (line.is_update) codes.insert(line.code);
    const auto cards = cards_now(connection, codes);
    for (ItemLine& line : file.lines) {
        PlannedLine planned;
        planned.name = line.name;
        if (line.is_update) {
            const CardNow& card = cards.at(line.code);
            if (planned.name.empty()) planned.name = card.name;
            if (auto fault = unit_fault(line, card))
                plan.problems.push_back(problem_of(line, planned.name, std::move(*fault)));
            planned.changes = difference_text(line, card);
        }
        planned.item = std::move(line);
        if (!planned.item.is_update)
            ++plan.added;
        else if (planned.changes_anything())
            ++plan.changed;
        plan.lines.push_back(std::move(planned));
    }
    return plan;
}

}  // namespace goods
