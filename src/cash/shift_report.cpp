#include "cash/shift_report.h"

#include "cash/messages.h"
#include "database/recordset.h"

namespace cash {

using database::quoted;
using database::Sql;

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
