// The guide agrees with the program: its quotations are texts of the screens, its keys work, its pictures are
// taken by plays, and every place that the help opens exists.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <set>

#include "support/data_file.h"
#include "ui/help/guide.h"
#include "ui/help/open_help.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"

namespace {

QString read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

const QString root = QString::fromStdString(test::tests_folder().parent_path().string());

// The files below a folder whose names match a pattern.
QStringList files_in(const QString& folder, const QString& pattern) {
    QStringList found;
    const QDir here(folder);
    for (const QString& name : here.entryList({pattern}, QDir::Files))
        found << here.filePath(name);
    for (const QString& inner : here.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        found += files_in(here.filePath(inner), pattern);
    return found;
}

// The string literals of a source file; adjacent ones are joined.
QStringList literals_of(QString source) {
    static const QRegularExpression comment(R"(//[^\n]*)");
    static const QRegularExpression text(R"re((?:"(?:[^"\\\n]|\\.)*"\s*)+)re");
    static const QRegularExpression piece(R"re("((?:[^"\\\n]|\\.)*)")re");
    QStringList found;
    for (auto at = text.globalMatch(source.remove(comment)); at.hasNext();) {
        QString whole;
        for (auto in = piece.globalMatch(at.next().captured()); in.hasNext();)
            whole += in.next().captured(1);
        found << whole;
    }
    return found;
}

// The texts of the screens, key caps included.
struct Program {
    std::set<QString> texts;
    QString all;
    Program() {
        for (const char* ending : {"*.cpp", "*.h"}) {
            for (const QString& file : files_in(root + "/src", ending)) {
                for (QString text : literals_of(read(file))) {
                    text.remove('&').remove("\\u200e").remove("\\u200E").remove("\\u200f").replace("\\n",
                                                                                                   " ");
                    static const QRegularExpression key(R"(\s+[A-Za-z]+$)");
                    texts.insert(text.section("\\t", 0, 0).simplified());
                    texts.insert(QString(text).remove(key).simplified());
                    texts.insert(text.section("\\t", 1).simplified());
                    all += text.simplified() + '\n';
                }
            }
        }
    }
    // In a quotation, "…" stands for what the program fills in.
    bool says(const QString& quoted) const {
        if (!quoted.contains(QChar(0x2026))) return texts.contains(quoted.simplified());
        for (const QString& part : quoted.split(QChar(0x2026))) {
            if (!all.contains(part.simplified())) return false;
        }
        return true;
    }
};

const Program& program() {
    static const Program made;
    return made;
}

const ui::Guide guides[] = {ui::Guide::cashier, ui::Guide::office};

TEST(Guide, QuotesWhatTheScreensSay) {
    const QString guide = ui::HelpGuide::carried_text(ui::Guide::cashier) +
                          ui::HelpGuide::carried_text(ui::Guide::office) +
                          read(root + "/docs/technician.ar.md");
    ASSERT_GT(program().texts.size(), 500U);
    static const QRegularExpression quoted(R"(\*\*(.+?)\*\*)",
                                           QRegularExpression::DotMatchesEverythingOption);
    int count = 0;
    for (auto at = quoted.globalMatch(guide); at.hasNext(); ++count) {
        const auto match = at.next();
        EXPECT_TRUE(program().says(match.captured(1)))
            << "line " << guide.left(match.capturedStart()).count('\n') + 1 << ": "
            << match.captured(1).toStdString();
    }
    EXPECT_GT(count, 300);
    EXPECT_FALSE(program().says("لا يقول البرنامج هذا"));
}

// The keys of the sales window as the guide writes them ("Shift+F9", "Ctrl+B"), with the caption of each.
std::vector<std::pair<QString, QString>> keys_of_sales_window() {
    std::vector<std::pair<QString, QString>> keys;
    for (const auto* table : {&ui::SalesWindow::commands(), &ui::screen_commands()}) {
        for (const ui::Command& command : *table) {
            if (command.key.key() == Qt::Key_unknown) continue;
            keys.emplace_back(QKeySequence(command.key).toString(QKeySequence::PortableText),
                              QString(command.caption).remove('&'));
        }
    }
    return keys;
}

// Every key that the guide names is one of the sales window, one that a screen shows, or a common one.
TEST(Guide, NamesKeysThatExist) {
    const QString guide =
        ui::HelpGuide::carried_text(ui::Guide::cashier) + ui::HelpGuide::carried_text(ui::Guide::office);
    static const QRegularExpression key(R"(`([^`]+)`)");
    std::set<QString> known = {"Shift", "Alt",   "Ctrl", "Tab",  "Shift+Tab", "Up",        "Down",
                               "Left",  "Right", "PgUp", "PgDn", "Ctrl+Up",   "Ctrl+Down", "Ctrl+9"};
    for (const auto& [named, caption] : keys_of_sales_window())
        EXPECT_TRUE(known.insert(named).second) << named.toStdString() << " has two meanings";
    for (auto at = key.globalMatch(guide); at.hasNext();) {
        const QString named = at.next().captured(1);
        if (known.contains(named)) continue;
        EXPECT_TRUE(program().texts.contains(QString(named).replace("Ctrl+", "Ctrl ")))
            << named.toStdString();
    }
}

// Every key of the sales window is in the guide's table of keys, in a row that says what it does.
TEST(Guide, ListsEveryKeyOfTheSalesWindow) {
    const ui::HelpGuide guide(ui::HelpGuide::carried_text(ui::Guide::cashier));
    const auto place = guide.find("keys");
    ASSERT_TRUE(place);
    const QString table = guide.chapters()[place->chapter].text;
    const auto keys = keys_of_sales_window();
    EXPECT_GE(keys.size(), 25U);
    for (const auto& [key, caption] : keys) {
        // The four price levels share a row, which names the first and the last of their keys.
        const bool within = key == "Ctrl+2" || key == "Ctrl+3";
        bool listed = false;
        for (const QString& row : table.split('\n'))
            listed = listed || ((within || row.contains("`" + key + "`")) && row.contains(caption));
        EXPECT_TRUE(listed) << key.toStdString() << " " << caption.toStdString();
    }
}

TEST(Guide, HasEveryPictureAndNoOther) {
    const QString guide =
        ui::HelpGuide::carried_text(ui::Guide::cashier) + ui::HelpGuide::carried_text(ui::Guide::office);
    QString plays;
    for (const QString& play : files_in(root + "/tests/plays", "guide_*.play"))
        plays += read(play);
    static const QRegularExpression picture(R"(!\[([^\]]+)\]\(([^)]+)\))");
    std::set<QString> named;
    for (auto at = picture.globalMatch(guide); at.hasNext();) {
        const auto match = at.next();
        const QString path = match.captured(2);
        named.insert(path.section('/', -1));
        EXPECT_FALSE(QImageReader(ui::HelpGuide::picture(path)).read().isNull()) << path.toStdString();
        EXPECT_TRUE(plays.contains("\npicture " + path.section('/', -1).section('.', 0, 0) + " of "))
            << path.toStdString();
    }
    const QDir folder(root + "/docs/pictures/guide");
    for (const QString& file : folder.entryList({"*.png"}, QDir::Files))
        EXPECT_TRUE(named.contains(file)) << file.toStdString() << " is in no chapter";
}

TEST(Guide, LeadsToPlacesThatAreThere) {
    for (const ui::Guide which : guides) {
        const QString text = ui::HelpGuide::carried_text(which);
        const ui::HelpGuide guide(text);
        ASSERT_FALSE(guide.chapters().empty());
        for (const auto& [object, anchor] : ui::help_places(which))
            EXPECT_TRUE(guide.find(anchor)) << object.toStdString() << " asks for " << anchor.toStdString();
        static const QRegularExpression link(R"(\]\(#([^)]+)\))");
        for (auto at = link.globalMatch(text); at.hasNext();) {
            const QString anchor = at.next().captured(1);
            EXPECT_TRUE(guide.find(anchor)) << anchor.toStdString();
        }
        // The table of contents lists the chapters.
        for (const ui::HelpChapter& chapter : guide.chapters())
            EXPECT_TRUE(
                text.contains(". [" + chapter.title() + "](#" + chapter.sections.front().anchor + ")"))
                << chapter.title().toStdString();
    }
}

// The help knows every screen by its object name.
TEST(Guide, KnowsEveryScreen) {
    static const QRegularExpression own_name(
        R"re(\n    setObjectName\((?:[^"\n]*\? )?"(\w+)"(?: : "(\w+)")?\))re");
    static const QRegularExpression sheet(R"(: (?:Sheet|PeopleList)\(host)");
    std::set<QString> known;
    for (const ui::Guide which : guides)
        for (const auto& [object, anchor] : ui::help_places(which))
            known.insert(object);
    int count = 0;
    for (const QString& file : files_in(root + "/src/ui", "*.cpp")) {
        const QString source = read(file);
        if (!sheet.match(source).hasMatch() || file.endsWith("message_box.cpp") ||
            file.endsWith("help/screen.cpp"))
            continue;
        for (auto at = own_name.globalMatch(source); at.hasNext(); ++count) {
            const auto match = at.next();
            for (const QString& name : {match.captured(1), match.captured(2)})
                EXPECT_TRUE(name.isEmpty() || known.contains(name)) << name.toStdString();
        }
    }
    EXPECT_GT(count, 20);
}

TEST(Guide, FindsWordsHoweverTheyAreWritten) {
    const ui::HelpGuide guide(
        "# دليل\n\nمقدمة\n\n<a id=\"one\"></a>\n## الأول\n\nكلمةُ **السر** هنا\n\n### فرع\n\nإلى الآخر\n\n"
        "<a id=\"contents\"></a>\n## المحتويات\n\nكلمة السر\n\n<a id=\"two\"></a>\n## الثاني\n\n| ا | ب "
        "|\n|---|---|\n"
        "| مبـلغ | لا |\n");
    ASSERT_EQ(guide.chapters().size(), 2U);
    EXPECT_EQ(guide.find("two")->chapter, 1U);
    EXPECT_FALSE(guide.find("contents"));
    EXPECT_EQ(guide.chapters()[0].sections.size(), 2U);
    const struct {
        const char* words;
        std::size_t first, second;  // number of matches in each chapter
    } cases[] = {{"كلمة السر", 1, 0}, {"كلمه  السر", 1, 0}, {"الي الاخر", 1, 0}, {"مبلغ", 0, 1},
                 {"قنبلة", 0, 0},     {"", 0, 0},           {"  ", 0, 0},        {"لا", 2, 1}};
    for (const auto& [words, first, second] : cases) {
        EXPECT_EQ(ui::HelpGuide::matches(guide.chapters()[0], words).size(), first) << words;
        EXPECT_EQ(ui::HelpGuide::matches(guide.chapters()[1], words).size(), second) << words;
    }
    // A match covers the marks that do not count.
    const auto found = ui::HelpGuide::matches(guide.chapters()[0], "كلمه السر");
    EXPECT_EQ(guide.chapters()[0].plain.mid(found[0].at, found[0].length), QString("كلمةُ السر"));
}

}  // namespace
