// The change of the last cash sale in large figures above the lines, until the next invoice has one.
#pragma once

#include <QFrame>

#include "common/amount.h"

class QLabel;

namespace sales {
class SalesDesk;
struct LastReceipt;
}  // namespace sales

namespace ui {

// What the cashier still needs to know of a saved receipt: its change, the cash that goes back, or how its
// net was paid.
struct Outcome {
    QString caption;
    common::Amount amount;
};
Outcome outcome_of(const sales::LastReceipt& receipt);

class ChangeCard : public QFrame {
    Q_OBJECT
  public:
    explicit ChangeCard(QWidget* parent = nullptr);
    void show_state(const sales::SalesDesk& desk);

  private:
    QLabel* caption_;
    QLabel* figure_;
    QLabel* receipt_;
    QLabel* net_;
    QLabel* paid_;
};

}  // namespace ui
