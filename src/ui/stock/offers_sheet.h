// The list of offers, filtered by customer, number or date. An offer is loaded into the sales window or
// printed.
#pragma once

#include <vector>

#include "stock/offers.h"
#include "ui/widgets/context.h"
#include "ui/widgets/search_pause.h"
#include "ui/widgets/sheet.h"

class QLineEdit;

namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;

// Saves the invoice on the sales window as an offer and asks whether to print it.
void keep_offer(QWidget* host, const Context& context, sales::SalesDesk& desk);

// run() returns 1 if an offer was loaded.
class OffersSheet : public Sheet {
    Q_OBJECT
  public:
    OffersSheet(QWidget* host, const Context& context, sales::SalesDesk& desk);

  protected:
    void take_focus() override;
    // Loads the chosen offer.
    void enter() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void read();
    void narrow();
    bool filters_are_good();
    std::int64_t chosen() const;
    void print();

    Context context_;
    sales::SalesDesk& desk_;
    QLineEdit* customer_;
    QLineEdit* number_;
    QLineEdit* date_;
    ListTable* table_;
    std::vector<stock::OfferRow> offers_;
    SearchPause pause_;
};

}  // namespace ui
