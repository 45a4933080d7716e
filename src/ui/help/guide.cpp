#include "ui/help/guide.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>

// Q_INIT_RESOURCE works outside of namespaces only.
static void load_guide() {
    Q_INIT_RESOURCE(guide);
}

namespace ui {

namespace {

constexpr auto left_out = "contents";  // the table of contents, which the help shows beside the text
constexpr auto root = ":/guide/";

// The letter that another one counts as in a search; null for a mark that does not count.
QChar search_letter(QChar letter) {
    switch (letter.unicode()) {
        case 0x0622:  // alef with madda, hamza above, hamza below
        case 0x0623:
        case 0x0625:
            return QChar(0x0627);
        case 0x0629:  // ta marbuta
            return QChar(0x0647);
        case 0x0649:  // alef maksura
            return QChar(0x064A);
        case 0x0640:  // tatweel and direction marks
        case 0x200E:
        case 0x200F:
            return {};
        default:
            break;
    }
    if (letter.unicode() >= 0x064B && letter.unicode() <= 0x0652) return {};
    return letter.isSpace() ? QChar(' ') : letter.toLower();
}

// A table row with its cells reversed: Qt puts the first column at the left whatever the text direction.
QString turned_row(const QString& row) {
    QStringList cells = row.trimmed().split('|');
    if (cells.size() < 3) return row;
    std::reverse(cells.begin(), cells.end());
    return cells.join('|');
}

// A text as it is searched, with the original position of each letter.
struct Searched {
    QString text;
    std::vector<int> places;
};

Searched searched(const QString& text) {
    Searched made;
    for (int at = 0; at < text.size(); ++at) {
        const QChar letter = search_letter(text[at]);
        if (letter.isNull()) continue;
        made.text += letter;
        made.places.push_back(at);
    }
    return made;
}

}  // namespace

void write_chapter(QTextDocument& document, const QString& text) {
    document.setMarkdown(text);
    // Qt puts an empty paragraph between a heading and the one right below it. Remove it.
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextBlock after = block.next();
        if (!after.isValid() || block.blockFormat().headingLevel() == 0 || after.length() > 1) continue;
        QTextCursor cursor(after);
        cursor.deletePreviousChar();
    }
}

QString HelpGuide::carried_text(Guide guide) {
    load_guide();
    QFile file(QString(root) + (guide == Guide::office ? "office.ar.md" : "guide.ar.md"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString HelpGuide::picture(const QString& path) {
    load_guide();
    return root + path;
}

HelpGuide::HelpGuide(const QString& markdown) {
    static const QRegularExpression anchor_line(R"re(^<a id="([^"]+)"></a>$)re");
    static const QRegularExpression heading(R"(^(##+) (.+)$)");
    QString anchor;
    bool taking = false;
    for (const QString& line : markdown.split('\n')) {
        if (const auto named = anchor_line.match(line.trimmed()); named.hasMatch()) {
            anchor = named.captured(1);
            continue;
        }
        if (line.startsWith("<div") || line.startsWith("</div")) continue;
        if (const auto found = heading.match(line); found.hasMatch()) {
            if (found.captured(1).size() == 2) {
                taking = anchor != left_out;
                if (taking) chapters_.emplace_back();
            }
            if (taking) chapters_.back().sections.push_back({anchor, found.captured(2).trimmed()});
            anchor.clear();
        }
        if (taking) chapters_.back().text += (line.startsWith('|') ? turned_row(line) : line) + '\n';
    }
    for (HelpChapter& chapter : chapters_) {
        QTextDocument document;
        write_chapter(document, chapter.text);
        chapter.plain = document.toPlainText();
    }
}

std::optional<HelpPlace> HelpGuide::find(const QString& anchor) const {
    for (std::size_t chapter = 0; chapter < chapters_.size(); ++chapter) {
        const auto& sections = chapters_[chapter].sections;
        for (std::size_t section = 0; section < sections.size(); ++section) {
            if (sections[section].anchor == anchor) return HelpPlace{chapter, section};
        }
    }
    return {};
}

std::vector<HelpMatch> HelpGuide::matches(const HelpChapter& chapter, const QString& words) {
    const QString wanted = searched(words.simplified()).text;
    std::vector<HelpMatch> found;
    if (wanted.isEmpty()) return found;
    const Searched in = searched(chapter.plain);
    for (qsizetype at = in.text.indexOf(wanted); at >= 0; at = in.text.indexOf(wanted, at + wanted.size())) {
        const int first = in.places[static_cast<std::size_t>(at)];
        const int last = in.places[static_cast<std::size_t>(at + wanted.size() - 1)];
        found.push_back({first, last - first + 1});
    }
    return found;
}

}  // namespace ui
