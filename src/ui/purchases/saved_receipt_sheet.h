// A saved document of goods in: its lines, its paper, and what may follow it.
#pragma once

#include "printing/report.h"
#include "purchases/saved_receipts.h"
#include "ui/purchases/goods_in_sheet.h"

namespace ui {

class SavedReceiptSheet : public Sheet {
    Q_OBJECT
  public:
    // What follows a document that is shown.
    enum Next { nothing, give_back, correct };

    SavedReceiptSheet(QWidget* host, const Context& context, purchases::Receipt receipt, std::int64_t number);

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void build_sums();
    void build_foot();
    printing::Report paper() const;
    // A shelf label of each item.
    void print_labels();

    Context context_;
    purchases::Receipt receipt_;
    std::int64_t number_;
    std::string supplier_;
    std::string store_;
    ListTable* table_;
    QLabel* note_;
};

// Shows a document, and runs the returns or corrections that are begun there.
void show_saved_receipt(QWidget* host, const Context& context, purchases::PurchaseKind kind,
                        std::int64_t number);
// Runs the sheet on a new document, and shows what was saved. A document that was left unsaved comes first,
// if the user goes on with it.
void begin_goods_in(QWidget* host, const Context& context, purchases::Receipt receipt);

}  // namespace ui
