// A line across the sales window that reports something and offers what to do about it.
#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ui {

class Banner : public QFrame {
    Q_OBJECT
  protected:
    // Hidden at first. `text_name` is the object name of its text.
    Banner(const char* name, const char* text_name, QWidget* parent);

    QLabel* text() { return text_; }
    // Adds a button behind the text.
    QPushButton* add_button(const char* name, const QString& caption);
    void set_colours(const char* background, const char* edge);

  private:
    QHBoxLayout* row_;
    QLabel* text_;
};

}  // namespace ui
