// The change of the last cash sale in large figures above the lines, until the next invoice has one.
#pragma once

#include <QFrame>

class QLabel;

namespace sales {
class SalesDesk;
}

namespace ui {

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
