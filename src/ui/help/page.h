// One chapter of the guide as a page: right to left, in the style of the screens, its pictures as wide as
// fit.
#pragma once

#include <QTextBrowser>
#include <vector>

#include "ui/help/guide.h"

namespace ui {

class HelpPage : public QTextBrowser {
    Q_OBJECT
  public:
    explicit HelpPage(QWidget* parent = nullptr);

    // Shows a chapter, from the heading of `section` on.
    void show_chapter(const HelpChapter& chapter, std::size_t section);
    // Marks the matches, and scrolls to the one of index `current`; below 0 there is none.
    void mark(const std::vector<HelpMatch>& matches, int current);
    // Scrolls by a line or a page. Returns false if the end of the page had already been reached.
    bool scroll(QAbstractSlider::SliderAction action);

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void lay_out();
    void go_to_section();
    void format_block(const QTextBlock& block);
    void format_keys_and_links(const QTextBlock& block);
    void format_tables();

    HelpChapter chapter_;
    std::size_t section_ = 0;
    int scrolled_to_ = 0;        // scroll position of the section
    std::vector<int> headings_;  // the positions of the chapter's headings
};

}  // namespace ui
