#include "ui/printing/report_of.h"

#include "cash/daily_statement.h"
#include "cash/shift_report.h"
#include "signin/session.h"

namespace ui {

printing::Report headed(const char* name, const signin::Session& session) {
    printing::Report report;
    report.name = name;
    report.store_name = session.settings.aname;
    report.second_store_name = session.settings.ename;
    report.telephone = session.settings.tel;
    report.logo = session.program_folder / session.settings.logo;
    return report;
}

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session) {
    printing::Report report = headed("shift", session);
    // The title ends in its own number only when it is laid out from the left; the mark keeps the colon
    // beside the number.
    report.title = "\u202a" + shift.title() + "\u200f\u202c";
    report.captions = shift.captions();
    report.totals = shift.amounts();
    report.main_total = 0;
    report.signatures = {"الموظف", "المدير"};
    return report;
}

printing::Report report_of(const cash::DayReport& day, const signin::Session& session) {
    printing::Report report = headed("statement", session);
    report.title = day.title;
    report.captions = {{"المخزن", day.store}, {"الخزينة", day.drawer}, {"المستخدم", session.user_name}};
    // Number, kind, value, customer or vendor, salesman.
    const printing::ReportColumn shapes[] = {{"", printing::Align::start, 0.8},
                                             {"", printing::Align::start, 1.4},
                                             {"", printing::Align::end, 1.2},
                                             {"", printing::Align::start, 2.4},
                                             {"", printing::Align::start, 1.8}};
    for (std::size_t column = 0; column < day.headings.size() && column < std::size(shapes); ++column) {
        report.columns.push_back(shapes[column]);
        report.columns.back().heading = day.headings[column];
    }
    report.rows = day.rows;
    report.totals = day.totals;  // the last, the current balance, stands out
    report.signatures = {"الكاشير", "المدير"};
    return report;
}

}  // namespace ui
