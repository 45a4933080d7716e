// What the customer sees on a second monitor: the lines, the net, what was paid and the change; between two
// sales a greeting and the shop's logo. It shows nothing that is not on the receipt as well.
#pragma once

#include <QTimer>
#include <QWidget>
#include <optional>

class QLabel;
class QScreen;
class QStackedLayout;

namespace sales {
class SalesDesk;
struct Invoice;
struct PaymentTaken;
}  // namespace sales
namespace signin {
struct Session;
}

namespace ui {

class CustomerLines;

// Shown as long as a monitor is connected that the cashier's window is not on, and never takes the focus.
class CustomerScreen : public QWidget {
    Q_OBJECT
  public:
    CustomerScreen(const sales::SalesDesk& desk, const signin::Session& session, QWidget& cashier);
    // Mirrors the invoice as it is now. Does nothing while no second monitor is connected.
    void mirror();

  protected:
    bool event(QEvent* event) override;

  private:
    QWidget* build_idle(const signin::Session& session);
    QWidget* build_sale();
    QLabel* add_figure(class QVBoxLayout* column, const char* name, const QString& caption, bool large);
    void follow(QScreen* monitor);
    void show_on(QScreen* monitor);
    void leave(const QScreen* monitor);
    // Without what was taken, the net alone. A return shows what the customer gets back.
    void show_amounts(const sales::Invoice& invoice, const std::optional<sales::PaymentTaken>& taken);
    // The page of the sale that was saved last, until a while has passed.
    bool shows_last() const;

    const sales::SalesDesk& desk_;
    QWidget& cashier_;
    QScreen* monitor_ = nullptr;
    QStackedLayout* pages_;
    CustomerLines* lines_ = nullptr;
    QLabel* net_ = nullptr;
    QLabel* paid_ = nullptr;
    QLabel* change_ = nullptr;
    QLabel* returned_ = nullptr;
    QWidget* payment_ = nullptr;
    // How long the change of a saved sale stays before the greeting comes back.
    QTimer parting_;
    bool has_parted_ = false;
};

}  // namespace ui
