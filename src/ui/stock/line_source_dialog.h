// The line-source dialog: the store that supplies the goods of a line.
#pragma once

#include <cstdint>

#include "sales/sales_desk.h"
#include "stock/line_source.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

namespace ui {

class ListTable;
class Segments;

// Opens the dialog for the item typed into the entry field of the sales window, or for its current line, and
// applies the choice.
void choose_line_source(QWidget* host, const Context& context, sales::SalesDesk& desk);

class LineSourceDialog : public Sheet {
    Q_OBJECT
  public:
    // `item` comes from sales::SaleLines::source_item(). run() returns 1 if a store was chosen.
    LineSourceDialog(QWidget* host, const Context& context, sales::SalesDesk& desk, sales::SourceItem item);

    std::int64_t store() const { return store_; }

  protected:
    void take_focus() override;

  private:
    void show_stores(int unit);
    void choose_first_store();
    void confirm();

    Context context_;
    sales::SalesDesk& desk_;
    sales::SourceItem item_;
    stock::LineSource logic_;
    ListTable* table_;
    Segments* units_;
    std::int64_t store_ = 0;  // the chosen store; 0 for the selling store
};

}  // namespace ui
