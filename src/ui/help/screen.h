// The help: a guide, shown over the screen that it was opened from.
#pragma once

#include "ui/help/guide.h"
#include "ui/widgets/search_pause.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QLineEdit;

namespace ui {

class HelpPage;
class ListTable;

// Typing searches and the arrows scroll. No key changes the screen below.
class HelpScreen : public Sheet {
    Q_OBJECT
  public:
    // Opens at the part of the guide with this anchor, or at the beginning if there is none.
    HelpScreen(QWidget* host, Guide guide, const QString& anchor);

  protected:
    void take_focus() override;
    // Shows the next match.
    void enter() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* build_head();
    QWidget* build_foot();
    void fill_contents();
    void show_place(const HelpPlace& place);
    // The same, when the reader asked for that place: the next search then begins there.
    void go_to(const HelpPlace& place);
    void step_chapter(int by);
    void turn_page(bool down);
    void search();
    void show_first_from(std::size_t chapter);
    bool press(int key, Qt::KeyboardModifiers modifiers);

    HelpGuide guide_;
    HelpPlace shown_;
    std::size_t search_from_ = 0;                // a chapter
    std::vector<std::vector<HelpMatch>> found_;  // by chapter
    int match_ = -1;                             // within the chapter shown
    QLabel* title_;
    QLineEdit* words_;
    QLabel* count_;
    ListTable* contents_;
    HelpPage* page_;
    SearchPause pause_;
};

}  // namespace ui
