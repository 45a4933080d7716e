// The banner above the entry field. It says what the window shows if that is not a new invoice (a saved
// receipt, a return of one, an offer, a partly saved invoice) and offers what can be done with it.
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
    // Hides itself for a new invoice without a notice.
    void show_state(const sales::SalesDesk& desk);
    // Sets a text that is shown until the next line is entered, unless the invoice needs the banner.
    void notice(const QString& text) { notice_ = text; }

  signals:
    void reprint_clicked();
    void return_clicked();

  private:
    QPushButton* button(const char* name, const QString& caption);
    void set_colours(const char* background, const char* edge);

    QLabel* text_;
    QString notice_;
    QPushButton* reprint_;
    QPushButton* return_;
};

}  // namespace ui
