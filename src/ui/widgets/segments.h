// A row of options of which one is chosen: kinds, price levels.
#pragma once

#include <QWidget>
#include <vector>

class QPushButton;

namespace ui {

class Segments : public QWidget {
    Q_OBJECT
  public:
    // The options' object names are `name` and their value: "kind_0".
    Segments(const QString& name, const std::vector<std::pair<int, QString>>& options,
             QWidget* parent = nullptr);

    // Shows the option of a value as chosen, without a signal.
    void show_chosen(int value);
    // The value of the option shown as chosen; 0 if none is.
    int value() const;
    // In pixels of the 1366×768 screen.
    void set_height(double measure);

  signals:
    // The cashier chose an option; what is shown as chosen follows the logic afterwards.
    void chosen(int value);

  private:
    std::vector<std::pair<int, QPushButton*>> buttons_;
};

}  // namespace ui
