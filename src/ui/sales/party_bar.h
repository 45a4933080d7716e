// The party of an invoice: the account customer, the bank and references of the card, or the tips receiver.
// Shown below the entry field while such a payment is chosen.
#pragma once

#include <QWidget>
#include <string_view>

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
    // Fills the lists with what the logic has loaded.
    void fill(const sales::SalesDesk& desk);
    // Shows the fields of the invoice's payment; hides itself for cash.
    void show_state(const sales::SalesDesk& desk);
    // The first field to fill for a payment; null for cash.
    QWidget* first_field(sales::PaymentOption payment);
    // Moves the focus to the field of this object name; returns false if there is no such field in sight.
    bool focus_field(std::string_view name);

  signals:
    void customer_chosen(qlonglong code);
    void bank_chosen(qlonglong code);
    void card_typed(const QString& holder, const QString& reference);
    void tips_receiver_chosen(qlonglong code);
    // The delivery permit of an account invoice, and its number.
    void permit_typed(bool opened, const QString& number);
    // Enter in a list, on a name that it does not have.
    void unknown_name(QComboBox* list);
    // Enter in the last field.
    void finished();

  private:
    void connect_fields();

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
