// The item-code field with the buttons beside it, and the banner above it.
#pragma once

#include <QTimer>
#include <QWidget>
#include <array>

#include "ui/widgets/banner.h"

class QLineEdit;
class QPushButton;

namespace sales {
class SalesDesk;
}

namespace ui {

class KeyButton;

// The item-code field and the buttons beside it; on a recalled receipt a second entry field below them.
class EntryBar : public QWidget {
    Q_OBJECT
  public:
    explicit EntryBar(QWidget* parent = nullptr);
    QLineEdit* field() { return field_; }
    QLineEdit* recalled_field() { return recalled_; }
    // Empties both fields.
    void clear();
    void show_recalled(bool recalled);

  signals:
    void entered(const QString& text);
    void entered_for_recalled(const QString& text);
    void general_item_clicked();
    void search_clicked();
    void tiles_clicked();
    void keypad_clicked();
    // Up and Down were pressed.
    void down();
    // "+" or "/" was typed alone in the field.
    void quick_quantity_wanted();
    void next_unit_wanted();
    // Delete was pressed in the empty field.
    void delete_wanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void take_sign();

    QLineEdit* field_;
    QLineEdit* recalled_;
    std::array<KeyButton*, 3> tools_{};
    QTimer sign_;  // since a sign was typed that acts without Enter
};

// Says what the window shows if that is not a new invoice (a saved receipt, a return of one, an offer, a
// partly saved invoice) and offers what can be done with it.
class InvoiceBanner : public Banner {
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
    QString notice_;
    QPushButton* reprint_;
    QPushButton* return_;
};

}  // namespace ui
