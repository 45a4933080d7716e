// The item-code field and the buttons beside it; on a recalled receipt a second entry field below them.
#pragma once

#include <QWidget>

class QLineEdit;

namespace ui {

class EntryBar : public QWidget {
    Q_OBJECT
  public:
    explicit EntryBar(QWidget* parent = nullptr);
    QLineEdit* field() { return field_; }
    void show_recalled(bool recalled);

  signals:
    void entered(const QString& text);
    void entered_for_recalled(const QString& text);
    void general_item_clicked();
    void search_clicked();
    // The keys Up and Down, and "+" in the empty field.
    void down();
    void quick_quantity_wanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLineEdit* field_;
    QLineEdit* recalled_;
};

}  // namespace ui
