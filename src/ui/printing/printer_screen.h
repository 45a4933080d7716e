// The printer-choice screen: where this workstation's receipts go.
#pragma once

#include <vector>

#include "printing/ports_offered.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace sales {
class SalesScreen;
}

namespace ui {

class ListTable;

// A choice from the first list prints 48 characters a line, one from the second 40. It holds until the
// program ends.
class PrinterScreen : public Sheet {
    Q_OBJECT
  public:
    PrinterScreen(QWidget* host, const Context& context, const sales::SalesScreen& screen);

  protected:
    void take_focus() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    ListTable* add_list(const char* name);
    void show_ports();
    void use(ListTable* table);
    // What the cursor of the list in use stands on.
    printing::PrinterChoice marked() const;
    void choose();
    void test();
    void show_paper();

    Context context_;
    const sales::SalesScreen& screen_;
    std::vector<printing::PortOffer> offers_;
    QLabel* current_;
    ListTable* wide_;
    ListTable* narrow_;
    ListTable* used_;  // the list that had the focus last
};

}  // namespace ui
