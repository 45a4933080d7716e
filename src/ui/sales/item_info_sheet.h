// What the cashier with the right to it may see of an item: cost, prices, expected profit, stock by expiry
// date.
#pragma once

#include "ui/widgets/sheet.h"

namespace sales {
struct ItemInfo;
struct StockShown;
}  // namespace sales

namespace ui {

class ItemInfoSheet : public Sheet {
    Q_OBJECT
  public:
    ItemInfoSheet(QWidget* host, const sales::ItemInfo& info, const sales::StockShown* stock);
};

}  // namespace ui
