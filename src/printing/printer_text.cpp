#include "printing/printer_text.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "common/code_page.h"
#include "common/csv.h"
#include "common/numbers.h"
#include "common/text.h"
#include "printing/nearest_letter.h"

namespace printing {

extern const std::string_view codes_864;  // data/codes_864.csv

namespace {

bool is_printable(long long code) {
    return code >= 32 && code <= 255 && code != 127;
}

std::invalid_argument not_a_row(std::size_t line, const char* expected) {
    return std::invalid_argument("printer codes, line " + std::to_string(line) + ": expected " + expected);
}

}  // namespace

void PrinterCodes::add(long long wc, long long joined, long long unjoined) {
    const bool is_key = wc >= 0 && wc <= lam_alef(255);
    if (!is_key || !is_printable(joined) || !is_printable(unjoined)) return;
    rows_[static_cast<int>(wc)] = {static_cast<unsigned char>(joined), static_cast<unsigned char>(unjoined)};
}

PrinterCodes PrinterCodes::load(database::Connection& connection) {
    PrinterCodes codes;
    database::Reads reads;
    ask(reads, codes);
    reads.run(connection);
    return codes;
}

void PrinterCodes::ask(database::Reads& reads, PrinterCodes& codes) {
    reads.add("select * from codes", [&codes](const database::Result& rows) {
        for (const auto& row : rows) {
            if (row.null("wc") || (row.null("pc") && row.null("pc1"))) continue;
            // A row that gives one form only prints it for both.
            const auto joined = row.integer(row.null("pc") ? "pc1" : "pc");
            const auto unjoined = row.integer(row.null("pc1") ? "pc" : "pc1");
            codes.add(row.integer("wc"), joined, unjoined);
        }
        // A shop may have rows for Latin letters alone.
        const bool has_arabic = codes.rows_.lower_bound(first_looked_up) != codes.rows_.end();
        if (!has_arabic) codes.rows_.insert(default_codes().rows_.begin(), default_codes().rows_.end());
    });
}

PrinterCodes PrinterCodes::from_csv(std::string_view csv) {
    PrinterCodes codes;
    common::CsvReader reader(csv);
    std::vector<std::string> cells;
    if (!reader.next(cells) || cells != std::vector<std::string>{"wc", "pc", "pc1"})
        throw not_a_row(1, "wc,pc,pc1");
    while (reader.next(cells)) {
        std::vector<long long> numbers;
        for (const std::string& cell : cells) {
            if (const auto number = common::parse_integer(cell)) numbers.push_back(*number);
        }
        if (cells.size() != 3 || numbers.size() != 3)
            throw not_a_row(reader.line(), "three numbers wc,pc,pc1");
        codes.add(numbers[0], numbers[1], numbers[2]);
    }
    return codes;
}

std::optional<PrinterForms> PrinterCodes::find(int wc) const {
    const auto row = rows_.find(wc);
    if (row == rows_.end()) return std::nullopt;
    return row->second;
}

std::vector<int> PrinterCodes::missing_signs() const {
    std::vector<int> missing;
    for (int wc = '!'; wc <= '~'; ++wc) {
        if (!find(wc)) missing.push_back(wc);
    }
    return missing;
}

const PrinterCodes& default_codes() {
    static const PrinterCodes codes = PrinterCodes::from_csv(codes_864);
    return codes;
}

namespace {

constexpr int first_looked_up = PrinterCodes::first_looked_up;  // 128 is added to codes below it
constexpr int space = ' ';
constexpr int lam = 225;
constexpr int hamza = 193;
constexpr std::array alefs = {199, 194, 195, 197};  // plain, madda, hamza above, hamza below

constexpr unsigned char converted_blank = 0xA0;

// Codes of "رزوؤدذاأآإةء", the letters that never join the one after them.
constexpr std::array never_join_next = {209, 210, 230, 196, 207, 208, 199, 195, 194, 197, 201, hamza};

template <std::size_t N>
bool holds(const std::array<int, N>& codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool is_digit(int wc) {
    return wc >= '0' && wc <= '9';
}
bool is_latin_letter(int wc) {
    return (wc >= 'A' && wc <= 'Z') || (wc >= 'a' && wc <= 'z');
}

// A bracket that opens at the right looks like one that closes at the left.
int mirrored(int wc) {
    constexpr std::string_view brackets = "()[]{}<>";
    const std::size_t at = wc < 127 ? brackets.find(static_cast<char>(wc)) : std::string_view::npos;
    return at == std::string_view::npos ? wc : brackets[at ^ 1];
}

// Page 1256 mixes letters, French letters and signs above 192.
bool is_letter(int wc) {
    if (wc == 154 || wc == 159 || wc == 170 || wc == 192 || wc == 255) return true;  // of other languages
    if (wc >= hamza && wc <= 214) return true;
    if (wc >= 216 && wc <= 223) return true;  // with the stretching stroke
    return wc == lam || (wc >= 227 && wc <= 230) || wc == 236 || wc == 237;
}

bool joins_previous(int wc) {
    return is_letter(wc) && wc != hamza;
}
bool joins_next(int wc) {
    return is_letter(wc) && !holds(never_join_next, wc);
}

// Vowel signs and direction marks stand above or between letters and take no column of their own.
bool takes_no_room(char32_t c) {
    return (c >= 0x064B && c <= 0x065F) || c == 0x0670 || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) || (c >= 0xFE00 && c <= 0xFE0F) ||
           c == 0xFEFF;
}

bool is_arabic(char32_t c) {
    return (c >= 0x0620 && c <= 0x06FF) || (c >= 0xFB50 && c <= 0xFDFF) || (c >= 0xFE70 && c <= 0xFEFC);
}

// The characters' codes in page 1256. A character without a code of the printer becomes its nearest letters,
// or a space if it has none.
std::vector<int> codes_of(std::string_view text, const PrinterCodes& printer) {
    std::vector<int> codes;
    for (const char32_t c : common::code_points(text)) {
        if (takes_no_room(c)) continue;
        const int code = common::code_in_page_1256(c).value_or(space);
        const std::u32string_view nearest = nearest_letters(c);
        if (nearest.empty() || (code != space && printer.find(code))) {
            codes.push_back(code);
            continue;
        }
        for (const char32_t letter : nearest)
            codes.push_back(common::code_in_page_1256(letter).value_or(space));
    }
    return codes;
}

class Conversion {
  public:
    Conversion(std::vector<int> letters, const PrinterCodes& codes)
        : letters_(std::move(letters)), codes_(codes) {}

