// The head of the sales window: shop, store, drawer, user, shift, news and the clock.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace sales {
class SalesDesk;
}
namespace signin {
struct Session;
}

namespace ui {

class HeaderBar : public QWidget {
    Q_OBJECT
  public:
    explicit HeaderBar(QWidget* parent = nullptr);
    void show_state(const sales::SalesDesk& desk, const signin::Session& session);
    void show_clock(const std::string& text);
    // Shows the next line of the news.
    void next_news(const std::vector<std::string>& news);
    QPushButton* menu_button() { return menu_; }

  signals:
    void shift_clicked();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void fit_news();
    QLabel* shop_;
    QLabel* store_;
    QLabel* drawer_;
    QLabel* user_;
    QPushButton* shift_;
    QLabel* news_;
    QLabel* clock_;
    QPushButton* menu_;
    std::size_t news_at_ = 0;
};

}  // namespace ui
