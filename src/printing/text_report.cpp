#include "printing/text_report.h"

#include <vector>

#include "common/text.h"
#include "printing/text_page.h"

namespace printing {

namespace {

// Breaks a text into lines between its words; a word that is longer than a line has a line of its own.
std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines(1);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string word(text.substr(at, end - at));
        at = end + 1;
        if (word.empty()) continue;
        std::string& line = lines.back();
        if (line.empty()) {
            line = word;
        } else if (common::length(line) + 1 + common::length(word) <= width) {
            line += ' ' + word;
        } else {
            lines.push_back(word);
        }
    }
    return lines;
}

class TextReport {
  public:
    TextReport(const Report& report, int width, const PrinterCodes& codes)
        : report_(report), codes_(codes), page_(width) {}

    std::string bytes() {
        page_.begin();
        for (const std::string* text : {&report_.store_name, &report_.second_store_name, &report_.telephone})
            centred(*text);
        page_.rule();
        centred(report_.title);
        page_.rule();
        for (const auto& [label, value] : report_.captions)
            pair(label, value);
        page_.rule();
        for (const auto& [label, value] : report_.totals)
            pair(label, value);
        page_.rule();
        if (!report_.words.empty()) {
            from_right(report_.words);
            page_.rule();
        }
        for (const std::string& signature : report_.signatures) {
            page_.line("");
            page_.line(
                right_aligned(std::string(page_.columns() / 2, '.') + " : " + name_text(signature, codes_),
                              page_.columns()));
        }
        page_.end();
        return page_.bytes();
    }

  private:
    void centred(std::string_view text) {
        if (text.empty()) return;
        for (const std::string& line : wrapped(text, page_.columns()))
            page_.centred(name_text(line, codes_), common::length(line));
    }

    void from_right(std::string_view text) {
        for (const std::string& line : wrapped(text, page_.columns()))
            page_.line(right_aligned(name_text(line, codes_), page_.columns()));
    }

    // The label at the right edge, its value to the left of it.
    void pair(std::string_view label, std::string_view value) {
        const std::string printed = name_text(value, codes_) + " : " + printer_text(label, codes_);
        if (printed.size() <= page_.columns()) {
            page_.line(right_aligned(printed, page_.columns()));
            return;
        }
        page_.line(right_aligned(": " + printer_text(label, codes_), page_.columns()));
        from_right(value);
    }

    const Report& report_;
    const PrinterCodes& codes_;
    TextPage page_;
};

}  // namespace

std::string text_report(const Report& report, int width, const PrinterCodes& codes) {
    return TextReport(report, width, codes).bytes();
}

}  // namespace printing
