// The lines of an invoice as the customer reads them, the last ones that fit.
#pragma once

#include <QWidget>
#include <vector>

namespace sales {
struct Invoice;
}

namespace ui {

class CustomerLines : public QWidget {
    Q_OBJECT
  public:
    explicit CustomerLines(QWidget* parent = nullptr);
    void show_lines(const sales::Invoice& invoice);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Line {
        QString name;
        QString quantity;  // with its unit and price
        QString total;
    };
    void draw(QPainter& painter, const QRect& place, const Line& line) const;

    std::vector<Line> lines_;
};

}  // namespace ui
