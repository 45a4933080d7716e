// The cash panel: a drawer's expected cash on a day, and the counted cash that shows a surplus or a shortage.
#pragma once

#include "cash/counted_cash.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace ui {

class AmountField;

// The difference follows what is typed; nothing is recorded before it is confirmed.
class CashPanel : public QWidget {
    Q_OBJECT
  public:
    explicit CashPanel(const Context& context, QWidget* parent = nullptr);
    // The workstation's drawer, today.
    void open();
    // Computes the panel again, keeping what is chosen.
    void refresh();
    QWidget* first_field();
    // The row of buttons at the foot, for one more.
    QHBoxLayout* foot() { return foot_; }

  private:
    QLabel* add_figure(const char* name, QLabel* caption);
    void build_fields();
    void show_state();
    void show_discounts();
    void show_difference();
    void choose_day();
    void confirm();

    Context context_;
    cash::CountedCash logic_;
    QComboBox* store_;
    QComboBox* drawer_;
    QLineEdit* day_;
    AmountField* counted_;
    QLabel* expected_;
    QFrame* difference_box_;
    QLabel* difference_caption_;
    QLabel* difference_;
    QLabel* moved_since_;
    QLabel* position_;
    QLabel* card_sales_;
    QLabel* uncollected_;
    QLabel* discounts_caption_;
    QLabel* discounts_;
    QLabel* note_;
    QWidget* confirm_;
    QHBoxLayout* foot_;
};

// The panel on a sheet of its own.
class CashCountSheet : public Sheet {
    Q_OBJECT
  public:
    CashCountSheet(QWidget* host, const Context& context);
    void open() { panel_->open(); }

  protected:
    void take_focus() override;

  private:
    CashPanel* panel_;
};

}  // namespace ui
