#include "play/receipt_reading.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <vector>

#include "common/code_page.h"
#include "common/text.h"
#include "printing/printer_codes.h"
#include "printing/printer_text.h"

namespace play {

namespace {

// What each byte of the printer's page stands for, in reading order.
std::map<unsigned char, std::string> letters_of(const printing::PrinterCodes& codes) {
    std::map<unsigned char, std::string> letters;
    const auto add = [&](int wc, const std::string& text) {
        const auto forms = codes.find(wc);
        if (!forms) return;
        letters.emplace(forms->joined, text);
        letters.emplace(forms->unjoined, text);
    };
    // The alefs share their forms with the plain one, which is read first.
    for (const int wc : {199, 236}) {
        add(wc, common::from_code_page_1256(std::string(1, static_cast<char>(wc))));
    }
    for (int wc = 128; wc < 256; ++wc) {
        add(wc, common::from_code_page_1256(std::string(1, static_cast<char>(wc))));
    }
    for (const int alef : {199, 194, 195, 197}) {
        add(printing::PrinterCodes::lam_alef(alef),
            "ل" + common::from_code_page_1256(std::string(1, static_cast<char>(alef))));
    }
    return letters;
}

bool keeps_order(unsigned char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           byte == '.' || byte == '/' || byte == ':' || byte == '-';
}

bool is_plain(char byte) {
    return static_cast<unsigned char>(byte) < 128;
}

// A printed line runs from left to right; read it from the right, numbers and Latin words as they stand. A
// line without any Arabic is read as it runs.
std::string read_line(std::string_view line, const std::map<unsigned char, std::string>& letters) {
    std::vector<std::string> pieces;
    if (std::all_of(line.begin(), line.end(), is_plain)) {
        std::string text(line);
        std::erase_if(text, [](char byte) { return static_cast<unsigned char>(byte) < 32; });
        return text;
    }
    for (std::size_t at = 0; at < line.size();) {
        const auto byte = static_cast<unsigned char>(line[at]);
        std::size_t end = at + 1;
        if (keeps_order(byte) && byte != ':') {
            // Latin words keep their order too, and "10:42 AM" stays together.
            const auto goes_on = [&](std::size_t next) {
                return next < line.size() && keeps_order(static_cast<unsigned char>(line[next]));
            };
            while (goes_on(end) || (end < line.size() && line[end] == ' ' && goes_on(end + 1) &&
                                    std::isalpha(line[end + 1]) != 0)) {
                ++end;
            }
            pieces.emplace_back(line.substr(at, end - at));
        } else if (const auto letter = letters.find(byte); letter != letters.end()) {
            pieces.push_back(letter->second);
        } else if (byte >= 0xB0 && byte <= 0xB9) {
            pieces.emplace_back(1, static_cast<char>(byte - 0xB0 + '0'));
        } else if (byte >= 32) {
            pieces.emplace_back(1, byte < 128 ? static_cast<char>(byte) : ' ');
        }
        at = end;
    }
    std::string text;
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece)
        text += *piece;
    return text;
}

}  // namespace

std::string readable_receipt(std::string_view bytes, database::Connection& connection) {
    const auto letters = letters_of(printing::PrinterCodes::load(connection));
    std::string text;
    std::string line;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == '\x1b' || bytes[at] == '\x1d') {
            ++at;  // the command's letter; its number, if any, is a control byte and passed over below
            if (bytes.substr(at, 1) == "T") at += 4;  // the code page's number is written in digits
        } else if (bytes[at] == '\n') {
            text += read_line(line, letters) + "\n";
            line.clear();
        } else {
            line += bytes[at];
        }
    }
    return text + read_line(line, letters);
}

bool receipt_holds(std::string_view bytes, std::string_view text, database::Connection& connection) {
    const auto codes = printing::PrinterCodes::load(connection);
    return bytes.find(printing::printer_text(text, codes)) != std::string_view::npos ||
           bytes.find(printing::name_text(text, codes)) != std::string_view::npos ||
           bytes.find(text) != std::string_view::npos;
}

}  // namespace play
