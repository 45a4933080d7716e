// The small sheets about an item: the quantity of the last line, and what is known of an item.
#pragma once

#include "ui/widgets/sheet.h"

namespace sales {
struct ItemInfo;
struct StockShown;
}  // namespace sales

namespace ui {

class AmountField;

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
