// A window in front of the sales window: a card on the program's background. It is run until it is left.
#pragma once

#include <QWidget>

class QEventLoop;
class QVBoxLayout;

namespace ui {

class FrontWindow : public QWidget {
  protected:
    // `card_width` is measured at 96 dots an inch.
    FrontWindow(const char* name, const QString& heading, int card_width);

    // The card's column, below its heading.
    QVBoxLayout* column() { return column_; }
    // Waits until the window is left. Returns false if the cashier left it by Esc or closed it.
    bool wait();
    bool is_waiting() const { return loop_ != nullptr; }
    // Ends the wait with this outcome.
    void leave(bool outcome);

    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QVBoxLayout* column_;
    QEventLoop* loop_ = nullptr;
    bool outcome_ = false;
};

}  // namespace ui