    std::string run() {
        while (at_ < letters_.size())
            pieces_.push_back(next_piece());
        std::string printed;
        for (auto piece = pieces_.rbegin(); piece != pieces_.rend(); ++piece)
            printed += *piece;
        return printed;
    }

  private:
    int letter(std::size_t position) const { return position < letters_.size() ? letters_[position] : space; }

    // A letter that can join the next one is written joined if the next one allows it (in "زيت" the yeh is
    // joined to the teh). A letter that never joins the next one, such as a lam-alef, is written joined if
    // the letter before it joins, and unjoined at the end of a word.
    std::string next_piece() {
        const int wc = letter(at_);
        if (const std::size_t end = end_of_latin(); end > at_) return latin(end);
        if (is_digit(wc)) return number();
        ++at_;
        if (wc < first_looked_up) return std::string(1, other(mirrored(wc), wc));
        if (wc == lam && holds(alefs, letter(at_))) {
            if (const auto ligature = codes_.find(PrinterCodes::lam_alef(letter(at_)))) {
                ++at_;
                return std::string(
                    1, joined_to_previous(at_ - 2) ? ligature->joined_byte() : ligature->unjoined_byte());
            }
        }
        const auto forms = codes_.find(wc);
        if (!forms) return std::string(1, static_cast<char>(converted_blank));
        const bool joined =
            is_letter(wc) && (joins_next(wc) ? joins_previous(letter(at_)) : joined_to_previous(at_ - 1));
        return std::string(1, joined ? forms->joined_byte() : forms->unjoined_byte());
    }

