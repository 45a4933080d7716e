// A guide as the help shows it: its chapters, the places of its parts, and the search.
#pragma once

#include <QString>
#include <optional>
#include <vector>

class QTextDocument;

namespace ui {

// The guides that are compiled in: the cashier's and the owner's.
enum class Guide { cashier, office };

// A heading that a link can lead to.
struct HelpSection {
    QString anchor;  // empty for a heading without one
    QString title;
};

struct HelpChapter {
    QString text;  // Markdown from the chapter's heading on; columns of tables in reverse order
    std::vector<HelpSection> sections;  // the headings in their order, the chapter's own first
    QString plain;                      // the text without markup
    const QString& title() const { return sections.front().title; }
};

struct HelpPlace {
    std::size_t chapter = 0;
    std::size_t section = 0;
};

// A place where a text was found, in characters of `HelpChapter::plain`.
struct HelpMatch {
    int at = 0;
    int length = 0;
};

// Fills a document with a chapter, so that its characters have the positions of `HelpChapter::plain`.
void write_chapter(QTextDocument& document, const QString& text);

class HelpGuide {
  public:
    // Reads the guide's Markdown: "## " begins a chapter, and a line `<a id="name"></a>` names the heading
    // after it. Skips the text before the first chapter, the chapter named "contents" and HTML tags.
    explicit HelpGuide(const QString& markdown);
    // The Markdown of a guide that is compiled into the program.
    static QString carried_text(Guide guide);
    // The path at which to open a picture, from its path in the guide.
    static QString picture(const QString& path);

    const std::vector<HelpChapter>& chapters() const { return chapters_; }
    std::optional<HelpPlace> find(const QString& anchor) const;
    // Every place where a chapter has the words. Spellings count alike: with or without hamza and vowel
    // marks, ta marbuta or ha.
    static std::vector<HelpMatch> matches(const HelpChapter& chapter, const QString& words);

  private:
    std::vector<HelpChapter> chapters_;
};

}  // namespace ui
