#include "common/csv.h"

#include <algorithm>
#include <array>

#include "common/numbers.h"

namespace common {

CsvError::CsvError(std::size_t line, std::string reason)
    : line_(line), reason_(std::move(reason)), text_("line " + std::to_string(line_) + ": " + reason_) {}

CsvReader::CsvReader(std::string_view text, char separator) : text_(text), separator_(separator) {
    if (text_.starts_with("\xEF\xBB\xBF")) position_ = 3;
}

bool CsvReader::at_line_end() const {
    return position_ >= text_.size() || text_[position_] == '\n' || text_[position_] == '\r';
}

void CsvReader::skip_line_end() {
    if (position_ >= text_.size()) return;
    position_ += text_.substr(position_, 2) == "\r\n" ? 2 : 1;
    ++line_;
}

bool CsvReader::next(std::vector<std::string>& cells) {
    cells.clear();
    while (position_ < text_.size() && at_line_end())
        skip_line_end();
    if (position_ >= text_.size()) return false;
    record_line_ = line_;
    for (;;) {
        const bool quoted = position_ < text_.size() && text_[position_] == '"';
        cells.push_back(quoted ? quoted_cell() : plain_cell());
        if (at_line_end()) break;
        ++position_;  // the separator
    }
    skip_line_end();
    return true;
}

std::string CsvReader::quoted_cell() {
    std::string cell;
    ++position_;
    for (;;) {
        if (position_ >= text_.size()) throw CsvError(record_line_, "a quoted cell is never closed");
        const char c = text_[position_++];
        if (c == '\n') ++line_;
        if (c != '"') {
            cell += c;
        } else if (position_ < text_.size() && text_[position_] == '"') {
            cell += '"';
            ++position_;
        } else {
            break;
        }
    }
    if (!at_line_end() && text_[position_] != separator_) {
        throw CsvError(record_line_, "text follows the closing quote of a cell");
    }
    return cell;
}

std::string CsvReader::plain_cell() {
    const std::size_t start = position_;
    while (!at_line_end() && text_[position_] != separator_)
        ++position_;
    return std::string(text_.substr(start, position_ - start));
}

char guess_separator(std::string_view text) {
    const std::string_view header = text.substr(0, text.find_first_of("\r\n"));
    constexpr std::array candidates = {',', ';', '\t'};
    return *std::max_element(candidates.begin(), candidates.end(), [&](char a, char b) {
        return std::count(header.begin(), header.end(), a) < std::count(header.begin(), header.end(), b);
    });
}

namespace {

bool looks_like_formula(std::string_view cell) {
    if (cell.empty()) return false;
    const char first = cell.front();
    if (first == '=' || first == '@' || first == '\t' || first == '\r') return true;
    if (cell.back() == '%') cell.remove_suffix(1);  // a percentage is a number too
    return (first == '-' || first == '+') && !parse_number(cell);
}

}  // namespace

std::string_view without_apostrophe(std::string_view cell) {
    return cell.starts_with('\'') && looks_like_formula(cell.substr(1)) ? cell.substr(1) : cell;
}

std::string csv_record(const std::vector<std::string>& cells) {
    std::string record;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string cell = (looks_like_formula(cells[i]) ? "'" : "") + cells[i];
        if (i > 0) record += ',';
        if (cell.find_first_of(",\"\r\n") == std::string::npos) {
            record += cell;
            continue;
        }
        record += '"';
        for (const char c : cell)
            record.append(c == '"' ? 2 : 1, c);
        record += '"';
    }
    return record + "\r\n";
}

}  // namespace common
