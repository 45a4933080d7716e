// Goods taken in and returned: the documents of a period, and what begins a new one.
#pragma once

#include <vector>

#include "purchases/saved_receipts.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/page.h"

class QLabel;

namespace ui {

class ListTable;

class ReceiptsPage : public Page {
  public:
    explicit ReceiptsPage(const Context& context);
    void open() override;
    void take_focus() override;

  private:
    QWidget* build_choices();
    QWidget* build_foot();
    void show_receipts();
    void repaint_rows();
    void begin(purchases::PurchaseKind kind);
    void show_document();

    Context context_;
    Form<purchases::Period> form_;
    purchases::Period period_;
    common::Date today_;  // when the page was opened last
    std::vector<purchases::SavedRow> rows_;
    ListTable* table_;
    QLabel* note_;
};

}  // namespace ui
