// The suppliers: their balances, cards and statements.
#pragma once

#include <vector>

#include "purchases/suppliers.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"
#include "ui/widgets/search_pause.h"

class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

class SuppliersPage : public Page {
  public:
    explicit SuppliersPage(const Context& context);
    void open() override;
    void take_focus() override;

  private:
    void narrow();
    const purchases::SupplierRow* chosen() const;
    void add();
    void edit();
    void show_statement();

    Context context_;
    std::vector<purchases::SupplierRow> suppliers_;
    SearchPause pause_;
    QLineEdit* search_;
    ListTable* table_;
    QLabel* note_;
};

}  // namespace ui
