// The side panel of the sales window: total, invoice discount, net, payment options, the last receipt and the
// save button.
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "common/amount.h"

class QLabel;

namespace sales {
class SalesDesk;
}

namespace ui {

class AmountField;
class KeyButton;
class QuickCash;

class TotalsPanel : public QWidget {
    Q_OBJECT
  public:
    explicit TotalsPanel(QWidget* parent = nullptr);
    void show_state(const sales::SalesDesk& desk);
    // Enters a discount that was typed but not entered yet.
    void finish_editing();
    void focus_discount();
    // What a button of QuickCash takes.
    std::optional<common::Amount> cash_amount(int button) const;

  signals:
    void cash_taken(int button);
    void payment_chosen(int payment);
    void save_clicked();
    // A discount was entered with Enter, or changed and left.
    void discount_value_typed(const QString& text);
    void discount_percent_typed(const QString& text);
    // Esc in a discount field.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* build_net();
    QLayout* build_payments();
    QWidget* discount_box(const QString& caption, AmountField* field);
    void commit(AmountField* field);

    QLabel* total_;
    AmountField* discount_value_;
    AmountField* discount_percent_;
    QLabel* net_;
    QString net_text_;
    std::array<KeyButton*, 4> payments_{};
    QuickCash* quick_cash_;
    KeyButton* save_;
    QLabel* last_number_;
    QLabel* last_change_;
};

}  // namespace ui
