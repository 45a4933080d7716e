// The sheet on which a drawer is counted by notes and coins before its shift is handed over.
#pragma once

#include "cash/hand_over.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class AmountField;
class ListTable;

// run() returns 1 if the cashier accepts the count.
class CountSheet : public Sheet {
    Q_OBJECT
  public:
    CountSheet(QWidget* host, const Context& context, cash::HandOver& logic);

  protected:
    void take_focus() override;

  private:
    QWidget* build_pieces();
    QWidget* build_figures();
    QLabel* add_figure(class QVBoxLayout* column, const char* name, const QString& caption);
    void build_buttons();
    void show_state();
    void show_causes();
    // Reads the fields into the count. Returns the field that holds no number, or null.
    QLineEdit* read();
    void compare();
    void count_again();
    void open_cause(int row);

    const Context& context_;
    cash::HandOver& logic_;
    std::vector<QLineEdit*> pieces_;
    std::vector<QLabel*> values_;
    AmountField* other_ = nullptr;
    QLabel* total_ = nullptr;
    QLabel* expected_ = nullptr;
    QFrame* difference_box_ = nullptr;
    QLabel* difference_ = nullptr;
    QLabel* causes_caption_ = nullptr;
    ListTable* causes_ = nullptr;
    QPushButton* compare_ = nullptr;
    QPushButton* accept_ = nullptr;
    QPushButton* again_ = nullptr;
};

}  // namespace ui
