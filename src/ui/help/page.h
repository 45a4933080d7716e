// One chapter of the guide as a page: right to left, in the dress of the screens, its pictures as wide as
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
    // Marks the found places; the one of number `current` stands out and is scrolled to, none below 0.
    void mark(const std::vector<HelpMatch>& matches, int current);
    // Up or down by a line or a page; false when the page's end has been reached already.
    bool scroll(QAbstractSlider::SliderAction action);

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void lay_out();
    void go_to_section();
    void dress_block(const QTextBlock& block);
    void dress_words(const QTextBlock& block);
    void dress_tables();

    HelpChapter chapter_;
    std::size_t section_ = 0;
    int scrolled_to_ = 0;        // where the section stands, as long as nobody scrolled on
    std::vector<int> headings_;  // the positions of the chapter's headings
};

}  // namespace ui
