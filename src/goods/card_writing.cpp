// The card of an item: how it is written and deleted, within a transaction.
#include <algorithm>

#include "common/messages.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/recordset.h"
#include "database/till_tables.h"
#include "database/transaction.h"
#include "goods/cells.h"
#include "goods/item_card.h"
#include "goods/messages.h"
#include "signin/permissions.h"

namespace goods {

using common::Refusal;
using database::Null;
using database::quoted;
using database::Sql;
using database::Value;

namespace {

// Tables whose rows refer to an item, and what the owner calls such rows. Rows without a quantity do not
// count.
struct Reference {
    database::Fragment rows;
    std::string_view words;
};
constexpr Reference references[] = {
    {"stk where isnull(quan,0) <> 0 and icode = ", "رصيد بالمخازن"},
    {"stk_f_q where isnull(quan,0) <> 0 and icode = ", "الأرصدة الافتتاحية"},
    {"saledata where icode = ", "البونات"},
    {"purdata where icode = ", "فواتير الموردين"},
    {"transdata where icode = ", "تحويلات المخازن"},
    {"reservd where icode = ", "الحجوزات"},
    {"salver where icode = ", "أعمال الصنايعية"},
    {"sale_price where icode = ", "أسعار فترات البيع"},
    {"modify where icode = ", "تسويات الجرد"},
    {"bad_data where icode = ", "التالف"},
};

}  // namespace

std::optional<Refusal> ItemCard::write(const Checked& checked) {
    if (is_new_) {
        if (auto refusal = check_code()) return refusal;
    } else if (auto refusal = take_over_changes()) {
        return refusal;
    }
    for (const CardBarcode& barcode : card.barcodes)
        if (std::ranges::find(shown_.barcodes, barcode.text, &CardBarcode::text) == shown_.barcodes.end())
            if (auto refusal = barcode_refusal(barcode.text))
                return Refusal(barcode_field, barcode.text + "\n" + *refusal);
    code_ = common::read_code(card.code).value();
    write_row(checked);
    write_prices(checked);
    write_barcodes();
    return std::nullopt;
}

Value ItemCard::name_code(database::Fragment codes, database::Fragment insert, const std::string& name) {
    if (name.empty()) return Null{};
    const auto known = connection_.query(Sql(codes) + " where [name] = " + quoted(name));
    if (!known.empty()) return known.front().integer("code");
    std::int64_t highest = 0;
    for (const auto& row : connection_.query(codes))
        highest = std::max(highest, row.integer("code"));
    connection_.execute(insert, {Value(highest + 1), Value(name)});
    return highest + 1;
}

void ItemCard::write_row(const Checked& checked) {
    database::Recordset row(connection_, Sql("select * from items where code = ") + code_);
    if (is_new_) {
        row.add();
        row.set("code", code_);
        row.set("num1", 1);
        for (int unit = 1; unit <= units; ++unit)
            for (int level = 1; level <= price_levels; ++level)
                row.set(
                    sales::price_column(unit, level),
                    checked.prices[static_cast<std::size_t>(unit) - 1][static_cast<std::size_t>(level) - 1]);
    }
    database::store(card_form(), card, row);
    row.set("itype", name_code("select code from item_types",
                               "insert into item_types (code,[name]) values (?,?)", card.group));
    row.set("fact", name_code("select code from makers", "insert into makers (code,[name]) values (?,?)",
                              card.maker));
    row.set("num2", or_null(checked.pack));
    row.set("num3", or_null(checked.carton));
    row.set("mquan", or_null(checked.minimum));
    row.update();
}

void ItemCard::write_prices(const Checked& checked) {
    changed_prices_.clear();
    if (is_new_) return;
    std::vector<NewPrice> prices;
    for (int unit = 1; unit <= units; ++unit) {
        if (!checked.has_unit(unit)) continue;
        for (int level = shows_cost_ ? sales::cost_level : sales::retail_level; level <= price_levels;
             ++level)
            prices.push_back(
                {code_, unit, level,
                 checked.prices[static_cast<std::size_t>(unit) - 1][static_cast<std::size_t>(level) - 1]});
    }
    changed_prices_ = change_prices(connection_, session_, clock_.now(), prices, why::card);
}

void ItemCard::write_barcodes() {
    const auto is_in = [](const std::vector<CardBarcode>& list, const CardBarcode& barcode) {
        return std::ranges::find(list, barcode) != list.end();
    };
    for (const CardBarcode& barcode : shown_.barcodes)
        if (!is_in(card.barcodes, barcode))
            connection_.execute(Sql("delete from barcode where code = ") + code_ +
                                " and bar = " + quoted(barcode.text) + " and scode = " + barcode.unit_level);
    for (const CardBarcode& barcode : card.barcodes)
        if (!is_in(shown_.barcodes, barcode))
            connection_.execute("insert into barcode (bar,code,scode) values (?,?,?)",
                                {Value(barcode.text), Value(code_), Value(std::int64_t{barcode.unit_level})});
}

std::optional<Refusal> ItemCard::remove() {
    if (!signin::authorise_change(session_, prompts_, signin::Action::edit_goods)) return Refusal("", "");
    std::string found;
    database::in_transaction(connection_, [&] {
        found.clear();
        for (const Reference& reference : references)
            if (!connection_.query(Sql("select top 1 icode from ") + reference.rows + code_).empty())
                found += (found.empty() ? "" : "، ") + std::string(reference.words);
        if (!found.empty()) return;
        for (const database::Fragment rows : {database::Fragment("delete from barcode where code = "),
                                              database::Fragment("delete from stk where icode = "),
                                              database::Fragment("delete from stk_f_q where icode = "),
                                              database::Fragment("delete from tmp_price where icode = "),
                                              database::Fragment("delete from items where code = ")})
            connection_.execute(Sql(rows) + code_);
    });
    if (!found.empty())
        return Refusal("", std::string(message::referred_to) + found + std::string(message::stop_instead));
    connection_.make_durable();
    session_.note({.kind = audit::Kind::item_changed, .what = "حذف: " + shown_.name, .item = code_});
    return std::nullopt;
}

}  // namespace goods
