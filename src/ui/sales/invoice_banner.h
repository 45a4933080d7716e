// Above the entry field: what is on the screen when it is no invoice in the making, and what can be done with
// it: a saved receipt, a return of one, an offer, an invoice that was saved in part.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class InvoiceBanner : public QFrame {
    Q_OBJECT
  public:
    explicit InvoiceBanner(QWidget* parent = nullptr);
    // Shows itself, or nothing for an ordinary invoice.
    void show_state(const sales::SalesDesk& desk);
    // What stands there until the next line is entered, when the invoice has nothing to say of itself.
    void notice(const QString& text) { notice_ = text; }

  signals:
    void reprint_clicked();
    void return_clicked();

  private:
    QPushButton* button(const char* name, const QString& caption);
    void dress_as(const char* environment, const char* edge);

    QLabel* text_;
    QString notice_;
    QPushButton* reprint_;
    QPushButton* return_;
};

}  // namespace ui
