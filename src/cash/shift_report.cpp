#include "cash/shift_report.h"

#include "cash/messages.h"
#include "database/recordset.h"

namespace cash {

using common::Amount;
using database::quoted;
using database::Sql;

std::optional<Amount> ShiftReport::difference() const {
    return counted ? std::optional(*counted - expected) : std::nullopt;
}

std::string ShiftReport::title() const {
    return std::to_string(number) + std::string(message::shift_report_title);
}

std::vector<std::pair<std::string, std::string>> ShiftReport::captions() const {
    return {{"الموظف", worker},
            {"رقم الوردية", std::to_string(number)},
            {"بداية الوردية", common::moment_text(start)},
            {"نهاية الوردية", common::moment_text(end)},
            {std::string(message::drawer), drawer},
            {"الفرع", store}};
}

std::vector<std::pair<std::string, std::string>> ShiftReport::amounts() const {
    std::vector<std::pair<std::string, std::string>> rows;
    const auto add = [&rows](std::string_view caption, Amount amount) {
        rows.emplace_back(caption, amount.text());
    };
    rows.emplace_back(message::counted_cash, counted ? counted->text() : std::string(message::not_counted));
    add(message::expected_cash, expected);
    rows.emplace_back(message::difference, counted ? difference()->text() : std::string(message::no_figure));
    add(term(Movement::card_sales).caption, card_sales);
    add(term(Movement::uncollected).caption, uncollected);
    if (discounts.taken_off) add(message::shift_discounts_taken_off, *discounts.taken_off);
    if (!discounts.taken_off || !discounts.beside.is_zero()) add(message::shift_discounts, discounts.beside);
    return rows;
}

void write_print_row(database::Connection& connection, common::Log& log, const ShiftReport& report,
                     const std::string& user) {
    try {
        connection.execute(Sql("delete from [print] where [user] = ") + quoted(user));
        database::Recordset row(connection, "select * from [print]");
        row.add();
        row.set("f1", report.counted.value_or(Amount()).text());
        row.set("F2", report.expected.text());
        row.set("f3", report.difference().value_or(Amount()).text());
        row.set("f4", report.card_sales.text());
        row.set("User", user);
        row.update();
    } catch (const database::Error& error) {
        log.log_event(error.what(), error.sqlstate());
    }
}

}  // namespace cash
