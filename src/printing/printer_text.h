// Text for roll printers. They print from left to right and do not join Arabic letters. The table `codes`
// says which bytes are sent to a printer for each character of code page 1256.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "database/reads.h"

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
    // Returns the shop's rows, and default_codes() as well if the shop has no rows for Arabic letters. Skips
    // rows that would send a control byte to the printer (codes below 32 or above 255); such a character
    // prints as a blank.
    static PrinterCodes load(database::Connection& connection);
    // The same, together with other reads.
    static void ask(database::Reads& reads, PrinterCodes& codes);
    // Reads rows "wc,pc,pc1" under a heading, as in data/codes_864.csv. Throws std::invalid_argument with the
    // number of the line for anything else.
    static PrinterCodes from_csv(std::string_view csv);

    // Finds the row of a character's code in page 1256, or of lam_alef().
    std::optional<PrinterForms> find(int wc) const;
    // Characters from this code on are looked up; one below it only if the shop has a row for it.
    static constexpr int first_looked_up = 154;
    // The `wc` of the ligature of lam with the alef of that code: 256 above it, beyond all characters' codes.
    static constexpr int lam_alef(int alef) { return 256 + alef; }
    // The characters from "!" to "~" that have no row: in Arabic texts they print as other letters.
    std::vector<int> missing_signs() const;

  private:
    void add(long long wc, long long joined, long long unjoined);
    std::map<int, PrinterForms> rows_;
};

// Code page 864, from data/codes_864.csv.
const PrinterCodes& default_codes();

// Converts an Arabic text to the bytes that print it: one byte per character in its joined or unjoined form,
// the last letter first, numbers and Latin words in reading order. A character that the printer lacks prints
// as its nearest letter (nearest_letter.h), or else as a blank (0xA0).
std::string printer_text(std::string_view text, const PrinterCodes& codes);

// Converts a name or another text that a user typed: by printer_text() if it holds Arabic letters, otherwise
// its characters stay as they are. Neither function ever returns a control byte.
std::string name_text(std::string_view text, const PrinterCodes& codes);

}  // namespace printing
