// The sheet of a sale period's prices.
#pragma once

#include "shop/period_prices.h"
#include "ui/goods/item_field.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class AmountField;
class ListTable;

class PeriodPricesSheet : public Sheet {
    Q_OBJECT
  public:
    PeriodPricesSheet(QWidget* host, const Context& context, std::int64_t period, const QString& name);

  protected:
    void take_focus() override;

  private:
    void show_rows();
    void show_item(const sales::Item& item);
    void choose_row(int at);
    void save();
    void remove();
    bool accept(const std::optional<common::Refusal>& refusal);

    Context context_;
    shop::PeriodPrices logic_;
    std::optional<sales::Item> item_;
    ItemField* field_;
    QLabel* name_;
    AmountField* percent_;
    AmountField* price_;
    ListTable* rows_;
};

}  // namespace ui
