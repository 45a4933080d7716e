// The page of the shop's settings: what each does, its value, and how it is changed.
#pragma once

#include "shop/settings.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace ui {

class ListTable;

class SettingsPage : public Page {
    Q_OBJECT
  public:
    explicit SettingsPage(const Context& context);
    void open() override;
    bool may_leave() override;
    void take_focus() override;

  private:
    void show_values(int at);
    void show_setting(int at);
    // What the field in use holds, as the editor takes it.
    QString typed() const;
    void save();
    void unset();
    void store(const QString& value);

    Context context_;
    shop::SettingsEditor logic_;
    int shown_ = -1;
    QString before_;  // what the field held when the setting was shown
    ListTable* settings_;
    QLabel* caption_;
    QLabel* explained_;
    QStackedWidget* fields_;
    QLineEdit* text_;
    QComboBox* list_;
    QLabel* said_;
    QPushButton* unset_;
};

}  // namespace ui
