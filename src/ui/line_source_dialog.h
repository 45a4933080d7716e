// The line-source dialog: from which store the goods of a line come.
#pragma once

#include <memory>
#include <vector>

#include "stock/line_source.h"
#include "ui/context.h"
#include "ui/sheet.h"

namespace sales {
class SalesScreen;
}

namespace ui {

class ListTable;
class Segments;

class LineSourceDialog : public Sheet {
    Q_OBJECT
  public:
    // For the line of the sales screen's cursor, which holds an item.
    LineSourceDialog(QWidget* host, const Context& context, sales::SalesScreen& screen);

    // True when the sales screen's cursor is on a line that another store can supply.
    static bool is_possible(const sales::SalesScreen& screen);

  protected:
    void take_focus() override;

  private:
    void show_stores(int unit);
    void confirm();
    void from_selling_store();

    Context context_;
    sales::SalesScreen& screen_;
    std::size_t row_;
    stock::LineSource logic_;
    ListTable* table_;
    Segments* units_;
};

}  // namespace ui
