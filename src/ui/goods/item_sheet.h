// The card of an item on the screen: new, edited, or a copy of another.
#pragma once

#include <array>

#include "goods/item_card.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;
class Segments;

// run() returns 1 if anything was saved or deleted.
class ItemSheet : public Sheet {
    Q_OBJECT
  public:
    ItemSheet(QWidget* host, const Context& context);
    // Returns false after a message if there is no such item.
    bool open(std::int64_t code);
    void open_new();
    void copy_as_new();

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;
    void escape() override;

  private:
    void build_form();
    QWidget* build_prices();
    QWidget* build_barcodes();
    void build_foot();
    void show_card();
    void show_barcodes();
    void read_card();
    // The prices computed from the edited one follow it.
    void follow(int unit_level, int price_level);
    void add_barcode();
    void draw_barcode();
    void remove_barcode();
    void print_label();
    void show_history();
    bool save();
    void copy();
    void remove();
    void refuse(const common::Refusal& refusal);

    Context context_;
    goods::ItemCard logic_;
    Form<goods::CardFields> form_;
    QLabel* title_;
    QComboBox* group_;
    QComboBox* maker_;
    std::array<std::array<QLineEdit*, goods::price_levels>, goods::units> prices_{};
    QLineEdit* barcode_;
    Segments* barcode_unit_;
    ListTable* barcodes_;
    QPushButton* save_;
    QPushButton* copy_;
    QPushButton* history_;
    QPushButton* remove_;
    bool has_saved_ = false;
};

// The changes of an item's prices, the latest first.
class PriceHistorySheet : public Sheet {
    Q_OBJECT
  public:
    PriceHistorySheet(QWidget* host, const QString& item, const std::vector<goods::PriceHistoryRow>& rows);

  protected:
    void take_focus() override;

  private:
    ListTable* list_;
};

}  // namespace ui
