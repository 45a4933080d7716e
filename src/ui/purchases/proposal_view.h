// What to order of each supplier, as a part of a page: proposed, changed by hand, printed.
#pragma once

#include "printing/report.h"
#include "purchases/proposal.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"

class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

class ProposalView : public QWidget {
    Q_OBJECT
  public:
    explicit ProposalView(const Context& context);
    // Reads the lists and proposes anew. May throw.
    void open();
    void take_focus();

  private:
    QWidget* build_choices();
    QWidget* build_foot();
    void show_proposal();
    void repaint_lines(int chosen);
    void choose_row(int row);
    void set_quantity();
    printing::Report paper() const;

    Context context_;
    purchases::Proposal logic_;
    Form<purchases::ProposalFields> form_;
    bool shows_cost_;
    ListTable* table_;
    QLineEdit* quantity_;
    QLabel* chosen_;
    QLabel* note_;
};

}  // namespace ui
