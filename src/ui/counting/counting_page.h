// The page of stock-taking: the shop's counts, and goods that are written off.
#pragma once

#include "counting/counts.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"

class QPushButton;
class QStackedWidget;

namespace ui {

class ListTable;
class Segments;
class WriteOffsView;
class WriteOffView;

class CountingPage : public Page {
    Q_OBJECT
  public:
    explicit CountingPage(const Context& context);

    void open() override;
    bool may_leave() override;
    void take_focus() override;

  private:
    enum View { counts, write_off, write_offs };
    QWidget* build_counts();
    void show_view(int view);
    void show_counts();
    void open_count(int row);
    void begin_count();

    Context context_;
    std::vector<counting::Count> list_;
    Segments* view_;
    QStackedWidget* stack_;
    ListTable* table_;
    QPushButton* show_;
    WriteOffView* write_off_;
    WriteOffsView* write_offs_;
};

}  // namespace ui
