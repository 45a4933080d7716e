// The card of a supplier, and his statement of account.
#pragma once

#include "accounts/vendor_account.h"
#include "purchases/suppliers.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class ListTable;

class SupplierSheet : public Sheet {
    Q_OBJECT
  public:
    SupplierSheet(QWidget* host, const Context& context);
    // run() returns 1 if the card was saved.
    void open_new();
    // Returns false after a message if there is no such supplier.
    bool open_edit(std::int64_t code);
    std::int64_t code() const { return logic_.code(); }

  protected:
    void take_focus() override;

  private:
    void show_card();
    void save();

    Context context_;
    purchases::Supplier logic_;
    Form<purchases::SupplierCard> form_;
    QLabel* title_;
};

class SupplierStatementSheet : public Sheet {
    Q_OBJECT
  public:
    SupplierStatementSheet(QWidget* host, const Context& context, std::int64_t supplier, std::string name);
    // From the first of this month to today; returns false after an error.
    bool open();

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool show_statement();

    Context context_;
    std::int64_t supplier_;
    std::string name_;
    common::Date start_;
    common::Date end_;
    accounts::VendorStatement statement_;
    QLineEdit* from_;
    QLineEdit* to_;
    ListTable* table_;
    QLabel* note_;
};

}  // namespace ui
