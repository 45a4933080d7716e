// The sheets of the sales window: today's receipts, the payment, the data of the invoice, and those about an
// item.
#pragma once

#include <vector>

#include "common/denominations.h"
#include "sales/recall.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;

namespace sales {
class Payment;
class SalesDesk;
struct Invoice;
struct ItemInfo;
struct StockShown;
}  // namespace sales

namespace ui {

class AmountField;
class ListTable;
class QuickCash;
class WaitingScans;

// The receipts that this drawer saved today, to look at, print again, or start a return from. run() returns 1
// if a receipt was brought to the sales window.
class ReceiptsSheet : public Sheet {
    Q_OBJECT
  public:
    ReceiptsSheet(QWidget* host, sales::SalesDesk& desk, const Context& context);

  protected:
    void take_focus() override;

  private:
    // The chosen row; null if there is none or a box is open.
    const sales::ReceiptRow* chosen();
    void show_receipt();
    void reprint();
    void start_return();

    sales::SalesDesk& desk_;
    const Context& context_;
    std::vector<sales::ReceiptRow> rows_;
    ListTable* table_;
    QLabel* said_;  // where a receipt was kept
};

// The payment dialog: the lines, net, paid, change in large figures, and the salesman. run() returns 1 for
// confirm (Enter) and 0 for back to the invoice (Esc). `payment` holds what was typed.
class PaymentDialog : public Sheet {
    Q_OBJECT
  public:
    PaymentDialog(QWidget* host, const Context& context, sales::Payment& payment,
                  const sales::Invoice& invoice, const common::Denominations& denominations);

  signals:
    // Another amount was typed.
    void changed();

  protected:
    void take_focus() override;
    void enter() override;
    void escape() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void show_change();
    void take_cash(int button);

    const Context& context_;
    sales::Payment& payment_;
    AmountField* paid_;
    QuickCash* quick_cash_;
    QLabel* change_;
    QFrame* change_box_;
    QComboBox* worker_;
    WaitingScans* waiting_;
};

// The data of the invoice besides its lines: store, date, salesman, note, and whether a receipt is printed.
// run() returns 1 if the data were taken over and 0 if the invoice stays as it was.
class InvoiceDataSheet : public Sheet {
    Q_OBJECT
  public:
    InvoiceDataSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void enter() override;

  private:
    const Context& context_;
    sales::SalesDesk& desk_;
    QComboBox* store_;
    QLineEdit* date_;
    QComboBox* worker_;
    QLineEdit* note_;
    QCheckBox* no_receipt_;
};

// Asks for the last line's quantity. run() returns 1 for Enter and 0 for Esc.
class QuickQuantitySheet : public Sheet {
    Q_OBJECT
  public:
    QuickQuantitySheet(QWidget* host, const QString& item, const QString& quantity);
    QString text() const;

  private:
    AmountField* field_;
};

// Cost, prices, expected profit and stock by expiry date, for a cashier with the right to see them.
class ItemInfoSheet : public Sheet {
    Q_OBJECT
  public:
    ItemInfoSheet(QWidget* host, const sales::ItemInfo& info, const sales::StockShown* stock);
};

}  // namespace ui
