// Whom an invoice is settled with: the account customer, the card's bank and references, or the tips
// receiver. It stands below the entry field only while such a payment is chosen.
#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QStackedLayout;

namespace sales {
class SalesDesk;
enum class PaymentOption;
}  // namespace sales

namespace ui {

class PartyBar : public QWidget {
    Q_OBJECT
  public:
    explicit PartyBar(QWidget* parent = nullptr);
    // Fills the lists again, after they were loaded.
    void fill(const sales::SalesDesk& desk);
    // Shows the fields of the invoice's payment, or nothing for cash.
    void show_state(const sales::SalesDesk& desk);
    // The field that a payment wants typed into first; null for cash.
    QWidget* first_field(sales::PaymentOption payment);

  signals:
    void customer_chosen(qlonglong code);
    void bank_chosen(qlonglong code);
    void card_typed(const QString& holder, const QString& reference);
    void tips_receiver_chosen(qlonglong code);
    // The delivery permit of an account invoice, and its number.
    void permit_typed(bool opened, const QString& number);
    // Enter in the last field: typing goes on in the entry field.
    void finished();

  private:
    QStackedLayout* pages_;
    QComboBox* customer_;
    QCheckBox* permit_;
    QLineEdit* permit_number_;
    QComboBox* bank_;
    QLineEdit* holder_;
    QLineEdit* reference_;
    QComboBox* receiver_;
};

}  // namespace ui
