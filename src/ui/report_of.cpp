#include "ui/report_of.h"

#include "cash/shift_report.h"
#include "signin/session.h"

namespace ui {

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session) {
    printing::Report report;
    report.name = "shift";
    report.store_name = session.settings.aname;
    report.second_store_name = session.settings.ename;
    report.telephone = session.settings.tel;
    report.logo = session.program_folder / session.settings.logo;
    report.title = shift.title();
    report.captions = shift.captions();
    report.totals = shift.amounts();
    report.main_total = 0;
    return report;
}

}  // namespace ui
