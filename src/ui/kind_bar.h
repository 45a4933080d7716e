// The bar below the head: the kind of invoice in large letters, number, date, kind and price-level options,
// and the customer.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace sales {
class SalesScreen;
}

namespace ui {

class Segments;

class KindBar : public QWidget {
    Q_OBJECT
  public:
    explicit KindBar(QWidget* parent = nullptr);
    void show_state(const sales::SalesScreen& screen);

  signals:
    void kind_chosen(int kind);
    void price_level_chosen(int level);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* cell(const QString& caption, const QString& cap, QWidget* content, bool last = false);

    QLabel* kind_;
    QLabel* number_;
    QLabel* date_;
    Segments* kinds_;
    Segments* levels_;
    QLabel* customer_;
    QString kind_dress_;
};

}  // namespace ui
