// What the shop is running out of, what has expired or soon will, and what to order.
#pragma once

#include "common/choice.h"
#include "counting/needs.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace ui {

class ListTable;
class ProposalView;
class Segments;

class NeedsPage : public Page {
    Q_OBJECT
  public:
    explicit NeedsPage(const Context& context);

    void open() override;
    void take_focus() override;
    void show_list(PageList list) override;

  private:
    enum View { low, expiring, orders };
    QWidget* build_lists();
    void show_view(int view);
    void show_chosen();
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
    QWidget* lists_;
    ProposalView* orders_;
    QComboBox* store_;
    QWidget* days_part_;
    QLineEdit* days_;
    ListTable* tables_[2];
    QLabel* note_;
};

}  // namespace ui
