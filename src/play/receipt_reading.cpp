#include "play/receipt_reading.h"

#include <QString>
#include <algorithm>

#include "printing/pages/paper_picture.h"
#include "printing/printer_text.h"
#include "printing/text_receipt.h"

namespace play {

namespace {

// "1/2", "10:42" and "Pepsi" run from left to right; a colon beside a letter ends a caption.
bool runs_from_left(const QString& line, qsizetype at) {
    const QChar letter = line[at];
    if (letter == ':')
        return at > 0 && line[at - 1].isDigit() && at + 1 < line.size() && line[at + 1].isDigit();
    return letter.isDigit() || letter == '.' || letter == '/' || letter == '-' ||
           (letter.unicode() < 128 && letter.isLetter());
}

// Paper runs from left to right. An Arabic line is read from the right, its figures and Latin words as they
// are.
QString reading_order(QString line) {
    const auto is_arabic = [](QChar letter) { return letter.unicode() > 128; };
    if (std::none_of(line.begin(), line.end(), is_arabic)) return line;
    std::reverse(line.begin(), line.end());
    for (qsizetype at = 0; at < line.size(); ++at) {
        const qsizetype begin = at;
        while (at < line.size() && runs_from_left(line, at))
            ++at;
        std::reverse(line.begin() + begin, line.begin() + at);
    }
    // Takes the printed forms and ligatures back to letters.
    return line.normalized(QString::NormalizationForm_KC);
}

}  // namespace

std::string readable_receipt(std::string_view bytes) {
    std::string text;
    for (const auto& line : printing::pages::paper_lines(bytes, printing::width_of(bytes))) {
        QString letters;
        for (const auto& character : line)
            letters += QString::fromUcs4(&character.letter, 1);
        text += reading_order(letters).toStdString() + "\n";
    }
    return text;
}

bool receipt_holds(std::string_view bytes, std::string_view text, database::Connection& connection) {
    const auto codes = printing::PrinterCodes::load(connection);
    return bytes.find(printing::printer_text(text, codes)) != std::string_view::npos ||
           bytes.find(printing::name_text(text, codes)) != std::string_view::npos ||
           bytes.find(text) != std::string_view::npos;
}

}  // namespace play
