#include "printing/layout_data.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"

namespace printing {

using database::quoted;
using database::Sql;

namespace {

constexpr std::size_t column_width = 100;
constexpr int smallest_font = 4;
constexpr int largest_font = 24;

std::string printed_price(const ReceiptLine& line, const ReceiptSettings& settings) {
    const bool computed = !settings.price_as_entered && line.quantity != 0;
    return common::format_amount(computed ? line.total / line.quantity : line.price);
}

}  // namespace

ReceiptSettings read_receipt_settings(database::Connection& connection) {
    ReceiptSettings settings;
    const auto rows = connection.query("select * from basic ");
    if (rows.empty()) return settings;
    const auto& row = rows.front();
    settings.rec_note = row.text("rec_note");
    settings.preview = row.integer("bon_prv") == 1;
    settings.price_as_entered = row.integer("aft_dsc") == 1;
    settings.show_item_code = row.integer("item_code") == 1;
    if (!row.text("bon_font").empty()) settings.font = row.text("bon_font");
    const auto size = row.integer("bon_font_s");
    if (size >= smallest_font && size <= largest_font) settings.font_size = static_cast<int>(size);
    return settings;
}

Sql LayoutRows::condition() const {
    if (!cash_point_) return Sql(" where [user] = ") + quoted(user_);
    return Sql(" where f18=") + quoted(std::to_string(*cash_point_)) + " and [user] = " + quoted(user_);
}

void LayoutRows::write(const Receipt& receipt, Form form, const ReceiptSettings& settings) {
    // The plain and the compact layout do not show units.
    const bool units = form != Form::reprint && form != Form::no_telephone;
    connection_.execute(Sql("delete from [print]") + condition());
    database::Recordset rows(connection_, Sql("select * from [print]") + condition());
    int number = 0;
    for (const ReceiptLine& line : receipt.lines) {
        const auto cell = [](const std::string& text) { return common::left(text, column_width); };
        rows.add();
        rows.set("f1", cell(line.item_name));
        rows.set("F2", printed_price(line, settings));
        rows.set("f3", common::shortest_text(line.quantity));
        rows.set("f4", common::format_amount(line.total));
        if (units) rows.set("f5", cell(line.unit_name));
        rows.set("f6", cell(line.item_code));
        rows.set("st", ++number);
        if (cash_point_) rows.set("f18", std::to_string(*cash_point_));
        rows.set("user", user_);
        rows.update();
    }
}

std::vector<LayoutRow> LayoutRows::read() {
    std::vector<std::pair<std::int64_t, LayoutRow>> numbered;
    for (const auto& row : connection_.query(Sql("select * from [print]") + condition())) {
        numbered.emplace_back(row.integer("st"), LayoutRow{row.text("f1"), row.text("f2"), row.text("f3"),
                                                           row.text("f4"), row.text("f5"), row.text("f6")});
    }
    // A server promises no order.
    std::stable_sort(numbered.begin(), numbered.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<LayoutRow> rows;
    for (auto& [number, row] : numbered)
        rows.push_back(std::move(row));
    return rows;
}

}  // namespace printing