    bool joined_to_previous(std::size_t first) const {
        return letter(at_) != space && first > 0 && joins_next(letter(first - 1));
    }

    // Takes a run of digits with the marks inside one number ("1.5", "1/2"), in reading order.
    std::string number() {
        std::string digits;
        const auto is_inner_mark = [this](int wc) {
            return (wc == '.' || wc == ',' || wc == '/' || wc == ':') && is_digit(letter(at_ + 1));
        };
        while (is_digit(letter(at_)) || (!digits.empty() && is_inner_mark(letter(at_))))
            digits += static_cast<char>(letters_[at_++]);
        return digits;
    }

    // Returns the end of the Latin words that start here, with the digits, blanks and signs between them.
    // That is this position if there are none, or if the shop has no rows for Latin letters.
    std::size_t end_of_latin() const {
        const auto is_latin = [this](int wc) { return is_latin_letter(wc) && codes_.find(wc); };
        if (!is_digit(letter(at_)) && !is_latin(letter(at_))) return at_;
        std::size_t end = at_;
        bool has_words = false;
        for (std::size_t i = at_; i < letters_.size() && letters_[i] < first_looked_up; ++i) {
            has_words = has_words || is_latin(letters_[i]);
            if (is_digit(letters_[i]) || is_latin(letters_[i])) end = i + 1;
        }
        if (!has_words) return at_;
        while (belongs_to_latin(end))
            ++end;
        return end;
    }

    // Whether the sign at `end`, after Latin words from here on, belongs to them: a percent sign of their
    // last number, or the bracket that closes one of theirs.
    bool belongs_to_latin(std::size_t end) const {
        const int wc = letter(end);
        if (wc == '%') return is_digit(letter(end - 1));
        if (wc != ')' && wc != ']' && wc != '}') return false;
        const auto from = letters_.begin() + static_cast<std::ptrdiff_t>(at_);
        const auto to = letters_.begin() + static_cast<std::ptrdiff_t>(end);
        return std::count(from, to, mirrored(wc)) > std::count(from, to, wc);
    }

    std::string latin(std::size_t end) {
        std::string words;
        for (; at_ < end; ++at_) {
            const int wc = letters_[at_];
            words += is_digit(wc) ? static_cast<char>(wc) : other(wc, wc);
        }
        return words;
    }

    // Adds 128 to the code of a character that is not Arabic, unless the shop has a row for it.
    char other(int looked_up, int wc) const {
        if (const auto row = codes_.find(looked_up)) return row->unjoined_byte();
        const bool has_place = wc >= space && wc < 127;  // others would leave the page with 128 added
        return static_cast<char>(has_place ? static_cast<unsigned char>(wc + 128) : converted_blank);
    }

    std::vector<int> letters_;
    const PrinterCodes& codes_;
    std::size_t at_ = 0;
    std::vector<std::string> pieces_;
};

}  // namespace

std::string printer_text(std::string_view text, const PrinterCodes& codes) {
    return Conversion(codes_of(common::western_digits(text), codes), codes).run();
}

std::string name_text(std::string_view text, const PrinterCodes& codes) {
    const std::u32string characters = common::code_points(text);
    if (std::any_of(characters.begin(), characters.end(), is_arabic)) return printer_text(text, codes);
    std::string printed;
    for (const int wc : codes_of(text, codes)) {
        const auto forms = codes.find(wc);
        if (wc >= space && wc < 127)
            printed += static_cast<char>(wc);
        else
            printed += wc >= first_looked_up && forms ? forms->unjoined_byte() : ' ';
    }
    return printed;
}

}  // namespace printing
