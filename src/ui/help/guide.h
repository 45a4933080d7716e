// The cashier's guide as the help shows it: its chapters, where each part of it stands, and the search in it.
#pragma once

#include <QString>
#include <optional>
#include <vector>

class QTextDocument;

namespace ui {

// A heading that can be led to.
struct HelpSection {
    QString anchor;  // empty for a heading without one
    QString title;
};

struct HelpChapter {
    QString text;  // Markdown, from the chapter's heading on; the columns of its tables run from the left
    std::vector<HelpSection> sections;  // every heading in its order, the chapter's own first
    QString plain;                      // what is read on the screen
    const QString& title() const { return sections.front().title; }
};

struct HelpPlace {
    std::size_t chapter = 0;
    std::size_t section = 0;
};

// Where a text was found: characters of `HelpChapter::plain`.
struct HelpMatch {
    int at = 0;
    int length = 0;
};

// Fills a document with a chapter. Its letters then stand where `HelpChapter::plain` has them.
void write_chapter(QTextDocument& document, const QString& text);

class HelpGuide {
  public:
    // Takes the guide's Markdown: "## " begins a chapter, and a line `<a id="name"></a>` names the heading
    // after it. What stands before the first chapter, the chapter named "contents" and the tags that a web
    // page needs are left out.
    explicit HelpGuide(const QString& markdown);
    // The guide that the program carries in itself.
    static QString carried_text();
    // A picture of the guide by the path the guide names it by, as a path that can be opened.
    static QString picture(const QString& path);

    const std::vector<HelpChapter>& chapters() const { return chapters_; }
    std::optional<HelpPlace> find(const QString& anchor) const;
    // Every place where the words stand in a chapter, whatever way its letters are written: hamza or none,
    // vowel marks, ta marbuta and ha.
    static std::vector<HelpMatch> matches(const HelpChapter& chapter, const QString& words);

  private:
    std::vector<HelpChapter> chapters_;
};

}  // namespace ui
