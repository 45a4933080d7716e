// The page of the shop's lists: the lists at its side, the rows of the chosen one, and the form of a row.
#pragma once

#include <memory>

#include "shop/list_editor.h"
#include "ui/shop/record_form.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"
#include "ui/widgets/search_pause.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace ui {

class ListTable;

class ListsPage : public Page {
    Q_OBJECT
  public:
    explicit ListsPage(const Context& context);
    void open() override;
    bool may_leave() override;
    void take_focus() override;

  private:
    QWidget* build_rows();
    // Shows another list, unless the user wants to keep what was typed.
    void choose_list(int at);
    void show_list();
    void show_rows(std::int64_t code, std::int64_t parent);
    void build_form();
    void show_row(const shop::ListRow& row);
    void choose_row(int at);
    void add();
    void save();
    void erase();
    void open_prices();
    bool is_typed_in() const;
    // Shows a refusal; one without text was shown already.
    bool accept(const std::optional<common::Refusal>& refusal);

    Context context_;
    shop::ListEditor logic_;
    int shown_list_ = 0;
    shop::ListRow read_;  // as the form shows it
    std::unique_ptr<RecordForm> form_;
    ListTable* lists_;
    QLabel* title_;
    QLineEdit* search_;
    ListTable* rows_ = nullptr;
    QVBoxLayout* column_;
    QWidget* fields_ = nullptr;
    QLabel* said_;
    QPushButton* add_;
    QPushButton* save_;
    QPushButton* erase_;
    QPushButton* prices_;
    SearchPause pause_;
};

}  // namespace ui
