#include "printing/report.h"

#include <fmt/format.h>

#include <string_view>
#include <system_error>

#include "common/csv.h"
#include "printing/receipt.h"
#include "printing/report_printer.h"
#include "signin/session.h"

namespace printing {

std::vector<std::string> Report::headings() const {
    std::vector<std::string> texts;
    for (const ReportColumn& column : columns)
        texts.push_back(column.heading);
    return texts;
}

Report headed(std::string name, const signin::Session& session) {
    Report report;
    report.name = std::move(name);
    report.store_name = session.settings.aname;
    report.second_store_name = session.settings.ename;
    if (!session.settings.tel.empty()) report.telephone = telephone_line(session.settings.tel);
    report.logo = session.program_folder / session.settings.logo;
    return report;
}

std::string report_csv(const Report& report) {
    std::string csv = "\xEF\xBB\xBF" + common::csv_record({report.title});
    for (const auto& [label, value] : report.captions)
        csv += common::csv_record({label, value});
    if (!report.columns.empty()) csv += common::csv_record(report.headings());
    for (const auto& row : report.rows)
        csv += common::csv_record(row);
    for (const auto& [label, value] : report.totals)
        csv += common::csv_record({label, value});
    if (!report.words.empty()) csv += common::csv_record({report.words});
    for (const std::string& footer : report.footers)
        csv += common::csv_record({footer});
    return csv;
}

std::filesystem::path kept_file(const std::filesystem::path& program_folder, const std::string& name,
                                const common::Moment& moment, std::string_view extension) {
    const auto& [date, time] = moment;
    const std::string stem = fmt::format("{}-{:04}{:02}{:02}-{:02}{:02}{:02}", name, date.year, date.month,
                                         date.day, time.hour, time.minute, time.second);
    std::filesystem::path file = program_folder / "Receipts" / fmt::format("{}{}", stem, extension);
    std::error_code ignored;
    for (int copy = 2; std::filesystem::exists(file, ignored); ++copy)
        file.replace_filename(fmt::format("{}-{}{}", stem, copy, extension));
    return file;
}

}  // namespace printing
