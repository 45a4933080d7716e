// Pages that can be drawn anywhere: on a printer, into a PDF, on the screen.
#pragma once

#include <QPainter>
#include <QSizeF>
#include <QString>

namespace printing::pages {

class PageSet {
  public:
    virtual ~PageSet() = default;
    // What the pages are called in a print queue and as a file, Latin letters: "receipt-123".
    virtual QString name() const = 0;
    virtual int count() const = 0;
    // In millimetres; all pages are of one size.
    virtual QSizeF size() const = 0;
    // Draws one page, the first is 0, with its corner at the painter's origin.
    virtual void draw(QPainter& painter, double dots_per_mm, int page) const = 0;
};

}  // namespace printing::pages
