// The sheet on which goods are taken in from a supplier, or returned to one.
#pragma once

#include "goods/pick.h"
#include "purchases/goods_in.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QPushButton;

namespace ui {

class Figure;
class ItemField;
class ListTable;
class Segments;

class GoodsInSheet : public Sheet {
    Q_OBJECT
  public:
    GoodsInSheet(QWidget* host, const Context& context);
    // A document that an earlier run left unsaved, if the user goes on with it.
    std::optional<purchases::Receipt> left_open() { return logic_.left_open(); }
    // run() returns 1 if the document was saved.
    void open(purchases::Receipt receipt);
    // What was saved.
    const purchases::GoodsIn& logic() const { return logic_; }

  protected:
    void take_focus() override;
    void escape() override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build_head();
    void build_entry();
    void build_line();
    void build_foot();
    QWidget* build_margin();
    void show_document();
    void repaint_lines();
    void repaint_sums();
    void show_line();
    QStringList cells_of(std::size_t row) const;

    void pick(const goods::Pick& pick);
    void choose_row(int row);
    bool is_busy() const { return is_taking_ || is_showing_ || just_refused_; }
    // Take over what was typed; return false after a refusal.
    bool take_line();
    bool take_head();
    bool take_foot();
    bool accept(const std::optional<common::Refusal>& refusal);
    void set_margin(bool all_lines);
    void add_supplier();
    void save();

    Context context_;
    purchases::GoodsIn logic_;
    Form<purchases::HeadFields> head_;
    Form<purchases::LineFields> line_;
    Form<purchases::FootFields> foot_;
    bool shows_cost_;   // and profit
    bool sets_prices_;  // may change selling prices
    bool is_taking_ = false;
    bool is_showing_ = false;
    bool just_refused_ = false;  // in the event that is being handled
    QLabel* title_;
    QLabel* line_name_;
    QLabel* note_;
    ItemField* item_;
    ListTable* table_;
    QWidget* margin_;
    QLineEdit* percent_;
    Segments* step_;
    QPushButton* new_supplier_;
    QPushButton* batch_;
    QPushButton* save_;
    Figure* total_;
    Figure* net_;
};

}  // namespace ui
