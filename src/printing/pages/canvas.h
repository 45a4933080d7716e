// Drawing on paper in millimetres, right to left, the same on every device.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <functional>
#include <string>

namespace printing::pages {

inline QString qstring(const std::string& text) {
    return QString::fromStdString(text);
}

enum class Side { right, left, centre };

struct TextStyle {
    double points = 9;
    bool bold = false;
    Side side = Side::right;
    QColor colour = Qt::black;
};

// The format of the images on which pages are drawn for a print head. It burns a dot or leaves it, so greys
// become patterns of dots.
inline constexpr QImage::Format print_head_format = QImage::Format_Grayscale8;

// Without a painter it only measures. Texts wrap within their width, between words: where a word would not
// fit, the text is set in smaller letters. A text with Arabic letters runs from right to left, any other
// (figures, dates, Latin names) from left to right.
class Canvas {
  public:
    Canvas(QPainter* painter, const QString& family);

    // Sets the painter to the canvas's units; the caller saves and restores the painter.
    static void prepare(QPainter& painter, double dots_per_mm);

    // Draws a text with its top at y and returns the height it takes.
    double text(double x, double y, double width, const QString& text, const TextStyle& style) const;
    // Draws a text on one line, in smaller letters on the same baseline if it would not fit.
    double line(double x, double y, double width, const QString& text, const TextStyle& style) const;
    double text_height(double width, const QString& text, const TextStyle& style) const;
    double text_width(const QString& text, const TextStyle& style) const;

    void rule(double left, double right, double y, double thickness, const QColor& colour = Qt::black) const;
    void fill(const QRectF& area, const QColor& colour, double radius = 0) const;
    void frame(const QRectF& area, double thickness, const QColor& colour, double radius = 0) const;
    void picture(const QRectF& area, const QImage& image) const;
    // Draws the dark modules of a code in the middle of the area, without smoothing and as large as whole
    // dots of the device allow. A single row of modules is as high as the area; otherwise modules are square.
    void modules(const QRectF& area, int columns, int rows,
                 const std::function<bool(int column, int row)>& is_dark) const;

  private:
    enum class Draw { never, whole_words, always };
    struct Laid {
        double width = 0;  // of the longest line
        double height = 0;
        bool breaks_words = false;
    };
    QFont font(const TextStyle& style) const;
    Laid lay_out(double x, double y, double width, const QString& text, const TextStyle& style,
                 Draw draw) const;
    // Returns the height of the text in its style, or in a smaller one if its words would break.
    double lay_out_whole_words(double x, double y, double width, const QString& text, const TextStyle& style,
                               bool draw) const;

    QPainter* painter_;
    QFont base_;
};

// Returns the family if the system has it, followed by the program's own families for letters that it lacks.
QStringList font_families(const QString& wanted);

}  // namespace printing::pages
