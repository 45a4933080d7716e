// One stock-taking: counting by scanner or search, what was found, and its booking.
#pragma once

#include "counting/differences.h"
#include "goods/pick.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ItemField;
class ListTable;
class Segments;

class StockCountSheet : public Sheet {
    Q_OBJECT
  public:
    StockCountSheet(QWidget* host, const Context& context, const counting::Count& count);
    // Reads the count. May throw.
    void open();

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    enum View { lines, differences, missing };
    QWidget* build_entry();
    void build_tables();
    QWidget* build_foot();
    // An item was scanned or chosen: one of it is counted, or its quantity is asked for.
    void take_item(const goods::Pick& pick);
    void ask_quantity(const goods::Pick& pick);
    void add_picked();
    void add(const counting::Counted& counted);
    void forget_picked();
    void remove_line();
    void book();
    // Asks whether the stock of goods that nobody counted becomes zero; nothing if the user goes back.
    std::optional<bool> ask_missing();
    bool confirm_booking(bool missing_are_gone);
    void give_up();
    void show_view(int view);
    void refresh();
    void show_lines();
    void show_differences(const std::vector<counting::Difference>& found, bool is_missing);
    QString held_text() const;
    void show_state();
    printing::Report paper() const;

    Context context_;
    counting::Count count_;
    bool sees_cost_;
    std::vector<counting::CountLine> lines_;   // the last ones, the newest first
    std::vector<counting::Difference> found_;  // what the view of differences or missing goods shows
    std::optional<goods::Pick> picked_;        // waits for its quantity
    QWidget* entry_;
    ItemField* item_;
    QLabel* picked_name_;
    QLineEdit* quantity_;
    QLineEdit* expiry_;
    QCheckBox* each_;
    QCheckBox* again_;
    Segments* view_;
    ListTable* tables_[3];
    QLabel* totals_;
    QLabel* note_;
    QPushButton* remove_;
    QPushButton* book_;
    QPushButton* give_up_;
};

}  // namespace ui
