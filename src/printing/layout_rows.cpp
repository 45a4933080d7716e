#include "printing/layout_rows.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"

namespace printing {

using database::quoted;
using database::Sql;

namespace {

constexpr std::size_t column_width = 100;

std::string printed_price(const ReceiptLine& line, const ReceiptSettings& settings) {
    const bool computed = !settings.price_as_entered && line.quantity != 0;
    return common::format_amount(computed ? line.total / line.quantity : line.price);
}

}  // namespace

Sql LayoutRows::condition() const {
    if (!cash_point_) return Sql(" where [user] = ") + quoted(user_);
    return Sql(" where f18=") + quoted(std::to_string(*cash_point_)) + " and [user] = " + quoted(user_);
}

void LayoutRows::write(const Receipt& receipt, Form form, const ReceiptSettings& settings) {
    // The plain and the compact layout have no further value of a line.
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
