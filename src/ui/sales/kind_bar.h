// The bar below the head: the kind of invoice in large letters, number, date, kind and price-level options,
// and the customer.
#pragma once

#include <QKeyCombination>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class Segments;

class KindBar : public QWidget {
    Q_OBJECT
  public:
    explicit KindBar(QWidget* parent = nullptr);
    void show_state(const sales::SalesDesk& desk);
    // Moves the focus to the receipt number, so that another one can be typed and recalled.
    void focus_number();

  signals:
    // Enter in the receipt-number field, or the recall button.
    void recall_wanted(const QString& number);
    void kind_chosen(int kind);
    void price_level_chosen(int level);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* cell(const QString& caption, QKeyCombination key, QWidget* content, bool last = false);
    QWidget* number_box();

    QLabel* kind_;
    QLineEdit* number_;
    QPushButton* recall_;
    QString shown_number_;
    QLabel* date_;
    Segments* kinds_;
    Segments* levels_;
    QLabel* customer_;
    QString kind_style_;
};

}  // namespace ui
