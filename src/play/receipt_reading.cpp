#include "play/receipt_reading.h"

#include <iconv.h>

#include <QHash>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <array>
#include <stdexcept>

namespace play {

namespace {

// Code page 864 as the C library knows it.
std::array<QChar, 256> page_864() {
    const iconv_t converter = iconv_open("UTF-16LE", "CP864");
    if (converter == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("no iconv for code page 864");
    std::array<QChar, 256> page;
    for (unsigned code = 0; code < page.size(); ++code) {
        char byte = static_cast<char>(code);
        std::array<unsigned char, 4> letter{};
        char* in = &byte;
        char* out = reinterpret_cast<char*>(letter.data());
        std::size_t in_left = 1;
        std::size_t out_left = letter.size();
        iconv(converter, &in, &in_left, &out, &out_left);
        page[code] = in_left == 0 ? QChar(letter[0], letter[1]) : QChar('?');
    }
    iconv_close(converter);
    page['%'] = '%';  // the Arabic percent sign
    return page;
}

// The bytes that follow the one that names a command.
std::size_t bytes_after(unsigned char prefix, char command, std::string_view rest) {
    if (prefix == 0x1B) return command == 'T' ? 4 : command == 'd' || command == 'a' ? 1 : 0;
    // A barcode command states the number of its bytes.
    if (command == 'k' && rest.size() > 1) return 2 + static_cast<unsigned char>(rest[1]);
    return 1;
}

// The lines from the top, each from the left, without the printer's commands.
QStringList lines_of(std::string_view bytes) {
    static const std::array<QChar, 256> page = page_864();
    QStringList lines = {QString()};
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if ((byte == 0x1B || byte == 0x1D) && at + 1 < bytes.size()) {
            const char command = bytes[++at];
            at += bytes_after(byte, command, bytes.substr(at + 1));
        } else if (byte == '\n') {
            lines << QString();
        } else if (byte >= ' ') {
            lines.back() += page[byte];
        }
    }
    return lines;
}

bool is_arabic(QChar c) {
    return c.unicode() >= 0x0600;
}
bool is_latin(QChar c) {
    return c.unicode() < 128 && c.isLetter();
}

QChar mirrored(QChar c) {
    static const QString brackets = "()[]{}<>";
    const qsizetype at = brackets.indexOf(c);
    return at < 0 ? c : brackets[at ^ 1];
}

// Returns true for digits, signs between two digits ("1/2", "10:42") and a minus. In a text that was read
// from the right the minus comes after its figure. A colon beside a letter ends a caption instead.
bool runs_from_left(const QString& text, qsizetype at) {
    if (text[at].isDigit()) return true;
    if (at == 0 || !text[at - 1].isDigit()) return false;
    const bool is_inner = at + 1 < text.size() && text[at + 1].isDigit();
    return text[at] == '-' || (is_inner && QString("./:,").contains(text[at]));
}

QString with_numbers_turned(QString text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        const qsizetype begin = at;
        while (at < text.size() && runs_from_left(text, at))
            ++at;
        std::reverse(text.begin() + begin, text.begin() + at);
        if (at < text.size()) text[at] = mirrored(text[at]);
    }
    return text;
}

// Puts a stretch without Arabic letters, taken from a line that was read from the right, into reading order:
// Latin words run from left to right with the numbers and signs between them; other numbers are turned one by
// one.
QString turned(const QString& stretch) {
    if (std::none_of(stretch.begin(), stretch.end(), is_latin)) return with_numbers_turned(stretch);
    const auto is_word = [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); };
    qsizetype begin = std::find_if(stretch.begin(), stretch.end(), is_word) - stretch.begin();
    const qsizetype end = stretch.rend() - std::find_if(stretch.rbegin(), stretch.rend(), is_word);
    while (begin > 0) {
        const QChar before = stretch[begin - 1];
        const QString taken = stretch.mid(begin, end - begin);
        const bool closes =
            QString(")]}").contains(before) && taken.count(mirrored(before)) > taken.count(before);
        if (!closes && !(before == '%' && stretch[begin].isDigit())) break;
        --begin;
    }
    QString words = stretch.mid(begin, end - begin);
    std::reverse(words.begin(), words.end());
    return with_numbers_turned(stretch.left(begin)) + words + with_numbers_turned(stretch.mid(end));
}

// Paper runs from left to right. An Arabic line is read from the right, column by column: blanks between
// columns are plain ones, those of converted texts hard ones.
QString reading_order(QString line) {
    if (std::none_of(line.begin(), line.end(), is_arabic)) return line;
    std::reverse(line.begin(), line.end());
    QString read;
    for (qsizetype at = 0; at < line.size();) {
        const qsizetype begin = at;
        while (at < line.size() && !is_arabic(line[at]) && line[at] != ' ')
            ++at;
        read += turned(line.mid(begin, at - begin));
        if (at < line.size()) read += line[at++];
    }
    return read;
}

// A text in the form in which it can be compared with the paper: printed forms and ligatures become letters,
// hard blanks become blanks, letters missing from page 864 become those printed in their place, and marks are
// dropped.
QString comparable(const QString& text) {
    static const QHash<char16_t, QChar> stands_for = {{u'إ', u'ا'}, {u'پ', u'ب'}, {u'چ', u'ج'}, {u'گ', u'ك'},
                                                      {u'ی', u'ي'}, {u'ک', u'ك'}, {u'ڤ', u'ف'}};
    QString compared;
    for (const QChar c : text.normalized(QString::NormalizationForm_KC)) {
        const char16_t code = c.unicode();
        if (c.isMark() || c.category() == QChar::Other_Format) continue;
        const bool is_arabic_digit = code >= 0x0660 && code <= 0x0669;
        compared += is_arabic_digit ? QChar('0' + code - 0x0660) : stands_for.value(code, c);
    }
    return compared;
}

}  // namespace

std::string readable_receipt(std::string_view bytes) {
    QString text;
    for (const QString& line : lines_of(bytes))
        text += reading_order(line).normalized(QString::NormalizationForm_KC) + "\n";
    return text.toStdString();
}

bool receipt_holds(std::string_view bytes, std::string_view text) {
    const QString wanted = comparable(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    const QStringList lines = lines_of(bytes);
    return std::any_of(lines.begin(), lines.end(), [&](const QString& line) {
        return comparable(reading_order(line)).contains(wanted) || comparable(line).contains(wanted);
    });
}

}  // namespace play
