// Damaged and expired goods, scanned off the stock.
#pragma once

#include <QWidget>

#include "counting/write_off.h"
#include "goods/pick.h"
#include "ui/widgets/context.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ItemField;
class ListTable;

class WriteOffView : public QWidget {
    Q_OBJECT
  public:
    explicit WriteOffView(const Context& context);
    // Reads the stores. May throw.
    void open();
    void take_focus();
    // Goods that were scanned and not saved.
    bool has_unsaved() const { return !lines_.empty(); }

  private:
    QWidget* build_entry();
    void take_item(const goods::Pick& pick);
    void show_picked();
    void forget_picked();
    void choose_store();
    void add();
    void remove();
    void save();
    void show_lines();
    std::int64_t store() const;

    Context context_;
    bool sees_cost_;
    std::vector<counting::WriteOffLine> lines_;
    std::optional<goods::Pick> picked_;
    std::vector<counting::Batch> batches_;  // of the picked item
    QComboBox* store_;
    ItemField* item_;
    QLabel* picked_name_;
    QComboBox* batch_;
    QLineEdit* quantity_;
    QLineEdit* reason_;
    QPushButton* add_;
    QPushButton* remove_;
    QPushButton* save_;
    ListTable* table_;
    QLabel* note_;
};

}  // namespace ui
