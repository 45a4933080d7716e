#include "printing/report.h"

#include <fmt/format.h>

#include <string_view>
#include <system_error>

#include "common/csv.h"
#include "common/numbers.h"
#include "printing/report_printer.h"
#include "signin/session.h"

namespace printing {

namespace {

// "=1+1" typed as a customer's name must not become a formula in the owner's spreadsheet.
bool looks_like_formula(std::string_view cell) {
    if (cell.empty()) return false;
    if (cell.front() == '=' || cell.front() == '@' || cell.front() == '\t' || cell.front() == '\r')
        return true;
    return (cell.front() == '-' || cell.front() == '+') && !common::parse_number(cell);
}

std::string csv_line(std::vector<std::string> cells) {
    for (std::string& cell : cells)
        if (looks_like_formula(cell)) cell.insert(0, 1, '\'');
    return common::csv_record(cells);
}

}  // namespace

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
    report.telephone = session.settings.tel;
    report.logo = session.program_folder / session.settings.logo;
    return report;
}

std::string report_csv(const Report& report) {
    std::string csv = "\xEF\xBB\xBF" + csv_line({report.title});
    for (const auto& [label, value] : report.captions)
        csv += csv_line({label, value});
    if (!report.columns.empty()) csv += csv_line(report.headings());
    for (const auto& row : report.rows)
        csv += csv_line(row);
    for (const auto& [label, value] : report.totals)
        csv += csv_line({label, value});
    if (!report.words.empty()) csv += csv_line({report.words});
    for (const std::string& footer : report.footers)
        csv += csv_line({footer});
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
