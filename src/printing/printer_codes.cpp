#include "printing/printer_codes.h"

#include <array>
#include <stdexcept>
#include <string>

#include "common/numbers.h"
#include "common/text.h"

namespace printing {

extern const std::string_view codes_864;  // data/codes_864.csv

namespace {

bool is_printable(long long code) {
    return code >= 32 && code <= 255 && code != 127;
}

std::string_view take_line(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return common::trim(line);
}

std::array<long long, 3> numbers_of(std::string_view line, int line_number) {
    const auto refuse = [line_number] {
        throw std::invalid_argument("printer codes, line " + std::to_string(line_number) +
                                    ": expected three numbers wc,pc,pc1");
    };
    std::array<long long, 3> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t comma = line.find(',');
        const auto number = common::parse_integer(line.substr(0, comma));
        const bool last = i + 1 == numbers.size();
        if (!number || last != (comma == std::string_view::npos)) refuse();
        numbers[i] = *number;
        if (!last) line.remove_prefix(comma + 1);
    }
    return numbers;
}

}  // namespace

void PrinterCodes::add(long long wc, long long joined, long long unjoined) {
    const bool is_key = wc >= 0 && wc <= lam_alef(255);
    if (!is_key || !is_printable(joined) || !is_printable(unjoined)) return;
    rows_[static_cast<int>(wc)] = {static_cast<unsigned char>(joined), static_cast<unsigned char>(unjoined)};
}

PrinterCodes PrinterCodes::load(database::Connection& connection) {
    PrinterCodes codes;
    for (const auto& row : connection.query("select * from codes")) {
        if (row.null("wc") || (row.null("pc") && row.null("pc1"))) continue;
        // A row that names one form has no other.
        const auto joined = row.integer(row.null("pc") ? "pc1" : "pc");
        const auto unjoined = row.integer(row.null("pc1") ? "pc" : "pc1");
        codes.add(row.integer("wc"), joined, unjoined);
    }
    // A shop with rows for Latin letters alone has not said what its Arabic letters are.
    const bool has_arabic = codes.rows_.lower_bound(first_looked_up) != codes.rows_.end();
    if (!has_arabic) codes.rows_.insert(default_codes().rows_.begin(), default_codes().rows_.end());
    return codes;
}

PrinterCodes PrinterCodes::from_csv(std::string_view csv) {
    PrinterCodes codes;
    int line_number = 1;
    if (take_line(csv) != "wc,pc,pc1")
        throw std::invalid_argument("printer codes, line 1: expected wc,pc,pc1");
    while (!csv.empty()) {
        ++line_number;
        const std::string_view line = take_line(csv);
        if (line.empty()) continue;
        const auto [wc, joined, unjoined] = numbers_of(line, line_number);
        codes.add(wc, joined, unjoined);
    }
    return codes;
}

std::optional<PrinterForms> PrinterCodes::find(int wc) const {
    const auto row = rows_.find(wc);
    if (row == rows_.end()) return std::nullopt;
    return row->second;
}

const PrinterCodes& default_codes() {
    static const PrinterCodes codes = PrinterCodes::from_csv(codes_864);
    return codes;
}

}  // namespace printing
