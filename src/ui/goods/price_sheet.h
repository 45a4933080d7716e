// Changes the prices of several items at once: first what to change, then a list of every change before it is
// made.
#pragma once

#include <array>

#include "goods/price_plan.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;
class Segments;

// run() returns 1 if prices were changed.
class PriceSheet : public Sheet {
    Q_OBJECT
  public:
    PriceSheet(QWidget* host, const Context& context, const goods::ItemFilter& filter, std::size_t items);

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void build_choices();
    void read_choice();
    void show_changes();
    // Drops the computed changes, because they no longer match the fields.
    void forget_changes();
    void repaint_rows();
    // The computed changes as a page.
    printing::Report paper() const;
    void apply();
    void refuse(const common::Refusal& refusal);

    Context context_;
    goods::PricePlan logic_;
    Segments* rule_;
    QLineEdit* percent_;
    QWidget* percent_box_;
    Segments* step_;
    std::array<QCheckBox*, goods::units> unit_boxes_{};
    std::array<QCheckBox*, goods::price_levels> level_boxes_{};
    ListTable* changes_;
    QLabel* said_;
    QPushButton* show_;
    QPushButton* apply_;
};

}  // namespace ui
