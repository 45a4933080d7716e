// Drawing on paper in millimetres, right to left, the same on every device.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace printing::pages {

enum class Side { right, left, centre };

struct TextStyle {
    double points = 9;
    bool bold = false;
    Side side = Side::right;
    QColor colour = Qt::black;
};

// Without a painter it only measures. Texts wrap within their width; one that holds Arabic letters reads from
// the right, any other (figures, dates, Latin names) from the left.
class Canvas {
  public:
    Canvas(QPainter* painter, const QString& family);

    // Makes the painter draw in the canvas's units; the caller saves and restores it.
    static void prepare(QPainter& painter, double dots_per_mm);

    // Draws a text with its top at y and returns the height it takes.
    double text(double x, double y, double width, const QString& text, const TextStyle& style) const;
    // Draws it on one line, in smaller letters on the same baseline where it would not fit.
    double line(double x, double y, double width, const QString& text, const TextStyle& style) const;
    double text_height(double width, const QString& text, const TextStyle& style) const;
    double text_width(const QString& text, const TextStyle& style) const;

    void rule(double left, double right, double y, double thickness, const QColor& colour = Qt::black) const;
    void fill(const QRectF& area, const QColor& colour, double radius = 0) const;
    void frame(const QRectF& area, double thickness, const QColor& colour, double radius = 0) const;
    void picture(const QRectF& area, const QImage& image) const;

  private:
    QFont font(const TextStyle& style) const;
    double lay_out(double x, double y, double width, const QString& text, const TextStyle& style,
                   bool draw) const;

    QPainter* painter_;
    QFont base_;
};

// The family where the system has it; else the till's own. Either is followed by ones that have the letters
// it lacks.
QStringList font_families(const QString& wanted);

}  // namespace printing::pages
