// The table `codes`: what a roll printer is sent for each character of code page 1256.
#pragma once

#include <map>
#include <optional>
#include <string_view>

#include "database/connection.h"

namespace printing {

// The printer's bytes for one character: joined to its neighbour, and unjoined (isolated or final).
struct PrinterForms {
    unsigned char joined = 0;
    unsigned char unjoined = 0;
    char joined_byte() const { return static_cast<char>(joined); }
    char unjoined_byte() const { return static_cast<char>(unjoined); }
};

class PrinterCodes {
  public:
    // The shop's rows; default_codes() besides where it has none for Arabic letters. Rows that would send a
    // control byte to the printer (codes below 32 or above 255) are passed over: such a character prints as a
    // blank.
    static PrinterCodes load(database::Connection& connection);
    // Rows "wc,pc,pc1" under a heading, as in data/codes_864.csv. Throws std::invalid_argument naming a line
    // that is no such row.
    static PrinterCodes from_csv(std::string_view csv);

    // The row of a character's code in page 1256, or of lam_alef().
    std::optional<PrinterForms> find(int wc) const;
    // From this code on characters are looked up; below it they are only where the shop has a row for them.
    static constexpr int first_looked_up = 154;
    // The `wc` of the ligature of lam with the alef of that code: 256 above it, where no character's code is.
    static constexpr int lam_alef(int alef) { return 256 + alef; }

  private:
    void add(long long wc, long long joined, long long unjoined);
    std::map<int, PrinterForms> rows_;
};

// Code page 864, from data/codes_864.csv.
const PrinterCodes& default_codes();

}  // namespace printing
