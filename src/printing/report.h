// A printed report as plain data: a title, captions, one table, totals. Drawn in pages/report_page.h.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace signin {
struct Session;
}

namespace printing {

enum class Align { start, centre, end };  // of a right-to-left page: start is the right
enum class Orientation { portrait, landscape };
enum class Paper { a4, a5 };

struct ReportColumn {
    std::string heading;
    Align align = Align::start;  // figures stand at the end, so that their decimals line up
    double share = 1;            // of the width, against the other columns
};

// A label with its value.
using Caption = std::pair<std::string, std::string>;

struct Report {
    std::string name;  // of the file in which it is kept, Latin letters: "shift", "statement"
    std::string store_name;
    std::string second_store_name;
    std::string telephone;
    std::filesystem::path logo;  // a picture file; empty for none
    std::string title;
    std::vector<Caption> captions;               // two a row above the table
    std::vector<ReportColumn> columns;           // from the right; without columns there is no table
    std::vector<std::vector<std::string>> rows;  // cells in the columns' order; missing ones are empty
    std::vector<Caption> totals;
    int main_total = -1;                  // which of the totals stands out; -1 for the last
    std::string words;                    // an amount in words, under the totals
    std::vector<std::string> footers;     // notes at the end
    std::vector<std::string> signatures;  // captions of signature lines at the end
    Paper paper = Paper::a4;              // vouchers: A5
    Orientation orientation = Orientation::portrait;

    std::vector<std::string> headings() const;
};

// Returns a report of that name with nothing but the shop's letterhead.
Report headed(std::string name, const signin::Session& session);

// The report as comma-separated values in UTF-8 with a byte order mark, lines ending in CR LF: title,
// captions, headings, rows and totals, each on lines of their own. A text with a comma, a quote or a
// line end is quoted; a text that a spreadsheet would take for a formula gets an apostrophe in front.
std::string report_csv(const Report& report);

}  // namespace printing
