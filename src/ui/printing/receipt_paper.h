// A receipt on the screen as a design makes it: as text, as a roll printer draws it, or as a page.
#pragma once

#include <QWidget>
#include <optional>

#include "printing/printer_text.h"
#include "printing/qr.h"
#include "printing/receipt_design.h"
#include "ui/widgets/context.h"

class QLabel;
class QScrollArea;

namespace ui {

class Segments;

// The receipt is laid out as the printers do it. The forms to choose from are above it.
class ReceiptPaper : public QWidget {
    Q_OBJECT
  public:
    enum class Shown { text, roll, page };

    ReceiptPaper(const Context& context, printing::Receipt receipt);

    // Reads what the shop's printers and its electronic invoicing need. Throws database::Error.
    void open();
    void show_form(Shown form);
    // Draws the receipt as wide as there is room, for lines of that many columns. Throws database::Error.
    void draw(const printing::ReceiptDesign& design, int columns);
    // Moves the paper by most of what is seen, down or up.
    void scroll(bool down);

  signals:
    // Another form was chosen, or there is more or less room.
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QImage picture(const printing::ReceiptDesign& design, int columns, double width) const;

    Context context_;
    printing::Receipt receipt_;
    printing::PrinterCodes codes_;
    std::optional<printing::QrCode> qr_;
    Segments* shown_;
    QLabel* paper_;
    QScrollArea* area_;
};

}  // namespace ui
