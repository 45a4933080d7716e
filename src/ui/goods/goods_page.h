// The page of the office about items: a list that follows the typing, and what can be done with one item or
// with several.
#pragma once

#include "goods/item_list.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"
#include "ui/widgets/search_pause.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;

class GoodsPage : public Page {
    Q_OBJECT
  public:
    explicit GoodsPage(const Context& context);
    void open() override;
    void take_focus() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* build_filter();
    QWidget* build_foot();
    void fill_lists();
    // Reads the items again; the item that was chosen stays chosen if it is still there.
    void read_items();
    // The same in the guard of actions, after something was typed or chosen.
    void refresh();
    void repaint_rows(std::optional<std::int64_t> chosen);
    std::optional<std::int64_t> chosen_item() const;
    void toggle_mark();
    void clear_marks();
    void leave_search();

    bool may_change() const;
    void open_card();
    void new_item();
    void copy_item();
    void change_prices();
    void print_labels();
    void import_items();
    printing::Report paper();
    void print();
    void keep_csv();

    Context context_;
    bool shows_cost_;
    goods::ItemFilter filter_;
    std::set<std::int64_t> marked_;
    goods::ItemList list_;
    SearchPause pause_;
    QLineEdit* search_;
    QComboBox* group_;
    QComboBox* maker_;
    ListTable* items_;
    QLabel* count_;
    QPushButton* unmark_ = nullptr;
};

}  // namespace ui
