#include "ui/printing/reports.h"

#include <QStringList>

#include "cash/daily_statement.h"
#include "cash/messages.h"
#include "cash/shift.h"
#include "printing/receipt_printer.h"
#include "printing/report_printer.h"
#include "signin/session.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "Printed."
constexpr std::string_view printed = "تمت الطباعة";
// "There is no printer; saved in the file …"
constexpr std::string_view kept_instead = "لا توجد طابعة .. تم الحفظ في الملف ";

// The file as the cashier finds it, relative to the program's folder.
std::string name_of(const std::filesystem::path& file) {
    return "\u200e" + (file.parent_path().filename() / file.filename()).string();
}

// The count by notes and coins as a table; none if there was none.
void add_pieces(printing::Report& report, const cash::DrawerCount& count) {
    if (count.total().is_zero()) return;
    report.columns = {{"الفئة", printing::Align::start, 1},
                      {"العدد", printing::Align::end, 1},
                      {"القيمة", printing::Align::end, 1}};
    for (const cash::Pieces& of : count.pieces) {
        if (of.count != 0)
            report.rows.push_back(
                {common::denomination_text(of.denomination), std::to_string(of.count), of.value().text()});
    }
    if (!count.other.is_zero()) report.rows.push_back({"أخرى", "", count.other.text()});
}

}  // namespace

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session) {
    printing::Report report = printing::headed("shift", session);
    // Laid out from the left, so that the number is at the end of the title; the right-to-left mark keeps the
    // colon beside the number.
    report.title = "\u202a" + shift.title() + "\u200f\u202c";
    report.captions = shift.captions();
    add_pieces(report, shift.pieces);
    report.totals = shift.amounts();
    report.main_total = 0;
    // Who hands the drawer over, and who takes it.
    report.signatures = {"المسلم", "المستلم"};
    return report;
}

printing::Report report_of(const cash::DayReport& day, const signin::Session& session) {
    printing::Report report = printing::headed("statement", session);
    report.title = day.title;
    report.captions = {{"المخزن", day.store},
                       {std::string(cash::message::drawer), day.drawer},
                       {"البونات", day.filter},
                       {"المستخدم", session.user_name}};
    // Number, kind, value, customer or vendor, salesman, drawer.
    const printing::ReportColumn shapes[] = {
        {"", printing::Align::start, 0.8}, {"", printing::Align::start, 1.4},
        {"", printing::Align::end, 1.2},   {"", printing::Align::start, 2.4},
        {"", printing::Align::start, 1.6}, {"", printing::Align::start, 1.6}};
    for (std::size_t column = 0; column < day.headings.size() && column < std::size(shapes); ++column) {
        report.columns.push_back(shapes[column]);
        report.columns.back().heading = day.headings[column];
    }
    report.rows = day.rows;
    report.totals = day.totals;  // the last, the current balance, stands out
    report.signatures = {"الكاشير", "المدير"};
    return report;
}

void print_shift_report(const cash::ShiftReport& shift, const Context& context) {
    if (context.reports.print(report_of(shift, context.session))) return;
    context.services.prompts.message(cash::message::check_printer, common::Icon::exclamation);
}

QString printed_text(const Context& context) {
    const QString kept = kept_text(context);
    return kept.isEmpty() ? qt(printed) : kept;
}

QString kept_text(const Context& context) {
    QStringList names;
    for (const auto& files : {context.receipts.take_kept(), context.reports.take_kept()}) {
        for (const auto& file : files)
            names << qt(name_of(file));
    }
    return names.isEmpty() ? QString() : qt(kept_instead) + names.join("\u200f، ");
}

QString keep_report(const Context& context, const printing::Report& report, ReportFile kind) {
    const bool as_csv = kind == ReportFile::csv;
    const auto file = printing::kept_file(context.session.program_folder, report.name,
                                          context.services.clock.now(), as_csv ? ".csv" : ".pdf");
    std::filesystem::create_directories(file.parent_path());
    const bool kept =
        as_csv ? context.reports.save_csv(report, file) : context.reports.save_pdf(report, file);
    return kept ? "تم حفظ الملف " + qt(name_of(file)) : QString();
}

void say_where_kept(const Context& context) {
    const QString kept = kept_text(context);
    if (!kept.isEmpty()) context.services.prompts.message(utf8(kept), common::Icon::information);
}

}  // namespace ui
