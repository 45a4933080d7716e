// The buttons that bring what a screen shows onto paper or into a file.
#pragma once

#include <QObject>
#include <functional>

#include "printing/report.h"
#include "ui/widgets/context.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ui {

class OutputButtons : public QObject {
  public:
    // Adds the buttons "…_print", "…_preview", "…_pdf" and "…_csv" to a row. `note` tells what became of the
    // report. They do nothing while another sheet lies over `screen`.
    OutputButtons(QWidget* screen, QHBoxLayout* row, const QString& name, const Context& context,
                  std::function<printing::Report()> report, QLabel* note);
    void set_enabled(bool enabled);

  private:
    void add(QHBoxLayout* row, const QString& name, const QString& caption, std::function<QString()> action);

    QWidget* screen_;
    Context context_;
    std::function<printing::Report()> report_;
    QLabel* note_;
    std::vector<QPushButton*> buttons_;
};

}  // namespace ui
