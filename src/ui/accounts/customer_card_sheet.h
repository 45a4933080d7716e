// The card of an account customer: new, edited, or only looked at.
#pragma once

#include "accounts/customer_card.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QPushButton;

namespace ui {

class Figure;

// run() returns 1 when the card was saved.
class CustomerCardSheet : public Sheet {
    Q_OBJECT
  public:
    CustomerCardSheet(QWidget* host, const Context& context);
    // Returns false after a message if there is no such customer.
    bool open(accounts::CardMode mode, std::int64_t code = 0);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void build_head();
    void build_guarantor();
    void build_foot();
    void connect_fields();
    void show_card();
    void fill_places();
    void search_classes();
    // Shows the next or the previous customer of the list.
    void step(int by);
    void save();

    Context context_;
    accounts::AccountCustomer logic_;
    Form<accounts::CustomerCard> form_;
    QLabel* title_;
    QWidget* balance_box_;
    Figure* balance_;
    QWidget* guarantor_box_;
    QPushButton* save_;
    QPushButton* previous_;
    QPushButton* next_;
    QPushButton* close_;
};

}  // namespace ui
