// Comma-separated values after RFC 4180, in UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace common {

// Reads a CSV text record by record. Accepts LF, CRLF and CR, quoted cells that contain separators, line ends
// and doubled quotes, and a byte order mark at the start. Skips blank lines.
class CsvReader {
  public:
    explicit CsvReader(std::string_view text, char separator = ',');

    // Reads the cells of the next record. Returns false at the end. Throws CsvError if quotes do not match.
    bool next(std::vector<std::string>& cells);
    // The line, counted from 1, on which the last record begins.
    std::size_t line() const { return record_line_; }
    // How many bytes of the text have been read.
    std::size_t position() const { return position_; }

  private:
    bool at_line_end() const;
    void skip_line_end();
    std::string quoted_cell();
    std::string plain_cell();

    std::string_view text_;
    char separator_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
    std::size_t record_line_ = 0;
};

class CsvError : public std::exception {
  public:
    CsvError(std::size_t line, std::string reason);
    const char* what() const noexcept override { return text_.c_str(); }
    std::size_t line() const { return line_; }
    const std::string& reason() const { return reason_; }

  private:
    std::size_t line_;
    std::string reason_;
    std::string text_;
};

// The separator that the first line uses most: comma, semicolon or tab; comma if it has none of them.
char guess_separator(std::string_view text);

// One record as CSV, with its CRLF. Cells are quoted if they contain a comma, a quote or a line end. A text
// that a spreadsheet would run as a formula ("=1+1" typed as a customer's name) gets an apostrophe before it.
std::string csv_record(const std::vector<std::string>& cells);
// A cell as it was before csv_record() put an apostrophe there.
std::string_view without_apostrophe(std::string_view cell);

}  // namespace common
