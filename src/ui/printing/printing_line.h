// What is still being printed on slow ports, and what could not be printed.
#pragma once

#include <QTimer>

#include "common/services.h"
#include "ui/widgets/banner.h"

class QPushButton;

namespace ui {

// A line of the sales window, shown as long as there is something to say. What could not be printed is kept
// in memory; the cashier can print it again or drop it. Selling goes on meanwhile.
class PrintingLine : public Banner {
    Q_OBJECT
  public:
    explicit PrintingLine(const common::Services& services, QWidget* parent = nullptr);

    void refresh();
    // Sets a text that is shown while nothing is printed, until the next one.
    void say(const QString& text) { said_ = text; }
    // Waits before the program ends until everything is printed. Returns false if the cashier would rather go
    // on working. What he does not want printed is dropped and logged.
    bool finish();

  signals:
    void answered();

  private:
    void print_again();
    void forget();
    // Logs each failure once; returns true if there was a new one.
    bool log_failures(const common::PortReport& report);
    void log_dropped(const std::vector<common::PortDocument>& documents);
    void drop_all();

    common::Services services_;
    QPushButton* again_;
    QPushButton* forget_;
    QTimer timer_;
    QString said_;
    std::size_t logged_ = 0;  // of the failed documents
};

}  // namespace ui
