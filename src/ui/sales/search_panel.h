// The item search: filters above, and below them the matches, which follow the typing.
#pragma once

#include <QTimer>
#include <vector>

#include "sales/search.h"
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

// run() returns 1 if an item was taken and 0 after Esc.
class SearchPanel : public Sheet {
    Q_OBJECT
  public:
    SearchPanel(QWidget* host, sales::SalesDesk& desk);
    // The code of the item taken.
    qlonglong code() const { return code_; }

  protected:
    // Takes the row of the cursor.
    void enter() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void build_filters();
    void build_table(bool narrow);
    QLineEdit* filter_field(const char* name);
    QComboBox* filter_list(const char* name, const std::vector<common::Choice>& choices);
    void search_now();
    void show_prices(int row);
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
    QLabel* prices_;
    std::vector<sales::FoundItem> found_;
    // Runs the search once the typing pauses, so that no key waits for a query.
    QTimer pause_;
    qlonglong code_ = 0;
};

}  // namespace ui
