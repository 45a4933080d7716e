// The item search: filters above, and below them the matches, updated with each letter.
#pragma once

#include <vector>

#include "sales/search.h"
#include "ui/widgets/search_pause.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;
class Segments;

// run() returns 1 if an item was taken and 0 after Esc.
class SearchPanel : public Sheet {
    Q_OBJECT
  public:
    // Opens on the matches of a name, or with empty filters.
    SearchPanel(QWidget* host, sales::SalesDesk& desk, const QString& name);
    // The item taken, in the unit chosen.
    const sales::Entry& entry() const { return entry_; }

  protected:
    // Takes the row of the cursor.
    void enter() override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build_filters();
    void build_table(bool narrow);
    void build_units();
    QLineEdit* filter_field(const char* name);
    QComboBox* filter_list(const char* name, const std::vector<common::Choice>& choices);
    void search_now();
    const sales::FoundItem* item_at(int row) const;
    // Shows the prices of a row's units, and the unit that it is entered in unless another is chosen.
    void show_units(int row);
    void choose_next_unit(int step);
    void take(int row);

    sales::SalesDesk& desk_;
    QLineEdit* name_;
    QLineEdit* number_;
    QLineEdit* price_;
    QComboBox* maker_;
    QComboBox* type_;
    QCheckBox* contains_;
    QCheckBox* hide_stopped_;
    QLabel* count_;
    ListTable* table_;
    Segments* units_;
    QLabel* prices_;
    sales::FoundItems found_;
    SearchPause pause_;
    sales::Entry entry_;
};

}  // namespace ui
