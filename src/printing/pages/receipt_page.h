// The layout receipt drawn on an 80 mm or 58 mm roll.
#pragma once

#include <QImage>

#include "printing/layouts.h"
#include "printing/pages/page_set.h"

namespace printing::pages {

class Canvas;

// One page as long as the receipt. A logo or QR code file that is not a picture is left out.
class ReceiptPage final : public PageSet {
  public:
    explicit ReceiptPage(LayoutReceipt receipt);

    QString name() const override;
    int count() const override { return 1; }
    QSizeF size() const override { return {receipt_.roll.paper, height_}; }
    void draw(QPainter& painter, double dots_per_mm, int page) const override;

  private:
    double flow(const Canvas& canvas) const;
    double header(const Canvas& canvas, double y) const;
    double details(const Canvas& canvas, double y) const;
    double table(const Canvas& canvas, double y) const;
    double totals(const Canvas& canvas, double y) const;
    double barcode(const Canvas& canvas, double y) const;
    double footer(const Canvas& canvas, double y) const;

    LayoutReceipt receipt_;
    QImage logo_;
    double left_ = 0;
    double width_ = 0;
    double height_ = 0;
};

}  // namespace printing::pages
