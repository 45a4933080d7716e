// The sheets that choose this workstation's receipt printer and show its paper.
#pragma once

#include <QImage>
#include <vector>

#include "printing/ports_offered.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QScrollArea;

namespace printing::pages {
class ReceiptPage;
}
namespace sales {
class SalesDesk;
}

namespace ui {

class ListTable;
class Segments;

// Keeps the workstation's choice. If it cannot be kept, says so; the choice then holds until the program
// ends.
void keep_printer(const Context& context);

// Two lists of the same ports, the first for wide rolls, the second for narrow ones. The choice is kept in a
// file beside the program.
class PrinterSheet : public Sheet {
    Q_OBJECT
  public:
    PrinterSheet(QWidget* host, const Context& context, const sales::SalesDesk& desk);

  protected:
    void take_focus() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    ListTable* add_list(const char* name);
    void show_ports();
    void use(ListTable* table);
    // The choice under the cursor of the list in use.
    printing::PrinterChoice marked() const;
    void choose();
    // These say why they return false.
    bool may_choose();
    bool is_refused(const printing::PrinterChoice& choice);
    bool opens_drawer(const printing::PrinterChoice& choice);
    void test();
    void show_paper();
    void design();
    QImage paper(const printing::PrinterChoice& choice) const;
    printing::pages::ReceiptPage test_picture(const printing::PrinterChoice& choice) const;
    std::string test_page(const printing::PrinterChoice& choice) const;

    Context context_;
    const sales::SalesDesk& desk_;
    std::vector<printing::PortOffer> offers_;
    QLabel* current_;
    ListTable* wide_;
    ListTable* narrow_;
    Segments* forms_;  // text or one of the pictures
    ListTable* used_;  // the list that had the focus last
};

// A text receipt as it looks on paper.
class PaperSheet : public Sheet {
    Q_OBJECT
  public:
    PaperSheet(QWidget* host, const QString& title, const QImage& paper);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QScrollArea* area_;
};

}  // namespace ui
