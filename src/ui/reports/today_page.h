// The first page of the office: today's sales and cash, each figure with its rows, and what waits to be done.
// It reads afresh each minute.
#pragma once

#include <QTimer>

#include "counting/needs.h"
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
    void set_links(PageLinks& links) override;

  private:
    // A figure with its caption and a line below it.
    struct Card {
        QLabel* figure;
        QLabel* below;
    };
    Card add_card(QGridLayout* row, int column, const char* name, const QString& caption);
    QWidget* build_tables();
    QWidget* build_waits();
    QWidget* build_foot();
    // The invoices behind a figure of a table, or the movements of a drawer.
    void open_rows(reports::KindId kind, const reports::TableRow& row);
    void refresh();
    void show_today();
    void show_figures();
    void show_state();
    void show_needs();

    Context context_;
    Card net_, count_, yesterday_, last_week_;
    Chart* chart_;
    ListTable* payments_;
    ListTable* cashiers_;
    ListTable* drawers_;
    QPushButton* low_stock_;
    QPushButton* expiring_;
    QLabel* state_;
    QLabel* read_at_;
    QPushButton* close_days_;
    reports::Today today_;
    std::size_t changed_days_ = 0;
    counting::NeedCounts needs_;
    PageLinks* links_ = nullptr;
    QTimer timer_;
};

}  // namespace ui
