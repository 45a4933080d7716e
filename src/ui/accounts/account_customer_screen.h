// The card of an account customer: new, edited, or only looked at.
#pragma once

#include "accounts/account_customer.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class FieldGrid;
class Figure;
class Segments;

// run() returns 1 when the card was saved.
class Form7ca : public Sheet {
    Q_OBJECT
  public:
    Form7ca(QWidget* host, const Context& context);
    // False when there is no such customer (the message has been shown).
    bool open(accounts::CardMode mode, std::int64_t code = 0);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void build_person(FieldGrid& grid);
    void build_account(FieldGrid& grid);
    QWidget* build_guarantor();
    void build_foot();
    void connect_parts();
    QList<QWidget*> typed_fields() const;
    void show_card();
    void show_places();
    void read_card();
    void search_classes();
    // Shows the customer that stands before or after this one in the list.
    void step(int by);
    void save();
    QWidget* refused_field() const;
    template <typename Choose>
    void choose_place(QComboBox* list, std::optional<std::int64_t> former, Choose choose);

    Context context_;
    accounts::AccountCustomer logic_;
    QLabel* title_;
    QLineEdit* number_;
    QLineEdit* name_;
    QWidget* balance_box_;
    Figure* balance_;
    QLineEdit* second_name_;
    QLineEdit* third_name_;
    QLineEdit* phone_;
    QLineEdit* mobile_;
    QLineEdit* address_;
    QLineEdit* notes_;
    QComboBox* country_;
    QComboBox* governorate_;
    QComboBox* centre_;
    QComboBox* district_;
    QLineEdit* opening_;
    Segments* side_;
    bool credit_ = false;
    QComboBox* representative_;
    QLineEdit* group_;
    QLineEdit* class_search_;
    QComboBox* price_class_;
    QCheckBox* second_kind_;
    QCheckBox* unsettled_;
    QCheckBox* pays_later_;
    QCheckBox* has_guarantor_;
    QWidget* guarantor_box_;
    QLineEdit* id_number_;
    QLineEdit* guarantor_;
    QLineEdit* guarantor_id_;
    QLineEdit* guarantor_phone_;
    QPushButton* save_;
    QPushButton* previous_;
    QPushButton* next_;
    QPushButton* close_;
};

}  // namespace ui
