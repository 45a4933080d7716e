// Imports items from a file: reads it, shows what would change, and changes it.
#pragma once

#include "goods/item_import.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;

// run() returns 1 if items were imported.
class ImportSheet : public Sheet {
    Q_OBJECT
  public:
    ImportSheet(QWidget* host, const Context& context);

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void choose_file();
    void read_file();
    void forget_plan();
    void repaint_rows();
    void apply();
    goods::ImportProgress progress(const std::string& title) const;

    Context context_;
    goods::ImportPlan plan_;
    QLineEdit* path_;
    QCheckBox* update_;
    QCheckBox* code_page_;
    ListTable* lines_;
    QLabel* said_;
    QPushButton* read_;
    QPushButton* apply_;
};

}  // namespace ui
