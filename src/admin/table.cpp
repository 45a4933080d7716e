#include "admin/table.h"

#include <locale.h>
#include <clocale>
#include <cwchar>

#include <algorithm>
#include <vector>

#include "common/csv.h"
#include "common/text.h"

namespace admin {

namespace {

// The C library knows the widths, but only under a locale whose characters are Unicode's; the program's own
// may be any, so this one is used for the question alone.
class UnicodeLocale {
  public:
    UnicodeLocale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
        if (locale_ != nullptr) former_ = uselocale(locale_);
    }
    ~UnicodeLocale() {
        if (locale_ == nullptr) return;
        uselocale(former_);
        freelocale(locale_);
    }
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;

  private:
    locale_t locale_;
    locale_t former_ = nullptr;
};

bool is_number(const database::Value& value) {
    return std::holds_alternative<std::int64_t>(value) || std::holds_alternative<double>(value);
}

std::string shown(const database::Value& value) {
    if (database::is_null(value)) return "NULL";
    std::string text = database::text_of(value);
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
    }
    return text;
}

void append_line(std::string& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
}

}  // namespace

std::size_t display_width(std::string_view text) {
    std::size_t width = 0;
    const UnicodeLocale unicode;
    for (const char32_t c : common::code_points(text)) {
        const int cells = wcwidth(static_cast<wchar_t>(c));
        width += cells < 0 ? 1U : static_cast<std::size_t>(cells);
    }
    return width;
}

std::string aligned_table(const database::Result& result) {
    const std::size_t columns = result.columns().size();
    std::vector<std::size_t> widths;
    for (const std::string& name : result.columns())
        widths.push_back(display_width(name));
    for (const database::Row& row : result) {
        for (std::size_t i = 0; i < columns; ++i) {
            widths[i] = std::max(widths[i], display_width(shown(row.cells()[i])));
        }
    }
    const auto padded = [&](const std::string& text, std::size_t column, bool right) {
        const std::string blanks(widths[column] - display_width(text), ' ');
        return (column == 0 ? "" : "  ") + (right ? blanks + text : text + blanks);
    };
    std::string out;
    std::string header;
    std::string rule;
    for (std::size_t i = 0; i < columns; ++i) {
        header += padded(result.columns()[i], i, false);
        rule += (i == 0 ? "" : "  ") + std::string(widths[i], '-');
    }
    append_line(out, header);
    append_line(out, rule);
    for (const database::Row& row : result) {
        std::string line;
        for (std::size_t i = 0; i < columns; ++i) {
            line += padded(shown(row.cells()[i]), i, is_number(row.cells()[i]));
        }
        append_line(out, line);
    }
    return out;
}

std::string csv_table(const database::Result& result) {
    std::string out = common::csv_record(result.columns());
    std::vector<std::string> cells;
    for (const database::Row& row : result) {
        cells.clear();
        for (const database::Value& value : row.cells())
            cells.push_back(database::text_of(value));
        out += common::csv_record(cells);
    }
    return out;
}

}  // namespace admin
