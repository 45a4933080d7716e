#include "cash/shift_report.h"

#include "cash/messages.h"
#include "common/numbers.h"
#include "database/recordset.h"

namespace cash {

using common::format_amount;
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
    return {{"الرصيد الفعلي", format_amount(counted)},
            {"الرصيد الدفتري", format_amount(expected)},
            {"الفرق", format_amount(difference)},
            {"مبيعات إئتمان", format_amount(card_sales)},
            {"تليفون لم يحصل", format_amount(uncollected)},
            {std::string(message::shift_discounts), format_amount(discounts)}};
}

void write_print_row(database::Connection& connection, const ShiftReport& report, const std::string& user) {
    connection.execute(Sql("delete from [print] where [user] = ") + quoted(user));
    database::Recordset row(connection, "select * from [print]");
    row.add();
    row.set("f1", format_amount(report.counted));
    row.set("F2", format_amount(report.expected));
    row.set("f3", format_amount(report.difference));
    row.set("f4", format_amount(report.card_sales));
    row.set("User", user);
    row.update();
}

}  // namespace cash
