// What the shop runs short of, and what is out of date or soon will be.
#pragma once

#include "common/choice.h"
#include "counting/needs.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;

namespace ui {

class ListTable;
class Segments;

class NeedsPage : public Page {
    Q_OBJECT
  public:
    explicit NeedsPage(const Context& context);

    void open() override;
    void take_focus() override;

  private:
    enum View { low, expiring };
    QWidget* build_lists();
    void show_view(int view);
    void refresh();
    void show_low();
    void show_expiring();
    std::optional<std::int64_t> store() const;
    printing::Report paper() const;

    Context context_;
    bool sees_cost_;
    std::vector<common::Choice> stores_;
    std::vector<std::vector<std::string>> rows_;  // of the list that is shown
    common::Amount value_;                        // of the expiring goods
    Segments* view_;
    QComboBox* store_;
    QWidget* days_part_;
    QLineEdit* days_;
    ListTable* tables_[2];
    QLabel* note_;
};

}  // namespace ui
