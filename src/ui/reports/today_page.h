// The first page of the office: today's sales, cash and what waits to be done. It reads afresh each minute.
#pragma once

#include <QTimer>

#include "reports/today.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace ui {

class Chart;
class ListTable;

class TodayPage : public Page {
    Q_OBJECT
  public:
    explicit TodayPage(const Context& context);
    void open() override;
    void take_focus() override;

  private:
    // A figure with its caption and a line below it.
    struct Card {
        QLabel* figure;
        QLabel* below;
    };
    Card add_card(QGridLayout* row, int column, const char* name, const QString& caption);
    QWidget* build_tables();
    QWidget* build_foot();
    void refresh();
    void show_today();
    void show_figures(const reports::Today& today);
    void show_state(const reports::Today& today);

    Context context_;
    Card net_, count_, yesterday_, last_week_;
    Chart* chart_;
    ListTable* payments_;
    ListTable* cashiers_;
    ListTable* drawers_;
    QLabel* state_;
    QLabel* read_at_;
    QPushButton* close_days_;
    std::size_t changed_days_ = 0;
    QTimer timer_;
};

}  // namespace ui
