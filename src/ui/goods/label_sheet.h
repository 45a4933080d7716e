// Chooses how many labels of which goods are printed, and on what paper.
#pragma once

#include "printing/labels.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

class LabelSheet : public Sheet {
    Q_OBJECT
  public:
    LabelSheet(QWidget* host, const Context& context, std::vector<printing::Label> labels);

  protected:
    void take_focus() override;

  private:
    void repaint_rows(int chosen);
    // The typed number of copies goes to the chosen label, or to all.
    bool take_copies(bool to_all);
    // What the fields say; nothing after a message.
    std::optional<printing::LabelJob> job();
    void print();
    void preview();

    Context context_;
    std::vector<printing::Label> labels_;
    QComboBox* paper_;
    QLineEdit* used_;
    QWidget* used_box_;
    QLineEdit* copies_;
    ListTable* list_;
    QLabel* said_;
};

}  // namespace ui
