// The page of the users: who they are, what each may do, and how one is changed.
#pragma once

#include <utility>

#include "shop/user_editor.h"
#include "ui/widgets/context.h"
#include "ui/widgets/page.h"
#include "ui/widgets/sheet.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;

class UsersPage : public Page {
    Q_OBJECT
  public:
    explicit UsersPage(const Context& context);
    void open() override;
    bool may_leave() override;
    void take_focus() override;

  private:
    QWidget* build_rights();
    void show_users(std::int64_t code);
    void show_user(const shop::UserRow& user);
    void choose_user(int at);
    // The user as the fields say.
    shop::UserRow typed() const;
    void add();
    void save();
    void set_password();
    void set_blocked();
    void set_badge();
    // Runs a change of the chosen user; shows a refusal, or `done` and the users as they are now.
    template <typename Change>
    void change(const QString& done, Change change);

    Context context_;
    shop::UserEditor logic_;
    shop::UserRow read_;  // as the fields show it
    ListTable* users_;
    QLineEdit* name_;
    std::vector<std::pair<signin::Action, QCheckBox*>> rights_;
    QLabel* said_;
    QPushButton* password_;
    QPushButton* badge_;
    QPushButton* block_;
};

// Asks for a password twice.
class NewPasswordSheet : public Sheet {
    Q_OBJECT
  public:
    NewPasswordSheet(QWidget* host, const Context& context, const QString& name);
    std::string password() const;

  private:
    void confirm();
    Context context_;
    QLineEdit* first_;
    QLineEdit* again_;
};

// Takes a badge that is scanned, or draws a number for a new card; an empty one takes the badge away.
class BadgeSheet : public Sheet {
    Q_OBJECT
  public:
    BadgeSheet(QWidget* host, const Context& context, const shop::UserRow& user);
    std::string scanned() const;

  private:
    void print(const std::string& name);
    Context context_;
    QLineEdit* number_;
};

}  // namespace ui
