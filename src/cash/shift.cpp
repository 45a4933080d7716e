#include "cash/shift.h"

#include "cash/messages.h"
#include "database/recordset.h"

namespace cash {

using database::quoted;
using database::Sql;

std::optional<Shift> current_shift(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                                   database::Fragment order) {
    const auto rows = connection.query(Sql("select * FROM shift  where stcode = ") + store +
                                       " and cash_no = " + drawer + order);
    if (rows.empty()) return std::nullopt;
    const std::int64_t number = rows.rows().back().integer("scode");
    std::optional<Shift> last;
    for (const auto& row : rows) {
        if (row.integer("scode") != number) continue;
        Shift shift{number, row.integer("man_"), row.moment("s_date"), std::nullopt};
        if (!row.null("e_date")) shift.end = row.moment("e_date");
        if (!last || (shift.is_open() && !last->is_open())) last = shift;
    }
    return last;
}

std::string shift_worker(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                         std::int64_t number) {
    const auto rows =
        connection.query(Sql("select * from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  "
                             "where stcode = ") +
                         store + " AND cash_no = " + drawer + "  and scode = " + number);
    return rows.empty() ? "" : rows.front().text("work_name");
}

std::int64_t next_shift_number(database::Connection& connection, std::int64_t store, std::int64_t drawer) {
    return database::integer_of(
               connection.scalar(Sql("select max(scode) as last_i from shift where stcode = ") + store +
                                 " and cash_no = " + drawer)) +
           1;
}

std::string ShiftReport::title() const {
    return std::to_string(number) + std::string(message::shift_report_title);
}

std::vector<std::pair<std::string, std::string>> ShiftReport::captions() const {
    return {{"الموظف", worker},
            {"رقم الورديه", std::to_string(number)},
            {"بداية الورديه", common::moment_text(start)},
            {"نهاية الورديه", common::moment_text(end)},
            {"الخزينة", drawer},
            {"الفرع", store}};
}

std::vector<std::pair<std::string, std::string>> ShiftReport::amounts() const {
    return {
        {"الرصيد الفعلي", counted.text()},      {"الرصيد الدفتري", expected.text()},
        {"الفرق", difference.text()},           {"مبيعات إئتمان", card_sales.text()},
        {"تليفون لم يحصل", uncollected.text()}, {std::string(message::shift_discounts), discounts.text()}};
}

void write_print_row(database::Connection& connection, const ShiftReport& report, const std::string& user) {
    connection.execute(Sql("delete from [print] where [user] = ") + quoted(user));
    database::Recordset row(connection, "select * from [print]");
    row.add();
    row.set("f1", report.counted.text());
    row.set("F2", report.expected.text());
    row.set("f3", report.difference.text());
    row.set("f4", report.card_sales.text());
    row.set("User", user);
    row.update();
}

}  // namespace cash
